#include "tool/syntax/SyntaxEdits.hh"

#include <algorithm>

namespace {

using Kind = SyntaxTree::Kind;

/// Returns a line with one blank for several ones between its words.
std::string withoutColumns(std::string_view line) {
    if (line.find('"') != std::string_view::npos) // blanks of a name are not between words
        return std::string(line);
    std::string result;
    for (const char c : line)
        if (c != ' ' || result.back() != ' ') // the line begins with a word or parenthesis
            result += c;
    return result;
}

/// Returns the token after a comment, and after those on the lines below it that continue it in the same column.
SyntaxTree::Index endOfComment(const SyntaxTree &tree, SyntaxTree::Index comment) {
    const auto columnOf = [&tree](SyntaxTree::Index token) {
        const std::string_view before = tree.text().substr(0, tree.begin(token));
        return before.size() - (before.find_last_of("\r\n") + 1); // equivalent: columns are only compared
    };
    const std::size_t column = columnOf(comment);
    // unreached: a line end and the ")" of FED follow a comment in it
    while (tree.kind(comment + 1) == Kind::lineEnd && tree.kind(comment + 2) == Kind::blanks &&
           tree.kind(comment + 3) == Kind::comment && columnOf(comment + 3) == column)
        comment += 3;
    return comment + 1;
}

constexpr std::size_t kCanonicalIndentation = 2;

} // namespace

SyntaxEdits::SyntaxEdits(const SyntaxTree &tree) : _tree(tree), _style(styleOf(tree)) {
    const bool marked = tree.kind(0) == Kind::byteOrderMark;
    _lines.push_back(marked ? 1 : 0);
    // equivalent: what follows the text is no line end
    for (Index token = 0; token < tree.numTokens(); ++token)
        if (tree.kind(token) == Kind::lineEnd)
            _lines.push_back(token + 1);
}

void SyntaxEdits::replaceToken(Index token, std::string text) {
    replace({_tree.begin(token), _tree.end(token) - _tree.begin(token)}, std::move(text));
}

void SyntaxEdits::removeToken(Index token) {
    // unreached: no ")" or word is removed that is the first token
    const bool afterBlanks = token > 0 && _tree.kind(token - 1) == Kind::blanks && !indentationOf(_tree, token);
    const std::uint32_t begin = _tree.begin(token - (afterBlanks ? 1 : 0));
    replace({begin, _tree.end(token) - begin}, {});
}

bool SyntaxEdits::removeClause(Index clause) {
    const auto [open, close, parent, clauseEnd] = _tree.clauses()[clause];
    std::string left = commentsIn(clause, indentationFor(clause));
    Index end = std::min(close, _tree.numTokens() - 1) + 1; // of what is about the clause
    if (_tree.kind(end) == Kind::blanks)
        ++end;
    bool staysComment = !left.empty() || isBelowComment(clause);
    if (_tree.kind(end) == Kind::comment) {
        staysComment = true;
        end = endOfComment(_tree, end);
    }
    if (staysComment && _tree.kind(end) == Kind::lineEnd) {
        const Index line = end + 1, first = line + (_tree.kind(line) == Kind::blanks ? 1 : 0);
        if (_tree.kind(first) == Kind::open || _tree.kind(first) == Kind::comment)
            replace({_tree.begin(line), 0}, _style.lineEnd);
    } else if (staysComment && _tree.kind(end) == Kind::open) {
        if (left.empty())
            replace({_tree.begin(lineBegin(open)), 0}, _style.lineEnd);
        else
            left += _style.lineEnd;
    }
    remove(clause, std::move(left));
    return staysComment;
}

