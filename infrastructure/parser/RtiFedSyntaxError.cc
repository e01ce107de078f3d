#include "infrastructure/parser/RtiFedSyntaxError.hh"

#include "infrastructure/RtiFedLimits.hh"
#include "infrastructure/parser/RtiFedLexer.hh"
#include "infrastructure/parser/RtiFedPrintable.hh"

namespace {

std::string quoted(std::string_view bytes) {
    return '"' + printable(bytes) + '"';
}

std::string positionOf(const RtiFedText &text, RtiFedOffset offset) {
    const RtiFedPosition position = text.position(offset);
    return std::to_string(position.line) + ":" + std::to_string(position.column);
}

std::string found(const RtiFedText &text, RtiFedOffset at) {
    constexpr const char *kFound[] = {"\"(\"", "\")\"", "", "a NUL byte", "the end of the file"}; // by kind
    const RtiFedToken token = RtiFedLexer(text, at).next();
    if (token.kind != RtiFedToken::Kind::name)
        return kFound[static_cast<std::size_t>(token.kind)];
    return quoted(text.at(token.text)) + (token.quoted ? " in quotes" : "");
}

/// What a reader of the text would call a clause: `the class "Plane"`.
std::string nounOf(const RtiFedText &text, const RtiFedClauseName &clause) {
    const RtiFedClauseForm &form = formOf(clause.kind);
    if (clause.kind == RtiFedClause::fed)
        return "\"FED\"";
    if (clause.kind == RtiFedClause::unknown && clause.label.length == 0)
        return "the \"(\"";
    const bool byLabel = form.named || clause.kind == RtiFedClause::unknown;
    const std::string_view label = byLabel ? text.at(clause.label) : form.keyword;
    return "the " + std::string(form.noun) + (label.empty() ? "" : ' ' + quoted(label));
}

/// The same with its position: `the class "Plane" at 52:8`.
std::string nameOf(const RtiFedText &text, const RtiFedClauseName &clause) {
    return nounOf(text, clause) + " at " + positionOf(text, clause.begin);
}

RtiFedClauseName clauseAt(const RtiFedText &text, RtiFedOffset begin) {
    constexpr RtiFedOffset kNear = 4096; // many errors may refer to one clause; do not rescan a long comment for each
    RtiFedLexer lexer(text, begin, begin + kNear);
    lexer.next();
    const RtiFedToken keyword = lexer.next();
    auto kind = RtiFedClause::fed;
    while (kind != RtiFedClause::unknown && !isKeywordOf(kind, text.at(keyword.text)))
        kind = static_cast<RtiFedClause>(static_cast<unsigned char>(kind) + 1);
    return {kind, begin, kind == RtiFedClause::unknown ? keyword.text : lexer.next().text};
}

/// Explains a suspect by a note at each of its places. With `positions` the notes name these places, so that they can
/// be read away from them.
std::vector<RtiFedErrorTypes::Note> explain(const RtiFedText &text, const RtiFedBalance::Suspect &suspect,
                                            bool positions) {
    using Suspect = RtiFedBalance::Suspect;
    const auto name = [&](RtiFedOffset begin) {
        const RtiFedClauseName clause = clauseAt(text, begin);
        return positions ? nameOf(text, clause) : nounOf(text, clause);
    };
    const std::string judging = "judging by the indentation, ", clause = name(suspect.clause);
    const std::string sign = suspect.evidence == Suspect::openUnderClause ? "\"(\"" : "\")\"";
    const std::string parenthesis = positions ? "the " + sign + " at " + positionOf(text, suspect.at) : "this " + sign;
    if (suspect.evidence == Suspect::textAfterClose)
        return {{{suspect.at, 1},
                 judging + parenthesis + " is superfluous: it closes " + clause + ", which continues after it"}};
    const std::string aligned = suspect.evidence == Suspect::openUnderClause
                                    ? " is aligned with it"
                                    : " closes it, but is aligned with " + name(suspect.outer);
    return {{{suspect.clause, 1}, judging + clause + " was left open"}, {{suspect.at, 1}, parenthesis + aligned}};
}

std::string listOf(const std::vector<std::string> &keywords) {
    std::string list;
    for (std::size_t i = 0; i < keywords.size(); ++i)
        list += (i == 0 ? "\"" : i + 1 < keywords.size() ? "\", \"" : "\" or \"") + keywords[i];
    return list + '"';
}

} // namespace

RtiFedErrorTypes::Error RtiFedSyntaxError::resolve(const RtiFedText &text) const {
    return {problem, text.position(at), span(text), describe(text), notes(text), keywords()};
}

