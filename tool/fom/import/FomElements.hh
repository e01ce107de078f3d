#pragma once

#include "tool/fom/import/FomModules.hh"

#include <optional>
#include <string>
#include <vector>

/// Returns what an element says, or nothing if that only is a word for "not known".
std::string knownContent(const XmlText &text, pugi::xml_node element);

/// Returns the first child of an element with this name, in any namespace; null if there is none.
pugi::xml_node childOf(pugi::xml_node element, std::string_view name);

/// Returns the name of a declaration in FED. One that FED cannot hold is reported at its place, and not returned.
std::optional<std::string> usableName(FomModules &modules, const std::string &name, const FomPlace &place);

/// Reports the children of an element that have none of these names. Those of other namespaces are extensions, which
/// nobody needs to understand.
void checkChildren(FomModules &modules, std::size_t module, pugi::xml_node element,
                   const std::vector<std::string> &known);
