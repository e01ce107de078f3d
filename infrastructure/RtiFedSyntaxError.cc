#include "infrastructure/RtiFedSyntaxError.hh"

#include "infrastructure/RtiFedLexer.hh"
#include "infrastructure/RtiFedLimits.hh"

namespace {

std::string quoted(std::string_view bytes) {
    return '"' + RtiFedParser::printable(bytes) + '"';
}

std::string placeOf(const RtiFedText &text, RtiFedOffset offset) {
    const RtiFedPosition position = text.position(offset);
    return std::to_string(position.line) + ":" + std::to_string(position.column);
}

std::string found(const RtiFedText &text, RtiFedOffset at) {
    const RtiFedToken token = RtiFedLexer(text, at).next();
    switch (token.kind) {
    case RtiFedToken::Kind::open:
        return "\"(\"";
    case RtiFedToken::Kind::close:
        return "\")\"";
    case RtiFedToken::Kind::nul:
        return "a NUL byte";
    case RtiFedToken::Kind::end:
        return "the end of the file";
    case RtiFedToken::Kind::name:
        break;
    }
    return quoted(text.at(token.text));
}

/// How a reader of the text would call the clause that begins at `offset`: `the class "Plane" of 52:8`.
std::string clauseAt(const RtiFedText &text, RtiFedOffset offset) {
    RtiFedLexer lexer(text, offset);
    lexer.next();
    const RtiFedToken keyword = lexer.next();
    const std::string place = " of " + placeOf(text, offset);
    if (keyword.kind != RtiFedToken::Kind::name)
        return "the \"(\"" + place;
    const std::string_view word = text.at(keyword.text);
    auto kind = RtiFedClause::fed;
    while (kind != RtiFedClause::unknown && !isKeywordOf(kind, word))
        kind = static_cast<RtiFedClause>(static_cast<unsigned char>(kind) + 1);
    if (kind == RtiFedClause::fed)
        return quoted(word) + place;
    const std::string noun = formOf(kind).noun;
    if (!formOf(kind).named)
        return "the " + noun + " " + quoted(word) + place;
    const RtiFedToken name = lexer.next();
    return "the " + noun + (name.kind == RtiFedToken::Kind::name ? " " + quoted(text.at(name.text)) : "") + place;
}

std::string listOfChildren(RtiFedClause parent, bool afterFirst) {
    const RtiFedClauseForm &form = formOf(parent);
    std::string list;
    std::size_t last = form.numChildren;
    if (afterFirst && form.children[last - 1] == RtiFedClause::secLevel)
        --last;
    for (std::size_t i = 0; i < last; ++i)
        list += (i == 0 ? "\"" : i + 1 < last ? "\", \"" : "\" or \"") + std::string(formOf(form.children[i]).keyword);
    return list + '"';
}

} // namespace

std::string RtiFedSyntaxError::describe(const RtiFedText &text,
                                        const std::optional<RtiFedBalance::Suspect> &suspect) const {
    switch (problem) {
    case expectedFed:
        return "expected \"(FED\", found " + found(text, at);
    case expectedArgument:
        return std::string("expected ") + formOf(kind).arguments[number] + ", found " + found(text, at);
    case expectedClause:
        return "expected " + listOfChildren(kind, afterFirst) + ", found " + found(text, at);
    case expectedClose:
        if (!isLeaf(kind))
            return "expected \"(\" or \")\" in " + clauseAt(text, clause) + ", found " + found(text, at);
        return "expected \")\" to close " + clauseAt(text, clause) + ", found " + found(text, at);
    case leftOpen: {
        std::string description = "expected \")\" to close " + clauseAt(text, clause) + ", found " + found(text, at);
        if (suspect && suspect->clause != clause && suspect->close < at)
            description += "; by its look, " + clauseAt(text, suspect->clause) + " was left open: the \")\" of " +
                           placeOf(text, suspect->close) + " closes it, but stands under " +
                           clauseAt(text, suspect->under);
        return description;
    }
    case secondClause:
        return std::string("expected one \"") + formOf(kind).keyword + "\" clause, found a second, the first is at " +
               placeOf(text, other);
    case missingClause:
        return std::string("expected a \"") + formOf(kind).keyword + "\" clause in " + clauseAt(text, clause) +
               ", found " + found(text, at);
    case nestedTooDeeply:
        return "expected at most " + std::to_string(kMaxClassNesting) +
               " levels of classes, found one more: " + clauseAt(text, clause) + " is nested too deeply";
    case dotInClassName:
        return "expected a class name without a dot, found " + found(text, at);
    case nameTooLong:
    case fullNameTooLong:
        return std::string(problem == nameTooLong ? "expected a name" : "expected a full class name") + " of at most " +
               std::to_string(kMaxNameLength) + " bytes, found one of " + std::to_string(number);
    case namesTooLong:
        return "expected full class names of at most " + std::to_string(kMaxFullNames) +
               " bytes together, found more at " + clauseAt(text, clause);
    case unterminatedQuote:
        return "expected a second quote on the line, found the end of the line";
    case trailingText:
        return "expected the end of the file, found " + found(text, at) + ": the \")\" of " + placeOf(text, other) +
               " closed " + clauseAt(text, clause);
    case nulByte:
        return "expected FED text, found a NUL byte";
    case textTooLong:
        return "expected a text of at most " + std::to_string(kMaxTextSize) + " bytes, found a longer one";
    }
    return {};
}
