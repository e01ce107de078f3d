#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// What is found in a FED text although it does not belong there: comments as other languages write them, characters
/// that look like a blank, and files of other kinds. Words of FED may contain nearly any byte, so all of this is looked
/// for only where the text is wrong already.

/// The ways in which other languages begin a comment.
enum class RtiFedCommentMark : unsigned char { slashes, block, hash, dashes, markup, none };

/// The mark that these bytes begin with, or RtiFedCommentMark::none.
RtiFedCommentMark commentMarkAt(std::string_view bytes);
std::string_view textOf(RtiFedCommentMark mark);
/// The length of the comment that begins with this mark up to its closing mark; npos if it has none, so that the
/// comment ends with its line.
std::size_t closedCommentSize(RtiFedCommentMark mark, std::string_view bytes);

/// The size of the character that these bytes begin with if it looks like a blank and is none; otherwise 0. The byte
/// 0xA0 alone is such a blank in texts that are not UTF-8.
std::size_t foreignBlankSize(std::string_view bytes);
/// The offset of the first one, or npos.
std::size_t findForeignBlank(std::string_view bytes);
/// Whether it has no width, or ends the text for some programs.
bool isInvisible(std::string_view bytes);
/// Its name, such as "a no-break space (U+00A0)".
std::string nameOfForeignBlank(std::string_view bytes);

/// What kind of file begins with these bytes, if it is a known kind and no FED text; otherwise null. The bytes may end
/// after the first NUL.
const char *foreignFormatOf(std::string_view bytes);

/// What the reader has found in a text so far, and the lexer skips from then on.
struct RtiFedHabits {
    bool blanks = false;            ///< Characters that look like a blank.
    unsigned char commentMarks = 0; ///< One bit for each RtiFedCommentMark.

    bool any() const { return blanks || commentMarks != 0; }
    bool has(RtiFedCommentMark mark) const { return (commentMarks >> static_cast<unsigned>(mark) & 1U) != 0; }
    void add(RtiFedCommentMark mark) {
        commentMarks = static_cast<unsigned char>(commentMarks | 1U << static_cast<unsigned>(mark));
    }
};
