#include "tool/format/Format.hh"

#include "tool/format/Layout.hh"
#include "tool/format/Sequence.hh"
#include "tool/syntax/TextStyle.hh"

#include <utility>

namespace {

using Kind = SyntaxTree::Kind;

std::vector<bool> changedClauses(const SyntaxTree &tree, const std::optional<LineRange> &lines) {
    std::vector<bool> changes(tree.clauses().size(), true);
    for (std::size_t i = 0; lines && i < changes.size(); ++i) {
        const unsigned long line = tree.line(tree.clauses()[i].open);
        changes[i] = line >= lines->first && line <= lines->last;
    }
    return changes;
}

/// Writes the pieces of a text: those of changed clauses with their new layout, the others as they are.
class Writer {
public:
    Writer(const SyntaxTree &tree, const FormatOptions &options)
        : _tree(tree), _changes(changedClauses(tree, options.lines)), _pieces(sequenceOf(tree, _changes)),
          _layout(tree, _pieces, options.indentation), _lineEnd(lineEndOf(tree)) {}

    std::string write() {
        // unreached: a text with syntax errors, and so an empty one, is not formatted
        if (_pieces.empty())
            return std::string(_tree.text());
        // equivalent: only for speed
        _text.reserve(_tree.text().size() + _tree.text().size() / 4);
        _text = _tree.text().substr(0, _pieces.front().gap); // a byte order mark
        for (std::size_t piece = 0; piece < _pieces.size(); ++piece) {
            writeGap(piece);
            writeBytes(piece);
        }
        if (changes(_pieces.size() - 1))
            _text += _lineEnd;
        else
            _text += _tree.text().substr(_tree.end(lastToken()));
        return std::move(_text);
    }

private:
    /// Whether the clause of a piece is changed. What follows the FED clause belongs to that.
    bool changes(std::size_t piece) const {
        const SyntaxTree::Index clause = _pieces[piece].clause;
        // unreached: likewise, so that there is a clause
        return clause == SyntaxTree::kNone ? !_changes.empty() && _changes.front() : _changes[clause];
    }

    SyntaxTree::Index lastToken() const {
        SyntaxTree::Index last = _tree.numTokens() - 1;
        while (SyntaxTree::isSpace(_tree.kind(last)))
            --last;
        return last;
    }

    bool isComment(std::size_t piece) const { return _tree.kind(_pieces[piece].token) == Kind::comment; }

    void writeGap(std::size_t piece) {
        const std::uint32_t begin = _pieces[piece].gap;
        const std::string_view old = _tree.text().substr(begin, _tree.begin(_pieces[piece].token) - begin);
        // A comment must end with its line, also if another piece followed it before.
        // equivalent: the first piece ends its line if it is a comment
        const bool mustBreak = piece > 0 && isComment(piece - 1) && old.find_first_of("\r\n") == std::string_view::npos;
        if (!changes(piece) && !mustBreak) {
            _text += old;
            return;
        }
        const Separation &separation = _layout.separations()[piece];
        for (std::size_t i = 0; i < separation.lineEnds; ++i)
            _text += _lineEnd;
        _text.append(separation.blanks, ' ');
    }

    void writeBytes(std::size_t piece) {
        const std::string_view bytes = _tree.bytes(_pieces[piece].token);
        const bool isKeyword = std::exchange(_keywordFollows, false); // equivalent: the next line sets it
        _keywordFollows = bytes == "(" || (isKeyword && isComment(piece));
        if (changes(piece) && isComment(piece))
            _text += bytes.substr(0, bytes.find_last_not_of(" \t\v\f") + 1);
        else if (changes(piece) && isKeyword)
            _text += RtiFedParser::keyword(bytes);
        else
            _text += bytes;
    }

    const SyntaxTree &_tree;
    const std::vector<bool> _changes;
    const std::vector<SequencePiece> _pieces;
    const Layout _layout;
    const std::string_view _lineEnd;
    std::string _text;
    bool _keywordFollows = false;
};

} // namespace

std::string formatted(const SyntaxTree &tree, const FormatOptions &options) {
    return Writer(tree, options).write();
}
