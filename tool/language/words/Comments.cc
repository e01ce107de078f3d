#include "tool/language/words/Comments.hh"

#include "tool/syntax/TextStyle.hh"

#include <algorithm>
#include <string_view>
#include <vector>

namespace {

using Index = SyntaxTree::Index;
using Kind = SyntaxTree::Kind;

constexpr std::string_view kBlanks = " \t\v\f", kRules = "-=*#_~+/; \t\v\f", kCommand = "rtifed:";

/// The comment line directly above the line that this token begins, or kNone.
Index commentLineAbove(const SyntaxTree &tree, Index token) {
    Index at = token;
    if (at > 0 && tree.kind(at - 1) == Kind::blanks)
        --at;
    const bool isBelowComment = at > 1 && tree.kind(at - 1) == Kind::lineEnd && isCommentLine(tree, at - 2);
    return isBelowComment ? at - 2 : SyntaxTree::kNone;
}

/// The comment line directly below a comment, or kNone.
Index commentLineBelow(const SyntaxTree &tree, Index token) {
    Index at = token + 1;
    if (at >= tree.numTokens() || tree.kind(at) != Kind::lineEnd)
        return SyntaxTree::kNone;
    ++at;
    if (at < tree.numTokens() && tree.kind(at) == Kind::blanks)
        ++at;
    return at < tree.numTokens() && tree.kind(at) == Kind::comment ? at : SyntaxTree::kNone;
}

/// The comment that ends the line of a token, if only parentheses are between them; or kNone.
Index commentBeside(const SyntaxTree &tree, Index token) {
    Index at = token + 1;
    while (at < tree.numTokens() && (tree.kind(at) == Kind::blanks || tree.kind(at) == Kind::close))
        ++at;
    return at < tree.numTokens() && tree.kind(at) == Kind::comment ? at : SyntaxTree::kNone;
}

void addLine(std::string_view comment, std::string &text) {
    comment.remove_prefix(std::min(comment.find_first_not_of(';'), comment.size()));
    comment.remove_prefix(std::min(comment.find_first_not_of(kBlanks), comment.size()));
    comment = comment.substr(0, comment.find_last_not_of(kBlanks) + 1);
    const bool isDrawn = !comment.empty() && comment.find_first_not_of(kRules) == std::string_view::npos;
    if (!isDrawn && comment.substr(0, kCommand.size()) != kCommand)
        text += std::string(comment) + '\n';
}

} // namespace

bool isCommentLine(const SyntaxTree &tree, Index token) {
    return tree.kind(token) == Kind::comment && indentationOf(tree, token);
}

Index firstOfCommentRun(const SyntaxTree &tree, Index token) {
    for (Index above = token; above != SyntaxTree::kNone; above = commentLineAbove(tree, token))
        token = above;
    return token;
}

Index lastOfCommentRun(const SyntaxTree &tree, Index token) {
    for (Index below = token; below != SyntaxTree::kNone; below = commentLineBelow(tree, token))
        token = below;
    return token;
}

std::vector<Index> commentsOf(const SyntaxTree &tree, Index clause) {
    std::vector<Index> comments;
    const Index open = tree.clauses()[clause].open;
    if (const Index above = commentLineAbove(tree, open); above != SyntaxTree::kNone)
        for (Index token = firstOfCommentRun(tree, above); token <= above; ++token)
            if (tree.kind(token) == Kind::comment)
                comments.push_back(token);
    const std::vector<Index> words = tree.words(clause);
    if (const Index beside = commentBeside(tree, words.empty() ? open : words.back()); beside != SyntaxTree::kNone)
        comments.push_back(beside);
    return comments;
}

std::string textOf(const SyntaxTree &tree, const std::vector<Index> &comments) {
    std::string text;
    for (const Index comment : comments)
        addLine(tree.bytes(comment), text);
    text.erase(0, std::min(text.find_first_not_of('\n'), text.size()));
    while (!text.empty() && text.back() == '\n')
        text.pop_back();
    return text;
}

std::string documentationOf(const SyntaxTree &tree, Index clause) {
    return textOf(tree, commentsOf(tree, clause));
}
