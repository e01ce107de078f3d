#include "tool/control/AllowComments.hh"

#include "tool/control/Suppressions.hh"
#include "tool/syntax/SyntaxEdits.hh"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

namespace {

using Index = SyntaxTree::Index;

/// Adds the comments to one text.
class CommentWriter {
public:
    CommentWriter(const RtiFedParser &text, const std::string &reason)
        : _tree(text), _edits(_tree), _reason(reason), _lineEnd(lineEndOf(_tree)) {}

    /// Allows a rule where a finding is. Those that need a comment at the end of a line come last, since a comment
    /// before a clause around them may be for them too.
    void allow(const Rule &rule, std::uint32_t offset) {
        const Index clause = clauseAt(offset);
        if (clause != SyntaxTree::kNone && !indentationOf(_tree, _tree.clauses()[clause].open))
            return void(_onSharedLines.emplace_back(&rule, offset));
        if (clause != SyntaxTree::kNone)
            _allowedIn[clause].insert(&rule);
        add(rule, offset);
    }

    std::size_t numComments() const { return _rules.size(); }

    std::string text() {
        for (const auto &[place, rules] : _rules)
            _edits.replace({place.offset, 0}, place.before + allowComment(rules, _reason) + place.after);
        return _edits.text();
    }

    /// To be called after all findings were allowed.
    void finish() {
        for (const auto &[rule, offset] : _onSharedLines)
            if (!isAllowedAround(clauseAt(offset), *rule))
                add(*rule, offset);
    }

private:
    Index clauseAt(std::uint32_t offset) const {
        return _tree.clauses().empty() ? SyntaxTree::kNone : _tree.clauseAt(offset);
    }

    bool isAllowedAround(Index clause, const Rule &rule) const {
        for (; clause != SyntaxTree::kNone; clause = _tree.clauses()[clause].parent) {
            const auto allowed = _allowedIn.find(clause);
            if (allowed != _allowedIn.end() && allowed->second.count(&rule) > 0)
                return true;
        }
        return false;
    }

    void add(const Rule &rule, std::uint32_t offset) {
        auto &rules = _rules[placeFor(offset)];
        if (std::find(rules.begin(), rules.end(), &rule) == rules.end())
            rules.push_back(&rule);
    }

    /// Where a comment is inserted, and what is written before and after it.
    struct Place {
        std::uint32_t offset;
        std::string before, after;

        bool operator<(const Place &other) const { return offset < other.offset; }
    };

    Place placeFor(std::uint32_t offset) {
        const Index clause = clauseAt(offset);
        if (clause == SyntaxTree::kNone) // outside of all clauses, for which only the whole file is left
            return beforeToken(firstToken());
        const Index open = _tree.clauses()[clause].open;
        if (indentationOf(_tree, open))
            return beforeToken(open);
        const auto end = endOfCode(offset);
        return end ? Place{_tree.end(*end), " ", ""} : beforeToken(open);
    }

    /// On a line of its own before the token, which is moved to the next line.
    Place beforeToken(Index token) const {
        const std::uint32_t offset =
            token < _tree.numTokens() ? _tree.begin(token) : static_cast<std::uint32_t>(_tree.text().size());
        const auto indentation = indentationOf(_tree, token);
        if (indentation)
            return {offset, "", _lineEnd + std::string(*indentation)};
        Index first = token; // of the line
        while (first > 0 && _tree.kind(first - 1) != RtiFedPiece::Kind::lineEnd)
            --first;
        const std::string blanks(_tree.kind(first) == RtiFedPiece::Kind::blanks ? _tree.bytes(first) : "");
        return {offset, _lineEnd + blanks, _lineEnd + blanks};
    }

    /// Returns the last token of the line with this byte, without blanks at its end; nothing if that is a comment, or
    /// if the line is empty. A line may be long and have many findings, so the last answer is kept.
    std::optional<Index> endOfCode(std::uint32_t offset) {
        if (offset >= _lineBegin && offset < _lineStop)
            return _lineCode;
        Index end = tokenAt(offset), begin = end;
        while (end < _tree.numTokens() && _tree.kind(end) != RtiFedPiece::Kind::lineEnd)
            ++end;
        while (begin > 0 && _tree.kind(begin - 1) != RtiFedPiece::Kind::lineEnd)
            --begin;
        _lineBegin = _tree.begin(begin);
        _lineStop = _tree.begin(end);
        _lineCode.reset();
        // unreached: findings are at words, parentheses and comments, so that the line is not empty
        while (end > begin && _tree.kind(end - 1) == RtiFedPiece::Kind::blanks)
            --end;
        if (end > begin && _tree.kind(end - 1) != RtiFedPiece::Kind::comment) // unreached: likewise, for an empty line
            _lineCode = end - 1;
        return _lineCode;
    }

    /// Returns the token with this byte; the number of tokens for the end of the text.
    Index tokenAt(std::uint32_t offset) const {
        Index begin = 0, end = _tree.numTokens();
        while (begin < end) {
            const Index middle = begin + (end - begin) / 2;
            if (_tree.end(middle) <= offset)
                begin = middle + 1;
            else
                end = middle;
        }
        return begin;
    }

    /// The first token after a byte order mark.
    Index firstToken() const {
        return _tree.numTokens() > 0 && _tree.kind(0) == RtiFedPiece::Kind::byteOrderMark ? 1 : 0;
    }

    const SyntaxTree _tree;
    SyntaxEdits _edits;
    const std::string &_reason;
    const std::string _lineEnd;
    std::map<Place, std::vector<const Rule *>> _rules;
    std::map<Index, std::set<const Rule *>> _allowedIn; // by comments before these clauses
    std::vector<std::pair<const Rule *, std::uint32_t>> _onSharedLines;
    std::uint32_t _lineBegin = 0, _lineStop = 0; // the line of the last answer
    std::optional<Index> _lineCode;
};

} // namespace

AllowedText addAllowComments(const Checker &text, const std::vector<Finding> &findings, const std::string &reason) {
    CommentWriter writer(text.parser(), reason);
    std::size_t numFindings = 0;
    for (const Finding &finding : findings)
        if (!finding.suppression && finding.rule != &ruleOf(RuleId::badSuppression) &&
            finding.rule != &ruleOf(RuleId::unusedSuppression)) {
            writer.allow(*finding.rule, finding.span->begin);
            ++numFindings;
        }
    writer.finish();
    return {writer.text(), writer.numComments(), numFindings};
}