/// Whether a comment that is alone on its line, and is not removed, is directly above a clause that begins a line.
bool SyntaxEdits::isBelowComment(Index clause) const {
    const auto stays = [this](Index comment) {
        return std::none_of(_replacements.begin(), _replacements.end(), [&](const Replacement &made) {
            // unreached: those are removed and looked for in the same order, the nearest one first
            return made.span.begin <= _tree.begin(comment) && _tree.begin(comment) < made.span.begin + made.span.length;
        });
    };
    Index token = _tree.clauses()[clause].open;
    // unreached: a removed clause is after the line of FED, or on it
    for (Index line = lineBegin(token); indentationOf(_tree, token) && line > 1; line = lineBegin(token)) {
        token = line - 2; // before the line end
        if (_tree.kind(token) != Kind::comment || !indentationOf(_tree, token))
            return false;
        if (stays(token))
            return true;
    }
    return false;
}

/// Removes a clause; `left` takes its place.
void SyntaxEdits::remove(Index clause, std::string left) {
    const Index open = _tree.clauses()[clause].open;
    const Index last = std::min(_tree.clauses()[clause].close, _tree.numTokens() - 1);
    const auto indentation = indentationOf(_tree, open);
    Index next = last + 1; // on the same line
    while (_tree.kind(next) == Kind::blanks)
        ++next;
    const bool endsLine = next == _tree.numTokens() || _tree.kind(next) == Kind::lineEnd;
    const Index previous = pieceBefore(open);
    const bool mayJoin = _tree.kind(previous) != Kind::comment;

    std::uint32_t begin = _tree.begin(open), end = _tree.end(last);
    if (!left.empty()) { // they take its place
        if (!endsLine)
            left += _style.lineEnd + indentationFor(clause);
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

void SyntaxEdits::removeLine(Index comment) {
    const std::uint32_t begin = _tree.begin(comment) - static_cast<std::uint32_t>(lineIndentation(comment).size());
    replace({begin, _tree.end(std::min(comment + 1, _tree.numTokens() - 1)) - begin}, {});
}

void SyntaxEdits::insertAfter(Index clause, std::string_view text) {
    Index last = std::min(_tree.clauses()[clause].close, _tree.numTokens() - 1);
    const Index next = last + 1 + (_tree.kind(last + 1) == Kind::blanks ? 1 : 0);
    if (_tree.kind(next) == Kind::comment)
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
    // unreached: nothing is inserted into a clause that is not closed
    if (_style.closesOnOwnLine && parent.close < _tree.numTokens() && !breaksLine(last + 1, parent.close))
        inserted += _style.lineEnd + indentation;
    replace({_tree.end(last), 0}, std::move(inserted));
}

void SyntaxEdits::insertFirst(Index clause, std::string_view text) {
    if (!_tree.hasClauses(clause))
        return insertInto(clause, text);
    Index last = _tree.words(clause).back();
    const Index next = last + 1 + (_tree.kind(last + 1) == Kind::blanks ? 1 : 0);
    if (_tree.kind(next) == Kind::comment)
        last = next;
    const std::string indentation = std::string(lineIndentation(_tree.clauses()[clause].open)) + _style.indentation;
    replace({_tree.end(last), 0}, _style.lineEnd + asInText(text, indentation));
}

void SyntaxEdits::moveContents(Index from, Index to) {
    const SyntaxTree::Clause &source = _tree.clauses()[from], &target = _tree.clauses()[to];
    const Index first = _tree.words(from).front() + 1, last = pieceBefore(source.close);
    const Index end = pieceBefore(target.close);
    const std::string indentation(lineIndentation(target.open));
    std::string moved;
    if (last >= first) {
        moved = _tree.text().substr(_tree.begin(first), _tree.end(last) - _tree.begin(first));
        Index begin = first;
        while (_tree.kind(begin) == Kind::blanks)
            ++begin;
        if (_tree.kind(begin) != Kind::lineEnd)
            moved = _style.lineEnd + indentation + _style.indentation +
                    std::string(_tree.text().substr(_tree.begin(begin), _tree.end(last) - _tree.begin(begin)));
        if (!breaksLine(end + 1, target.close) && (_style.closesOnOwnLine || _tree.kind(last) == Kind::comment))
            moved += _style.lineEnd + indentation;
    }
    replace({_tree.end(end), 0}, std::move(moved));
    remove(from, {});
}

void SyntaxEdits::insertClose(Index clause, std::uint32_t offset) {
    const Index after = tokenFrom(offset);
    // unreached: a ")" is inserted before a token, after FED
    const bool beginsLine = after > 0 && _tree.begin(after) == offset && _tree.kind(after - 1) == Kind::close &&
                            indentationOf(_tree, after - 1);
    const std::string lineBegin = _style.lineEnd + std::string(lineIndentation(_tree.clauses()[clause].open));
    replace({offset, 0}, (beginsLine ? lineBegin : std::string()) + ')');
}

std::string SyntaxEdits::spelt(std::string_view keyword) const {
    const auto known = _style.keywords.find(keyword);
    return known == _style.keywords.end() ? std::string(keyword) : known->second;
}

void SyntaxEdits::appendLine(std::string_view line) {
    const Index last = pieceBefore(_tree.numTokens());
    replace({_tree.end(last), 0}, _style.lineEnd + std::string(line));
}

std::vector<Replacement> SyntaxEdits::take() {
    std::vector<Replacement> taken = replacements();
    _replacements.clear();
    return taken;
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

/// Returns a text in canonical layout without empty lines, with the indentation and line ends of this one.
std::string SyntaxEdits::asInText(std::string_view text, std::string_view indentation) const {
    std::string result;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        const std::size_t blanks = line.find_first_not_of(' ');
        result += result.empty() ? "" : _style.lineEnd;
        result += indentation;
        for (std::size_t level = 0; level < blanks / kCanonicalIndentation; ++level)
            result += _style.indentation;
        result +=
            withKeyword(_style.hasColumns ? std::string(line.substr(blanks)) : withoutColumns(line.substr(blanks)));
    }
    return result;
}

/// Returns a line of a clause with the keyword as the text spells it.
std::string SyntaxEdits::withKeyword(std::string_view line) const {
    if (line[0] != '(')
        return std::string(line);
    const std::string_view keyword = line.substr(1, line.find_first_of(" )") - 1);
    return '(' + spelt(keyword) + std::string(line.substr(1 + keyword.size()));
}

/// Returns the first token of the line of a token.
SyntaxTree::Index SyntaxEdits::lineBegin(Index token) const {
    // equivalent: no token is before the first line
    return *(std::upper_bound(_lines.begin() + 1, _lines.end(), token) - 1);
}

/// Returns the blanks at the beginning of the line of a token.
std::string_view SyntaxEdits::lineIndentation(Index token) const {
    const Index first = lineBegin(token);
    return _tree.kind(first) == Kind::blanks ? _tree.bytes(first) : std::string_view();
}

/// Returns the indentation of a clause if it began a line.
std::string SyntaxEdits::indentationFor(Index clause) const {
    const SyntaxTree::Clause &self = _tree.clauses()[clause];
    // unreached: FED is neither removed, nor is a clause added after it
    if (self.parent == SyntaxTree::kNone || indentationOf(_tree, self.open))
        return std::string(lineIndentation(self.open));
    return std::string(lineIndentation(_tree.clauses()[self.parent].open)) + _style.indentation;
}

/// Returns the first token that begins at an offset or after it.
SyntaxTree::Index SyntaxEdits::tokenFrom(std::uint32_t offset) const {
    Index low = 0, high = _tree.numTokens(); // equivalent: no ")" is inserted at the beginning
    while (low < high) {
        const Index middle = low + (high - low) / 2; // equivalent: any token between them
        (_tree.begin(middle) < offset ? low : high) = _tree.begin(middle) < offset ? middle + 1 : middle;
    }
    return low;
}

/// Returns the word, parenthesis or comment before a token that is not the first one of these.
SyntaxTree::Index SyntaxEdits::pieceBefore(Index token) const {
    do
        --token;
    while (SyntaxTree::isSpace(_tree.kind(token)));
    return token;
}

/// Whether a line ends between two tokens.
bool SyntaxEdits::breaksLine(Index begin, Index end) const {
    for (Index token = begin; token < end; ++token) // equivalent: the last one is a ")"
        if (_tree.kind(token) == Kind::lineEnd)
            return true;
    return false;
}