/// The unexpected token; of a clause that is refused as a whole, its "(", keyword and name.
RtiFedSpan RtiFedSyntaxError::span(const RtiFedText &text) const {
    const auto upTo = [this](RtiFedOffset end) { return RtiFedSpan{at, end - at}; };
    const bool refused =
        problem == Problem::secondClause || problem == Problem::nestedTooDeeply || problem == Problem::namesTooLong;
    if (problem == Problem::textTooLong)
        return upTo(at);
    if (refused && clause.label.length > 0) {
        const RtiFedSpan name = text.withQuotes(clause.label);
        return upTo(name.begin + name.length);
    }
    RtiFedLexer lexer(text, at);
    const RtiFedToken::Kind first = lexer.next().kind;
    if (refused && first == RtiFedToken::Kind::open)
        lexer.next();
    return upTo(problem == Problem::strayQuote || first == RtiFedToken::Kind::nul ? at + 1 : lexer.at());
}

std::vector<RtiFedErrorTypes::Note> RtiFedSyntaxError::notes(const RtiFedText &text) const {
    std::vector<RtiFedErrorTypes::Note> notes;
    const bool suspected = suspect && suspect->clause == clause.begin;
    if (problem == Problem::secondClause)
        notes.push_back({{earlier, 1}, "the first is here"});
    else if (problem == Problem::trailingText)
        notes.push_back({{earlier, 1}, "this \")\" closed " + nounOf(text, clause)});
    else if ((problem == Problem::leftOpen || problem == Problem::expectedClose) && !suspected)
        notes.push_back({{clause.begin, 1}, nounOf(text, clause) + " begins here"});
    if (suspect)
        for (RtiFedErrorTypes::Note &note : explain(text, *suspect, false))
            notes.push_back(std::move(note));
    return notes;
}

std::vector<std::string> RtiFedSyntaxError::keywords() const {
    if (problem == Problem::expectedFed)
        return {std::string(formOf(RtiFedClause::fed).keyword)};
    std::vector<std::string> keywords;
    if (problem != Problem::expectedClause)
        return keywords;
    const RtiFedClauseForm &form = formOf(clause.kind);
    for (std::size_t i = 0; i < form.numChildren; ++i)
        if (!afterFirst || form.children[i] != RtiFedClause::secLevel)
            keywords.emplace_back(formOf(form.children[i]).keyword);
    return keywords;
}

std::string RtiFedSyntaxError::describe(const RtiFedText &text) const {
    std::string evidence;
    if (suspect)
        for (const RtiFedErrorTypes::Note &note : explain(text, *suspect, true))
            evidence += (evidence.empty() ? "; " : ": ") + note.text;
    const std::string butFound = ", found " + found(text, at);
    switch (problem) {
    case Problem::expectedFed:
        return "expected \"(FED\"" + butFound;
    case Problem::expectedArgument:
        return std::string("expected ") + formOf(clause.kind).arguments[argument] + butFound;
    case Problem::expectedClause:
        return "expected " + listOf(keywords()) + butFound + evidence;
    case Problem::expectedClose:
        if (!isLeaf(clause.kind))
            return "expected \"(\" or \")\" in " + nameOf(text, clause) + butFound + evidence;
        return "expected \")\" to close " + nameOf(text, clause) + butFound;
    case Problem::leftOpen:
        return "expected \")\" to close " + nameOf(text, clause) + butFound +
               (suspect && suspect->clause != clause.begin ? evidence : "");
    case Problem::secondClause:
        return "expected one \"" + std::string(formOf(clause.kind).keyword) +
               "\" clause, found a second; the first is at " + positionOf(text, earlier);
    case Problem::missingClause:
        return "expected a \"" + std::string(formOf(missing).keyword) + "\" clause in " + nameOf(text, clause) +
               butFound;
    case Problem::nestedTooDeeply:
        return "expected at most " + std::to_string(kMaxClassNesting) +
               " levels of classes, found one more: " + nameOf(text, clause) + " is nested too deeply";
    case Problem::dotInClassName:
        return "expected a class name without a dot" + butFound;
    case Problem::nameTooLong:
    case Problem::fullNameTooLong:
        return std::string(problem == Problem::nameTooLong ? "expected a name" : "expected a full class name") +
               " of at most " + std::to_string(kMaxNameLength) + " bytes, found one of " + std::to_string(nameLength);
    case Problem::namesTooLong:
        return "expected full class names of at most " + std::to_string(kMaxFullNames) +
               " bytes together, found more with " + nameOf(text, clause);
    case Problem::strayQuote:
        return "expected a closing quote, found the end of the line";
    case Problem::trailingText:
        return "expected the end of the file" + butFound + ": the \")\" at " + positionOf(text, earlier) + " closed " +
               nameOf(text, clause) + evidence;
    case Problem::nulByte:
        return "expected FED text, found a NUL byte";
    case Problem::textTooLong:
        return "expected a text of at most " + std::to_string(kMaxTextSize) + " bytes, found a longer one";
    case Problem::tooManyErrors:
        return "expected at most " + std::to_string(kMaxErrors) +
               " errors, found more; the rest of the text was not read";
    }
    return {};
}
