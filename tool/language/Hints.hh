#pragma once

#include "infrastructure/RtiFedPosition.hh"

#include <cstdint>
#include <string>
#include <vector>

class Document;

/// A note that an editor shows after a name, as if it were part of the text.
struct InlayHint {
    enum class Kind : unsigned char { handle, inherited };

    Kind kind;
    std::uint32_t offset; ///< The end of the name.
    std::string label;    ///< Such as "#12" or "+3 inherited".
    std::string tooltip;  ///< A sentence.
};

/// Returns the handle of each declaration whose name is in the span, and the number of members that each class
/// inherits, if any, in the order of the text. A handle that is provisional, since the file does not load, ends in a
/// question mark. Takes time in proportion to the hints once the entities of the document are known.
std::vector<InlayHint> inlayHints(const Document &document, RtiFedSpan span);

/// A line that an editor shows above a class.
struct CodeLens {
    RtiFedSpan nameSpan; ///< The name of the class.
    std::string text;    ///< Such as "2 subclasses, 5 inherited attributes".
};

/// Returns one for each class that has subclasses, which are counted at all levels, or inherits anything, in the order
/// of the text. Takes time in proportion to the declarations.
std::vector<CodeLens> codeLenses(const Document &document);
