#pragma once

#include "infrastructure/RtiFedPosition.hh"

#include <optional>
#include <string_view>

/// An element of an XML text that the wrong end tag closes, or none.
struct XmlMismatch {
    RtiFedSpan open;                 ///< The name in its start tag.
    std::optional<RtiFedSpan> close; ///< The name in the end tag; nothing if the text ends first.
};

/// Returns the first element of an XML text whose end tag is missing or has another name; nothing if there is none.
///
/// The XML parser only says where it gave up. This pass over the tags keeps those that are open, so that a message can
/// name both ends. It knows comments, CDATA, instructions and quotes, and nothing else of XML: it is asked only about
/// texts that the parser refused.
std::optional<XmlMismatch> firstMismatch(std::string_view text);
