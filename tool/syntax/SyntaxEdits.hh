#pragma once

#include "tool/syntax/Replacement.hh"
#include "tool/syntax/TextStyle.hh"

#include <string>
#include <string_view>
#include <vector>

/// Changes to a text, in terms of its tree. All else stays as it is, byte for byte, comments in particular: those in
/// and after a removed clause stay where it was.
///
/// New clauses look as the text does. Their text is given in the canonical layout, with LF and two blanks a level, and
/// without indentation of the first line; line ends, indentation and the spelling of keywords become those of the text.
class SyntaxEdits {
public:
    using Index = SyntaxTree::Index;

    explicit SyntaxEdits(const SyntaxTree &tree);

    /// Replaces any span; of length 0, to insert something.
    void replace(RtiFedSpan span, std::string text) { _replacements.push_back({span, std::move(text)}); }
    void replaceToken(Index token, std::string text);
    /// Removes a word or parenthesis, and the blanks before it.
    void removeToken(Index token);

    /// Removes a clause with those in it, and its line if that becomes empty. Returns whether comments of it stay: in
    /// it, after it or on the lines above it. These get an empty line below them, so that they are not about what
    /// follows.
    bool removeClause(Index clause);
    /// Inserts a clause after this one and the comment on its line; several at the same place in the order of the
    /// calls.
    void insertAfter(Index clause, std::string_view text);
    /// Inserts a clause after the last one in this one.
    void insertInto(Index clause, std::string_view text);
    /// Inserts a clause before the first one in this one.
    void insertFirst(Index clause, std::string_view text);

    /// Removes a comment that is alone on its line, and the line.
    void removeLine(Index comment);
    /// Moves what is in a clause, comments included, after what is in another one, and removes the clause.
    void moveContents(Index from, Index to);

    /// Inserts the ")" of a clause at an offset; directly after the ")" of a clause in it that begins a line, it begins
    /// a line too.
    void insertClose(Index clause, std::uint32_t offset);
    /// Appends a line to the text.
    void appendLine(std::string_view line);

    /// A keyword as the text spells it.
    std::string spelt(std::string_view keyword) const;

    /// The changes in the order of the text, without those within a removed clause.
    std::vector<Replacement> replacements() const;
    /// The same, and forgets them.
    std::vector<Replacement> take();
    /// The text with all changes.
    std::string text() const;

private:
    void remove(Index clause, std::string left);
    bool isBelowComment(Index clause) const;
    std::string commentsIn(Index clause, std::string_view indentation) const;
    std::string asInText(std::string_view text, std::string_view indentation) const;
    std::string withKeyword(std::string_view line) const;
    Index lineBegin(Index token) const;
    std::string_view lineIndentation(Index token) const;
    std::string indentationFor(Index clause) const;
    Index tokenFrom(std::uint32_t offset) const;
    Index pieceBefore(Index token) const;
    bool breaksLine(Index begin, Index end) const;

    const SyntaxTree &_tree;
    const TextStyle _style;
    std::vector<Index> _lines; // the first token of each, and the number of tokens
    std::vector<Replacement> _replacements;
};
