#include "tool/syntax/SyntaxEdits.hh"

#include <algorithm>

namespace {

using Kind = SyntaxTree::Kind;

constexpr std::size_t kCanonicalIndentation = 2;

} // namespace

SyntaxEdits::SyntaxEdits(const SyntaxTree &tree) : _tree(tree), _style(styleOf(tree)) {
    const bool marked = tree.kind(0) == Kind::byteOrderMark;
    _lines.push_back(marked ? 1 : 0);
    for (Index token = 0; token < tree.numTokens(); ++token)
        if (tree.kind(token) == Kind::lineEnd)
            _lines.push_back(token + 1);
}

void SyntaxEdits::replaceToken(Index token, std::string text) {
    replace({_tree.begin(token), _tree.end(token) - _tree.begin(token)}, std::move(text));
}

void SyntaxEdits::insertWordAfter(Index token, std::string_view word) {
    replace({_tree.end(token), 0}, ' ' + std::string(word));
}

void SyntaxEdits::removeToken(Index token) {
    const bool afterBlanks = token > 0 && _tree.kind(token - 1) == Kind::blanks && !indentationOf(_tree, token);
    const std::uint32_t begin = _tree.begin(token - (afterBlanks ? 1 : 0));
    replace({begin, _tree.end(token) - begin}, {});
}

void SyntaxEdits::removeClause(Index clause) {
    const Index open = _tree.clauses()[clause].open;
    const Index last = std::min(_tree.clauses()[clause].close, _tree.numTokens() - 1);
    const auto indentation = indentationOf(_tree, open);
    Index next = last + 1; // on the same line
    while (_tree.kind(next) == Kind::blanks)
        ++next;
    const bool endsLine = next == _tree.numTokens() || _tree.kind(next) == Kind::lineEnd;
    const Index previous = pieceBefore(open);
    const bool mayJoin = previous != SyntaxTree::kNone && _tree.kind(previous) != Kind::comment;

    std::uint32_t begin = _tree.begin(open), end = _tree.end(last);
    const std::string own = indentationFor(clause);
    std::string left = commentsIn(clause, own);
    if (!left.empty()) { // they take its place
        if (!endsLine)
            left += _style.lineEnd + own;
        end = endsLine ? end : _tree.begin(next);
    } else if (indentation && endsLine) { // the whole line
        begin -= static_cast<std::uint32_t>(indentation->size());
        end = _tree.end(std::min(next, _tree.numTokens() - 1));
    } else if (mayJoin && (!indentation || _tree.kind(next) == Kind::close)) {
        begin = _tree.end(previous);
    } else { // what follows takes its place
        end = _tree.begin(next);
    }
    replace({begin, end - begin}, std::move(left));
}

void SyntaxEdits::insertAfter(Index clause, std::string_view text) {
    Index last = std::min(_tree.clauses()[clause].close, _tree.numTokens() - 1);
    const Index next = last + 1 + (_tree.kind(last + 1) == Kind::blanks ? 1 : 0);
    if (next < _tree.numTokens() && _tree.kind(next) == Kind::comment)
        last = next;
    replace({_tree.end(last), 0}, _style.lineEnd + asInText(text, indentationFor(clause)));
}

void SyntaxEdits::insertInto(Index clause, std::string_view text) {
    const SyntaxTree::Clause &parent = _tree.clauses()[clause];
    if (_tree.hasClauses(clause)) {
        Index child = clause + 1;
        while (_tree.clauses()[child].end < parent.end)
            child = _tree.clauses()[child].end;
        return insertAfter(child, text);
    }
    const std::string indentation(lineIndentation(parent.open));
    const Index last = pieceBefore(parent.close);
    std::string inserted = _style.lineEnd + asInText(text, indentation + _style.indentation);
    if (_style.closesOnOwnLine && parent.close < _tree.numTokens() && !breaksLine(last + 1, parent.close))
        inserted += _style.lineEnd + indentation;
    replace({_tree.end(last), 0}, std::move(inserted));
}

std::vector<Replacement> SyntaxEdits::replacements() const {
    std::vector<Replacement> sorted = _replacements;
    std::stable_sort(sorted.begin(), sorted.end(), [](const Replacement &a, const Replacement &b) {
        return std::pair(a.span.begin, a.span.length > 0) < std::pair(b.span.begin, b.span.length > 0);
    });
    std::uint32_t end = 0;
    const auto isRemoved = [&end](const Replacement &r) {
        const bool removed = r.span.begin < end;
        end = std::max(end, r.span.begin + r.span.length);
        return removed;
    };
    sorted.erase(std::remove_if(sorted.begin(), sorted.end(), isRemoved), sorted.end());
    return sorted;
}

std::string SyntaxEdits::text() const {
    std::string text;
    std::size_t end = 0;
    for (const Replacement &replacement : replacements()) {
        text += _tree.text().substr(end, replacement.span.begin - end);
        text += replacement.text;
        end = replacement.span.begin + replacement.span.length;
    }
    text += _tree.text().substr(end);
    return text;
}

/// Returns the comments in a clause, each on a line of its own.
std::string SyntaxEdits::commentsIn(Index clause, std::string_view indentation) const {
    std::string comments;
    for (Index token = _tree.clauses()[clause].open; token < _tree.clauses()[clause].close; ++token)
        if (_tree.kind(token) == Kind::comment) {
            comments += comments.empty() ? "" : _style.lineEnd + std::string(indentation);
            comments += _tree.bytes(token);
        }
    return comments;
}

/// Returns a text in canonical layout with the indentation and line ends of this one.
std::string SyntaxEdits::asInText(std::string_view text, std::string_view indentation) const {
    std::string result;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        const std::size_t blanks = std::min(line.find_first_not_of(' '), line.size());
        result += result.empty() ? "" : _style.lineEnd;
        if (blanks < line.size())
            result += indentation;
        for (std::size_t level = 0; level < blanks / kCanonicalIndentation && blanks < line.size(); ++level)
            result += _style.indentation;
        result += line.substr(blanks);
    }
    return result;
}

/// Returns the blanks at the beginning of the line of a token.
std::string_view SyntaxEdits::lineIndentation(Index token) const {
    const Index first = *(std::upper_bound(_lines.begin() + 1, _lines.end(), token) - 1);
    return _tree.kind(first) == Kind::blanks ? _tree.bytes(first) : std::string_view();
}

/// Returns the indentation of a clause if it began a line.
std::string SyntaxEdits::indentationFor(Index clause) const {
    const SyntaxTree::Clause &self = _tree.clauses()[clause];
    if (self.parent == SyntaxTree::kNone || indentationOf(_tree, self.open))
        return std::string(lineIndentation(self.open));
    return std::string(lineIndentation(_tree.clauses()[self.parent].open)) + _style.indentation;
}

/// Returns the word, parenthesis or comment before a token, or kNone.
SyntaxTree::Index SyntaxEdits::pieceBefore(Index token) const {
    while (token-- > 0)
        if (!SyntaxTree::isSpace(_tree.kind(token)) && _tree.kind(token) != Kind::byteOrderMark)
            return token;
    return SyntaxTree::kNone;
}

/// Whether a line ends between two tokens.
bool SyntaxEdits::breaksLine(Index begin, Index end) const {
    for (Index token = begin; token < end; ++token)
        if (_tree.kind(token) == Kind::lineEnd)
            return true;
    return false;
}
