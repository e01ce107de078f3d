#pragma once

#include "tool/fom/import/FomModules.hh"

#include <optional>
#include <string>
#include <vector>

/// Returns what an element says, or nothing if that only is a word for "not known".
std::string knownContent(const XmlText &text, pugi::xml_node element);

/// Whether a child of an element belongs to the object model: it is an element with the prefix of its parent. Others
/// are of other namespaces, which are passed over.
bool isOfModel(pugi::xml_node child, pugi::xml_node parent);

/// Whether this is the case, and the child has this name.
bool isElement(pugi::xml_node child, pugi::xml_node parent, std::string_view name);

/// Calls `visit` with each such child.
template <class Visit>
void forEachChild(pugi::xml_node parent, std::string_view name, Visit visit) {
    for (const pugi::xml_node child : parent.children())
        if (isElement(child, parent, name))
            visit(child);
}

/// Returns the first child of an element with this name that belongs to the object model; null if there is none.
pugi::xml_node childOf(pugi::xml_node element, std::string_view name);

/// Returns the name of a declaration in FED. One that FED cannot hold is reported at its place, and not returned.
std::optional<std::string> usableName(FomModules &modules, const std::string &name, const FomPlace &place);

/// Reports a name that has a reference to an entity, such as `&unit;`, which is not expanded. Returns whether it has
/// one.
bool reportEntity(FomModules &modules, const std::string &name, const FomPlace &place);

/// The names of the children that an element may have.
struct FomContents {
    std::vector<std::string> once, repeated;
};

/// Reports the children of an element that have none of these names, and further ones of a name that it has once only.
void checkChildren(FomModules &modules, std::size_t module, pugi::xml_node element, const FomContents &contents);
