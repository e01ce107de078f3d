#pragma once

#include "infrastructure/RtiFedPosition.hh"
#include "tool/language/Markup.hh"

#include <cstdint>
#include <optional>
#include <string>

class Document;

/// What is shown about a place.
struct Hover {
    RtiFedSpan span; ///< The word that it is about.
    std::string text;
};

/// Describes what a name declares or refers to, with the comment that documents it; explains a keyword, transportation
/// or ordering. Nothing for any other place. Takes little time once the entities of the document are known, but for the
/// classes that it lists.
std::optional<Hover> hoverAt(const Document &document, std::uint32_t offset, Markup markup);

/// Returns the documentation of a declaration; empty if the text does not declare it or has no comment.
std::string documentationOf(const Document &document, RtiFedSpan name, Markup markup);
