#pragma once

#include "tool/syntax/Replacement.hh"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class Document;

/// Whether a name can be changed, and what an editor offers to change.
struct RenamePlace {
    RtiFedSpan span;     ///< The name at the cursor, with its quotes.
    std::string name;    ///< Without them.
    std::string refusal; ///< Why it cannot be renamed, for a person; empty if it can.
};

/// Takes little time once the entities of the document are known.
RenamePlace renameAt(const Document &document, std::uint32_t offset);

struct RenameEdit {
    Replacement replacement;
    bool isInComment = false; ///< An editor may ask whether to change comments.
};

/// The edits of a renaming, in the order of the text; or why it is refused, for a person.
struct Renaming {
    std::vector<RenameEdit> edits;
    std::string refusal; ///< Empty if it is not refused; then there are edits.
};

/// Renames the class, member, space or dimension at an offset, in its declaration, where a space is used, and in
/// comments that can mean nothing else. The new name is given without quotes, and gets them where it needs them.
///
/// It is refused if it would change what the text declares otherwise: where the new name is declared or inherited
/// already, in any letter case; where it is no legal name; for what the RTI finds by its name; and where it is not
/// understood what the text declares. Takes time in proportion to the text.
Renaming rename(const Document &document, std::uint32_t offset, std::string_view newName);
