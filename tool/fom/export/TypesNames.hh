#pragma once

#include "tool/fom/export/ExportPlan.hh"
#include "tool/language/words/DeclarationClauses.hh"
#include "tool/model/Outline.hh"

#include <array>
#include <string>
#include <vector>

/// What is in a section of a file of types.
struct TypesSection {
    const char *key;
    ClauseKind kind;
    const char *membersKey; ///< The key of the members in the table of a class or space.
    ClauseKind memberKind;
};
inline constexpr std::array<TypesSection, 3> kTypesSections = {
    {{"objects", ClauseKind::objectClass, "attributes", ClauseKind::attribute},
     {"interactions", ClauseKind::interactionClass, "parameters", ClauseKind::parameter},
     {"spaces", ClauseKind::space, "dimensions", ClauseKind::dimension}}};

/// A class or space with the name that a file of types has for it.
struct TypesOwner {
    std::string name; ///< Of a class without the root.
    DeclarationRef ref;
    const std::vector<Outline::Member> *members;

    DeclarationRef member(ClauseKind kind, std::size_t index) const {
        return {kind, ref.owner, static_cast<std::uint32_t>(index)};
    }
};

/// Returns the classes or spaces that an export has, in its order.
std::vector<TypesOwner> typesOwners(const TypesSection &section, const Outline &outline, const ExportPlan &plan);

/// Returns the name of the root in FED, in upper case and with a dot, that names of a section may begin with; empty for
/// spaces.
std::string rootPrefix(const TypesSection &section);

/// Returns a name as a file of types has it, which is UTF-8: the name itself, or if it is not UTF-8 as in XML.
std::string nameInTypes(const std::string &name);
