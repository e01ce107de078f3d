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
    return quoted(text.at(token.text)) + (token.quoted ? " in quotes" : "");
}

/// How a reader of the text would call a clause: `the class "Plane" of 52:8`.
std::string nameOf(const RtiFedText &text, const RtiFedClauseName &clause) {
    const RtiFedClauseForm &form = formOf(clause.kind);
    const std::string place = " of " + placeOf(text, clause.begin);
    if (clause.kind == RtiFedClause::fed)
        return "\"FED\"" + place;
    if (clause.kind == RtiFedClause::unknown && clause.label.length == 0)
        return "the \"(\"" + place;
    const bool byLabel = form.named || clause.kind == RtiFedClause::unknown;
    std::string label = byLabel ? "" : " \"" + std::string(form.keyword) + '"';
    if (byLabel && clause.label.length > 0)
        label = ' ' + quoted(text.at(clause.label));
    return "the " + std::string(form.noun) + label + place;
}

/// The same for the clause that begins at an offset.
std::string nameOf(const RtiFedText &text, RtiFedOffset begin) {
    constexpr RtiFedOffset kNear = 4096; // many errors may name one clause: no long comment is read for each
    RtiFedLexer lexer(text, begin, begin + kNear);
    lexer.next();
    const RtiFedToken keyword = lexer.next();
    RtiFedClauseName clause{RtiFedClause::unknown, begin, keyword.text};
    for (auto kind = RtiFedClause::fed; kind != RtiFedClause::unknown && clause.kind == RtiFedClause::unknown;
         kind = static_cast<RtiFedClause>(static_cast<unsigned char>(kind) + 1))
        if (keyword.kind == RtiFedToken::Kind::name && isKeywordOf(kind, text.at(keyword.text)))
            clause = {kind, begin, lexer.next().text};
    return nameOf(text, clause);
}

std::string describe(const RtiFedText &text, const RtiFedBalance::Suspect &suspect) {
    const std::string clause = nameOf(text, suspect.clause), at = placeOf(text, suspect.at);
    switch (suspect.look) {
    case RtiFedBalance::Suspect::closeUnderOuter:
        return "; by its look, " + clause + " was left open: the \")\" of " + at + " closes it, but stands under " +
               nameOf(text, suspect.other);
    case RtiFedBalance::Suspect::openUnderClause:
        return "; by its look, " + clause + " was left open: the \"(\" of " + at + " stands just under it";
    case RtiFedBalance::Suspect::moreBehindClose:
        return "; by its look, the \")\" of " + at + " is one too many: it closes " + clause + ", which goes on behind";
    }
    return {};
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

std::string RtiFedSyntaxError::describe(const RtiFedText &text) const {
    const std::string look = suspect ? ::describe(text, *suspect) : "";
    switch (problem) {
    case expectedFed:
        return "expected \"(FED\", found " + found(text, at);
    case expectedArgument:
        return std::string("expected ") + formOf(clause.kind).arguments[number] + ", found " + found(text, at);
    case expectedClause:
        return "expected " + listOfChildren(clause.kind, afterFirst) + ", found " + found(text, at) + look;
    case expectedClose:
        if (!isLeaf(clause.kind))
            return "expected \"(\" or \")\" in " + nameOf(text, clause) + ", found " + found(text, at) + look;
        return "expected \")\" to close " + nameOf(text, clause) + ", found " + found(text, at);
    case leftOpen:
        return "expected \")\" to close " + nameOf(text, clause) + ", found " + found(text, at) +
               (suspect && suspect->clause != clause.begin ? look : "");
    case secondClause:
        return "expected one \"" + std::string(formOf(clause.kind).keyword) +
               "\" clause, found a second, the first is at " + placeOf(text, other);
    case missingClause:
        return "expected a \"" + std::string(formOf(static_cast<RtiFedClause>(number)).keyword) + "\" clause in " +
               nameOf(text, clause) + ", found " + found(text, at);
    case nestedTooDeeply:
        return "expected at most " + std::to_string(kMaxClassNesting) +
               " levels of classes, found one more: " + nameOf(text, clause) + " is nested too deeply";
    case dotInClassName:
        return "expected a class name without a dot, found " + found(text, at);
    case nameTooLong:
    case fullNameTooLong:
        return std::string(problem == nameTooLong ? "expected a name" : "expected a full class name") + " of at most " +
               std::to_string(kMaxNameLength) + " bytes, found one of " + std::to_string(number);
    case namesTooLong:
        return "expected full class names of at most " + std::to_string(kMaxFullNames) +
               " bytes together, found more at " + nameOf(text, clause);
    case strayQuote:
        return "expected a second quote on the line, found the end of the line";
    case trailingText:
        return "expected the end of the file, found " + found(text, at) + ": the \")\" of " + placeOf(text, other) +
               " closed " + nameOf(text, clause) + look;
    case nulByte:
        return "expected FED text, found a NUL byte";
    case textTooLong:
        return "expected a text of at most " + std::to_string(kMaxTextSize) + " bytes, found a longer one";
    case tooManyErrors:
        return "expected at most " + std::to_string(kMaxErrors) + " errors, found more; what follows was not read";
    }
    return {};
}
