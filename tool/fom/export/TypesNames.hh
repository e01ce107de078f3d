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

/// A class or space with the names that a file of types has for it and its members.
struct TypesOwner {
    std::string name; ///< Of a class without the root.
    DeclarationRef ref;
    std::vector<std::string> members;

    DeclarationRef member(ClauseKind kind, std::size_t index) const {
        return {kind, ref.owner, static_cast<std::uint32_t>(index)};
    }
};

/// Returns the classes or spaces that an export has, in its order. Names that are there several times, such as those of
/// spaces, are told apart as in the export.
std::vector<TypesOwner> typesOwners(const TypesSection &section, const Outline &outline, const ExportPlan &plan);

/// Returns the name of the root in FED, in upper case and with a dot, that names of a section may begin with; empty for
/// spaces.
std::string rootPrefix(const TypesSection &section);
