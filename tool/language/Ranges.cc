#include "tool/language/Ranges.hh"

#include "tool/language/Document.hh"
#include "tool/language/words/Comments.hh"
#include "tool/syntax/TextStyle.hh"

#include <algorithm>

namespace {

using Index = SyntaxTree::Index;

/// Finds the folding ranges by the lines of the tokens.
class Folder {
public:
    explicit Folder(const SyntaxTree &tree) : _tree(tree) {
        _lines.reserve(tree.numTokens() + std::size_t(1)); // equivalent: only speed
        std::uint32_t line = 0;                            // equivalent: only differences of lines matter
        // equivalent: one token less shifts all by a line
        for (Index token = 0; token < tree.numTokens(); ++token) {
            _lines.push_back(line);
            line += tree.kind(token) == SyntaxTree::Kind::lineEnd ? 1 : 0;
        }
        _lines.push_back(line);
    }

    std::vector<FoldingRange> ranges() {
        for (Index clause = 0; clause < _tree.clauses().size(); ++clause)
            foldClause(_tree.clauses()[clause]);
        for (Index token = 0; token < _tree.numTokens(); ++token)
            if (isCommentLine(_tree, token)) {
                const Index last = lastOfCommentRun(_tree, token);
                add(token, last, true);
                token = last;
            }
        std::stable_sort(_ranges.begin(), _ranges.end(),
                         [](const FoldingRange &a, const FoldingRange &b) { return a.span.begin < b.span.begin; });
        return std::move(_ranges);
    }

private:
    void foldClause(const SyntaxTree::Clause &clause) {
        Index last = clause.close;
        if (last == _tree.numTokens() || indentationOf(_tree, last))
            do
                --last;
            while (SyntaxTree::isSpace(_tree.kind(last)));
        add(clause.open, last, false);
    }

    void add(Index first, Index last, bool isComment) {
        if (_lines[first] < _lines[last])
            _ranges.push_back({_tree.spanOfTokens(first, last), isComment});
    }

    const SyntaxTree &_tree;
    std::vector<std::uint32_t> _lines; // of each token
    std::vector<FoldingRange> _ranges;
};

constexpr std::size_t kMostSelected = 500; // spans; those further out in a text of nested parentheses help nobody

/// Collects spans that grow.
class Selection {
public:
    bool isFull() const { return spans.size() >= kMostSelected; }
    void add(std::uint32_t begin, std::uint32_t end) {
        if (!spans.empty()) {
            const RtiFedSpan &last = spans.back();
            const bool isAround = begin <= last.begin && end >= last.begin + last.length;
            if (!isAround || end - begin == last.length)
                return;
        }
        if (end > begin)
            spans.push_back({begin, end - begin});
    }
    void add(RtiFedSpan span) { add(span.begin, span.begin + span.length); }

    std::vector<RtiFedSpan> spans;
};

void addWord(const SyntaxTree &tree, Index token, Selection &selection) {
    if (tree.kind(token) == SyntaxTree::Kind::quotedWord) {
        const auto begin = tree.begin(token) + 1;
        selection.add(begin, begin + static_cast<std::uint32_t>(wordOf(tree, token).size()));
    }
    selection.add(spanOf(tree, token));
}

void addComment(const SyntaxTree &tree, Index token, std::uint32_t offset, Selection &selection) {
    const auto inComment = [&](char byte) { return byte != ' ' && byte != '\t' && byte != ';'; };
    const std::string_view text = tree.text();
    std::uint32_t begin = offset, end = offset;
    while (begin > tree.begin(token) && inComment(text[begin - 1]))
        --begin;
    while (end < tree.end(token) && inComment(text[end]))
        ++end;
    selection.add(begin, end);
    selection.add(spanOf(tree, token));
    if (isCommentLine(tree, token))
        selection.add(tree.spanOfTokens(firstOfCommentRun(tree, token), lastOfCommentRun(tree, token)));
}

} // namespace

std::vector<FoldingRange> foldingRanges(const Document &document) {
    return Folder(document.tree()).ranges();
}

std::vector<RtiFedSpan> selectionAt(const Document &document, std::uint32_t offset) {
    const SyntaxTree &tree = document.tree();
    const Index token = wordAt(tree, offset);
    Selection selection;
    if (token != SyntaxTree::kNone && SyntaxTree::isWord(tree.kind(token)))
        addWord(tree, token, selection);
    else if (token != SyntaxTree::kNone)
        addComment(tree, token, offset, selection);
    for (Index clause = tree.clauseAt(offset); clause != SyntaxTree::kNone && !selection.isFull();
         clause = tree.clauses()[clause].parent) {
        const std::vector<Index> words = tree.words(clause);
        if (!words.empty())
            selection.add(tree.spanOfTokens(words.front(), words.back()));
        const RtiFedSpan whole = tree.span(clause);
        const bool isClosed = tree.clauses()[clause].close < tree.numTokens();
        selection.add(whole.begin + 1, whole.begin + whole.length - (isClosed ? 1 : 0));
        selection.add(whole);
    }
    selection.add(0, static_cast<std::uint32_t>(tree.text().size()));
    return selection.spans;
}
