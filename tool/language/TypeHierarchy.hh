#pragma once

#include "infrastructure/RtiFedPosition.hh"
#include "tool/language/ClauseForm.hh"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class Document;

/// A class in the type hierarchy. Its kind and full name identify it in a later version of the text, too.
struct HierarchyItem {
    ClauseKind kind;
    std::string fullName;
    std::string name;    ///< Printable, as the detail.
    std::string detail;  ///< The full name of the superclass; empty if there is none.
    RtiFedSpan span;     ///< The clause.
    RtiFedSpan nameSpan; ///< The name within it.
};

/// Returns the class that the name at an offset means; of a member, its class. Nothing for any other place.
std::optional<HierarchyItem> hierarchyItemAt(const Document &document, std::uint32_t offset);

/// Returns the superclass of a class; nothing if it has none, or if the text has no such class.
std::optional<HierarchyItem> superclassOf(const Document &document, ClauseKind kind, std::string_view fullName);

/// Returns the direct subclasses of a class, in the order of the text; none if the text has no such class.
std::vector<HierarchyItem> subclassesOf(const Document &document, ClauseKind kind, std::string_view fullName);
