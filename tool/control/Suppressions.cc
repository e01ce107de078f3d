#include "tool/control/Suppressions.hh"

#include "infrastructure/RtiFedLimits.hh"
#include "tool/check/Suggestion.hh"
#include "tool/syntax/SyntaxTree.hh"

#include <algorithm>

namespace {

constexpr std::string_view kMark = "rtifed:", kAllow = "allow";
constexpr std::size_t kMostComments = 10000; // each finding may be compared with all of them

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

std::size_t skipBlanks(std::string_view text, std::size_t at) {
    while (at < text.size() && isBlank(text[at])) // equivalent: no blank follows a comment
        ++at;
    return at;
}

std::size_t endOfWord(std::string_view text, std::size_t at) {
    while (at < text.size() && !isBlank(text[at]) && text[at] != ',')
        ++at;
    return at;
}

/// Returns where the mark begins in a comment that is about rules, or was meant to be; npos in any other.
std::size_t findMark(std::string_view comment) {
    std::size_t at = comment.find_first_not_of(';');
    at = at == std::string_view::npos ? comment.size() : skipBlanks(comment, at);
    if (comment.substr(at, kMark.size()) == kMark)
        return at;
    const std::string_view word = kMark.substr(0, kMark.size() - 1);
    const std::size_t next = skipBlanks(comment, at + word.size());
    const bool meant = comment.substr(at, word.size()) == word &&
                       comment.substr(std::min(next, comment.size()), kAllow.size()) == kAllow;
    return meant ? at : std::string_view::npos;
}

/// The tree has no line end at the end of a text, and a comment reaches up to the next one.
RtiFedSpan wholeOf(const SyntaxTree &tree, SyntaxTree::Index comment, bool alone) {
    auto first = comment, last = comment;
    if (first > 0 && tree.kind(first - 1) == RtiFedPiece::Kind::blanks)
        --first;
    if (alone && tree.kind(last + 1) == RtiFedPiece::Kind::lineEnd)
        ++last;
    return {tree.begin(first), tree.end(last) - tree.begin(first)};
}

std::string idsOf(const std::vector<const Rule *> &rules) {
    std::vector<std::string> ids;
    ids.reserve(rules.size()); // equivalent: only speed
    for (const Rule *rule : rules)
        ids.emplace_back(rule->id);
    return joined(ids);
}

} // namespace

Suppressions::Suppressions(const RtiFedParser &text) {
    // equivalent: only speed, if it is found in each text with a mark
    if (text.text().find(kMark.substr(0, kMark.size() - 1)) == std::string_view::npos)
        return; // most texts have none, and need no tree; equivalent: only speed
    read(SyntaxTree(text));
    for (std::size_t i = 0; i < _comments.size(); ++i)
        // equivalent: but for sanitizers, since nobody looks for what is after the last rule
        for (std::size_t j = 0; j < _comments[i].rules.size(); ++j)
            _byRule[_comments[i].rules[j]].emplace_back(i, j);
    for (auto &[rule, comments] : _byRule)
        std::stable_sort(comments.begin(), comments.end(), [this](const auto &a, const auto &b) {
            return _comments[a.first].scope.begin < _comments[b.first].scope.begin;
        });
}

/// The innermost scope is the one that begins last, as clauses nest.
std::optional<Suppression> Suppressions::find(const Rule &rule, std::uint32_t offset) {
    const auto comments = _byRule.find(&rule);
    if (comments == _byRule.end())
        return {};
    for (auto place = comments->second.rbegin(); place != comments->second.rend(); ++place) {
        Comment &comment = _comments[place->first];
        if (comment.scope.begin <= offset && offset < comment.scope.end) {
            comment.used[place->second] = true;
            return Suppression{Suppression::Kind::inText, comment.reason};
        }
    }
    return {};
}

void Suppressions::forEach(const std::function<void(RtiFedSpan, const std::string &)> &visit) const {
    for (const Comment &comment : _comments)
        visit(comment.list, "allows " + idsOf(comment.rules) + ' ' + comment.scope.name +
                                (comment.reason.empty() ? "" : ": " + comment.reason));
}

std::vector<Finding> Suppressions::unused(const std::function<bool(const Rule &)> &wasChecked) const {
    std::vector<Finding> findings;
    for (const Comment &comment : _comments) {
        std::vector<const Rule *> needed, needless;
        for (std::size_t i = 0; i < comment.rules.size(); ++i)
            (comment.used[i] || !wasChecked(*comment.rules[i]) ? needed : needless).push_back(comment.rules[i]);
        if (needless.empty())
            continue;
        Finding finding{&ruleOf(RuleId::unusedSuppression), comment.list,
                        "the comment allows " + idsOf(needless) +
                            (needless.size() == 1 ? ", which finds nothing " : ", which find nothing ") +
                            comment.scope.name};
        finding.fix = {{needed.empty() ? Replacement{comment.whole, ""} : Replacement{comment.list, idsOf(needed)}},
                       true};
        findings.push_back(std::move(finding));
    }
    return findings;
}

void Suppressions::read(const SyntaxTree &tree) {
    Index clause = 0; // the next one
    bool anyCode = false;
    bool lineHasCode = false; // equivalent: the first code sets both
    std::uint32_t lineBegin = 0;
    std::vector<Index> waiting; // comments on lines of their own, for the next clause
    const auto readWaiting = [&](const std::optional<Scope> &scope) {
        for (const Index comment : waiting)
            readComment(tree, comment, scope, true);
        waiting.clear();
    };
    for (Index token = 0; token < tree.numTokens(); ++token) { // equivalent: the end of the text begins no clause
        const auto kind = tree.kind(token);
        if (kind == RtiFedPiece::Kind::lineEnd) {
            lineHasCode = false;
            lineBegin = tree.end(token);
        } else if (kind == RtiFedPiece::Kind::comment) {
            if (!anyCode)
                readComment(tree, token, kWholeFile, true);
            else if (lineHasCode)
                readComment(tree, token, Scope{lineBegin, tree.end(token), "on this line"}, false);
            else
                waiting.push_back(token);
        } else if (kind != RtiFedPiece::Kind::blanks && kind != RtiFedPiece::Kind::byteOrderMark) {
            anyCode = lineHasCode = true;
            if (kind != RtiFedPiece::Kind::open) {
                readWaiting({});
                continue;
            }
            const RtiFedSpan span = tree.span(clause++);
            readWaiting(Scope{span.begin, span.begin + span.length, "in this clause"});
        }
    }
    readWaiting({});
}

/// Reads a comment that holds in a scope, if it is about rules; without a scope it holds nowhere.
void Suppressions::readComment(const SyntaxTree &tree, Index token, const std::optional<Scope> &scope, bool alone) {
    const std::string_view text = tree.bytes(token);
    const std::uint32_t offset = tree.begin(token);
    const std::size_t mark = findMark(text);
    if (mark == std::string_view::npos || _comments.size() + _bad.size() > kMostComments)
        return;
    if (_comments.size() + _bad.size() == kMostComments)
        return report(offset, text.size(),
                      "expected at most " + std::to_string(kMostComments) + " comments that allow rules, found more");
    if (text.substr(mark, kMark.size()) != kMark)
        return report(offset + static_cast<std::uint32_t>(mark), kMark.size() - 1,
                      "expected a colon after \"rtifed\", as in ;; rtifed: allow RULE REASON");
    std::size_t at = skipBlanks(text, mark + kMark.size());
    const std::string_view word = text.substr(at, endOfWord(text, at) - at);
    if (word != kAllow)
        return report(offset + static_cast<std::uint32_t>(at), word.size(),
                      "expected \"allow\" after \"rtifed:\", found " + inQuotes(word));
    Comment comment;
    at = skipBlanks(text, at + word.size());
    if (!readRules(text, at, offset, comment))
        return;
    if (!scope)
        return report(offset, text.size(), "no clause follows that this comment can be for");
    comment.scope = *scope;
    comment.whole = wholeOf(tree, token, alone);
    comment.used.resize(comment.rules.size());
    _comments.push_back(std::move(comment));
}

/// Reads the rules and the reason from `at` on. Returns whether there is a rule.
bool Suppressions::readRules(std::string_view text, std::size_t at, std::uint32_t offset, Comment &comment) {
    const auto begin = static_cast<std::uint32_t>(at);
    std::size_t end = at;
    for (bool more = true; more;) {
        end = endOfWord(text, at);
        const std::string_view id = text.substr(at, end - at);
        const Rule *rule = findRule(id);
        if (rule)
            comment.rules.push_back(rule);
        else if (id.empty())
            report(offset + static_cast<std::uint32_t>(at), 0,
                   "expected the name of a rule, as in ;; rtifed: allow RULE REASON");
        else
            report(offset + static_cast<std::uint32_t>(at), id.size(), unknownRule(id));
        at = skipBlanks(text, end);
        more = at < text.size() && text[at] == ','; // equivalent: no comma follows a comment
        at = more ? skipBlanks(text, at + 1) : at;
    }
    comment.list = {offset + begin, static_cast<std::uint32_t>(end) - begin};
    const std::string_view reason = text.substr(at);
    comment.reason = reason.substr(0, reason.find_last_not_of(" \t\v\f") + 1);
    const std::string_view first = reason.substr(0, endOfWord(reason, 0)); // equivalent: no comma or blank begins it
    if (findRule(first))
        report(offset + static_cast<std::uint32_t>(at), first.size(),
               "expected a comma before the rule " + inQuotes(first) + ", or a reason");
    return !comment.rules.empty();
}

void Suppressions::report(std::uint32_t begin, std::size_t length, std::string text) {
    _bad.push_back(
        {&ruleOf(RuleId::badSuppression), RtiFedSpan{begin, static_cast<std::uint32_t>(length)}, std::move(text)});
}

std::string allowComment(const std::vector<const Rule *> &rules, const std::string &reason) {
    return ";; " + std::string(kMark) + ' ' + std::string(kAllow) + ' ' + idsOf(rules) + ' ' + reason;
}

std::string faultOfReason(const std::string &reason) {
    const std::string first = reason.substr(0, endOfWord(reason, 0));
    if (first.empty() || findRule(first))
        return "expected a reason, such as \"kept for federates of version 1\"" +
               (first.empty() ? std::string() : ", found the rule " + inQuotes(first));
    const bool oneLine = std::none_of(reason.begin(), reason.end(),
                                      // equivalent: no argument contains a NUL byte
                                      [](char c) { return (c >= 0 && c < ' ' && c != '\t') || c == '\x7f'; });
    return oneLine ? "" : "expected a reason of one line, without control characters";
}
