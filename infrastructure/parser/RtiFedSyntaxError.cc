#include "infrastructure/parser/RtiFedSyntaxError.hh"

#include "infrastructure/RtiFedLimits.hh"
#include "infrastructure/parser/RtiFedLexer.hh"
#include "infrastructure/parser/RtiFedPrintable.hh"

#include <algorithm>

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

/// The keyword of the clause whose "(" or keyword is at an offset.
RtiFedToken keywordAt(const RtiFedText &text, RtiFedOffset at) {
    RtiFedLexer lexer(text, at);
    const RtiFedToken token = lexer.next();
    return token.kind == RtiFedToken::Kind::open ? lexer.next() : token;
}

/// The name in `(space NAME)`, if the keyword `space` ends at `at`; otherwise of length 0.
RtiFedSpan nameOfSimpleSpace(const RtiFedText &text, RtiFedOffset at) {
    RtiFedLexer lexer(text, at);
    const RtiFedToken name = lexer.next();
    const bool simple = name.kind == RtiFedToken::Kind::name && lexer.next().kind == RtiFedToken::Kind::close;
    return simple ? text.withQuotes(name.text) : RtiFedSpan();
}

/// The offset after the words of a clause, its keyword included.
RtiFedOffset endOfWords(const RtiFedText &text, RtiFedOffset begin) {
    RtiFedLexer lexer(text, begin);
    lexer.next();
    RtiFedOffset end = lexer.at();
    while (lexer.next().kind == RtiFedToken::Kind::name)
        end = lexer.at();
    return end;
}

/// The offset after the last byte of the text that is not a blank.
RtiFedOffset endOfText(const RtiFedText &text) {
    const std::size_t last = text.bytes().find_last_not_of(" \t\r\n\v\f");
    // unreached: a text with errors of clauses has "(FED"
    return last == std::string_view::npos ? text.begin() : static_cast<RtiFedOffset>(last + 1);
}

std::string listOf(const std::vector<std::string> &keywords) {
    std::string list;
    for (std::size_t i = 0; i < keywords.size(); ++i)
        list += (i == 0 ? "\"" : i + 1 < keywords.size() ? "\", \"" : "\" or \"") + keywords[i];
    return list + '"';
}

} // namespace

RtiFedErrorTypes::Error RtiFedSyntaxError::resolve(const RtiFedText &text) const {
    return {problem, text.position(place()), span(text), describe(text), notes(text), keywords(), correction(text)};
}

RtiFedOffset RtiFedSyntaxError::place() const {
    if (problem == Problem::leftOpen)
        return clause.begin;
    if (problem == Problem::missingClause && clause.label.length > 0)
        return clause.label.begin;
    return problem == Problem::expectedArgument && wordsEnd > 0 ? wordsEnd : at;
}

/// The unexpected token; of a clause that is refused as a whole, its "(", keyword and name.
RtiFedSpan RtiFedSyntaxError::span(const RtiFedText &text) const {
    const auto upTo = [this](RtiFedOffset end) { return RtiFedSpan{at, end - at}; };
    const bool refused =
        problem == Problem::secondClause || problem == Problem::nestedTooDeeply || problem == Problem::namesTooLong;
    // unreached: takes gigabytes
    if (problem == Problem::textTooLong)
        // unreached: takes gigabytes
        return upTo(at);
    if (problem == Problem::leftOpen)
        return {place(), 1};
    if (problem == Problem::missingClause)
        return {place(), clause.label.length};
    if (place() != at) // a word is missing at the end of a line
        return {place(), 0};
    if (refused && clause.label.length > 0) {
        const RtiFedSpan name = text.withQuotes(clause.label);
        return upTo(name.begin + name.length);
    }
    const std::string_view rest = text.bytes().substr(at);
    if (problem == Problem::strayQuote)
        return {at, static_cast<RtiFedOffset>(std::min(rest.find_first_of("\r\n"), rest.size()))};
    if (problem == Problem::foreignComment)
        return {at, static_cast<RtiFedOffset>(textOf(commentMarkAt(rest)).size())};
    if (problem == Problem::foreignBlank)
        return {at, static_cast<RtiFedOffset>(foreignBlankSize(rest))};
    RtiFedLexer lexer(text, at);
    const RtiFedToken::Kind first = lexer.next().kind;
    if (refused && first == RtiFedToken::Kind::open)
        lexer.next();
    return upTo(first == RtiFedToken::Kind::nul ? at + 1 : lexer.at());
}

std::vector<RtiFedErrorTypes::Note> RtiFedSyntaxError::notes(const RtiFedText &text) const {
    if (suspect)
        return notesOfSuspect(text);
    std::vector<RtiFedErrorTypes::Note> notes;
    if (problem == Problem::secondClause)
        notes.push_back({{earlier, 1}, "the first is here"});
    else if (problem == Problem::trailingText)
        notes.push_back({{earlier, 1}, "this \")\" closed " + nounOf(text, clause)});
    else if ((problem == Problem::leftOpen || problem == Problem::expectedClose) && place() != clause.begin)
        notes.push_back({{clause.begin, 1}, nounOf(text, clause) + " begins here"});
    else if (problem == Problem::expectedClause && afterFirst && isClass(clause.kind) &&
             isKeywordOf(RtiFedClause::secLevel, text.at(keywordAt(text, at).text)))
        notes.push_back({{endOfWords(text, clause.begin), 0}, "it belongs here"});
    if (problem == Problem::leftOpen && at == text.bytes().size())
        notes.push_back({{endOfText(text), 0}, "the file ends here"});
    else if (problem == Problem::leftOpen)
        notes.push_back({{at, 1}, "this \"(\" is not allowed in " + nounOf(text, clause)});
    return notes;
}

/// The text of an error that is judged by the layout. It says so, and names the lines to look at.
std::string RtiFedSyntaxError::describeSuspect(const RtiFedText &text) const {
    using Suspect = RtiFedBalance::Suspect;
    std::string lines;
    for (std::size_t i = 0; i < suspect->numPlaces; ++i)
        lines += (i == 0                       ? ""
                  : i + 1 < suspect->numPlaces ? ", "
                                               : " or ") +
                 std::to_string(text.position(suspect->places[i]).line);
    const bool isOneOf = suspect->numPlaces > 1;
    if (suspect->change == Suspect::missingClose) {
        const std::string butFound = at == text.bytes().size() ? ", found " + found(text, at) : "";
        return "expected \")\" to close " + nounOf(text, clause) + butFound + "; judging by the layout, " +
               (isOneOf ? "a \")\" is missing in one of these lines: " : "it is missing in line ") + lines;
    }
    const std::string sign = suspect->change == Suspect::surplusOpen ? "\"(\"" : "\")\"";
    if (isOneOf)
        return "unexpected " + sign + "; judging by the layout, one is superfluous in one of these lines: " + lines;
    return "unexpected " + sign + "; judging by the layout, it is superfluous, and " + nameOf(text, clause) +
           " continues after it";
}

std::vector<RtiFedErrorTypes::Note> RtiFedSyntaxError::notesOfSuspect(const RtiFedText &text) const {
    const bool isMissing = suspect->change == RtiFedBalance::Suspect::missingClose;
    const bool isOneOf = suspect->numPlaces > 1;
    std::vector<RtiFedErrorTypes::Note> notes;
    if (!isMissing && !isOneOf)
        return {{{clause.begin, 1}, nounOf(text, clause) + " begins here"}};
    for (std::size_t i = 0; i < suspect->numPlaces; ++i)
        notes.push_back({{suspect->places[i], 1},
                         std::string("judging by the layout, ") + (isMissing ? "the \")\" is missing " : "") +
                             (isOneOf ? "perhaps here" : "here")});
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

/// Of several ")" in a row, it makes no difference which one goes: the last one. A missing one follows the token whose
/// last byte is the place, unless the place is on a line of its own.
std::optional<RtiFedErrorTypes::Correction> RtiFedSyntaxError::correction(const RtiFedText &text) const {
    constexpr std::string_view blanks = " \t\r\n\v\f";
    if (!suspect)
        return std::nullopt;
    const RtiFedOffset first = suspect->places[0], last = suspect->places[suspect->numPlaces - 1];
    if (suspect->change == RtiFedBalance::Suspect::missingClose) {
        if (first != last)
            return std::nullopt;
        const std::string_view rest = text.bytes().substr(first, 1);
        const bool isOnOwnLine = rest.empty() || rest == ";" || blanks.find(rest[0]) != std::string_view::npos;
        return RtiFedErrorTypes::Correction{{first + (isOnOwnLine ? 0U : 1U), 0}, ")"};
    }
    const std::string_view between = text.bytes().substr(first, last - first);
    if (first != last && (suspect->change == RtiFedBalance::Suspect::surplusOpen ||
                          between.find_first_not_of(") \t\r\n\v\f") != std::string_view::npos))
        return std::nullopt;
    return RtiFedErrorTypes::Correction{{last, 1}, ""};
}

/// The words that are missing: "a transportation and an ordering".
std::string RtiFedSyntaxError::missingWords() const {
    const RtiFedClauseForm &form = formOf(clause.kind);
    std::string words = form.arguments[argument];
    for (std::size_t i = 1; i < numMissing; ++i)
        words += (i + 1 < numMissing ? ", " : " and ") + std::string(form.arguments[argument + i]);
    return words;
}

/// Where a clause that is not allowed here belongs, as the end of a message; empty if that is not known.
std::string RtiFedSyntaxError::belongs(const RtiFedText &text) const {
    const RtiFedToken keyword = keywordAt(text, at);
    const std::string_view word = keyword.quoted ? std::string_view() : text.at(keyword.text);
    if (isKeywordOf(RtiFedClause::space, word) && (isClass(clause.kind) || clause.kind == RtiFedClause::attribute)) {
        const RtiFedSpan name = nameOfSimpleSpace(text, keyword.text.begin + keyword.text.length);
        if (name.length > 0 && clause.kind != RtiFedClause::objectClass)
            return "; to name the space, write " + printable(text.at(name)) + " after the ordering, without \"(space\"";
    }
    const bool isSecLevel = isKeywordOf(RtiFedClause::secLevel, word);
    if (isSecLevel && afterFirst && isClass(clause.kind))
        return "; \"sec_level\" belongs directly after the words of its class";
    auto kind = RtiFedClause::federation;
    while (kind != RtiFedClause::unknown && !isKeywordOf(kind, word))
        kind = static_cast<RtiFedClause>(static_cast<unsigned char>(kind) + 1);
    if (problem == Problem::expectedArgument)
        return isSecLevel ? "; \"sec_level\" belongs after these words" : "";
    const bool likelyUnclosed = problem == Problem::expectedClose && !isSecLevel;
    if (kind == RtiFedClause::unknown || likelyUnclosed || childOf(clause.kind, word) != RtiFedClause::unknown)
        return {};
    return "; \"" + std::string(formOf(kind).keyword) + "\" belongs " + formOf(kind).place;
}

std::string RtiFedSyntaxError::describe(const RtiFedText &text) const {
    // Of these a text may have very many in a row, so the next token is not looked for.
    if (problem == Problem::foreignComment)
        return "expected \";\" to begin a comment, found \"" +
               std::string(textOf(commentMarkAt(text.bytes().substr(at)))) + '"';
    if (problem == Problem::foreignBlank)
        return std::string("expected ") + (isInvisible(text.bytes().substr(at)) ? "FED text" : "a blank") + ", found " +
               nameOfForeignBlank(text.bytes().substr(at));
    if (suspect)
        return describeSuspect(text);
    const std::string butFound = ", found " + found(text, at);
    switch (problem) {
    case Problem::expectedFed:
        if (const char *const format = foreignFormatOf(text.bytes().substr(text.begin())))
            return std::string("expected \"(FED\", found ") + format;
        return "expected \"(FED\"" + butFound;
    case Problem::expectedArgument:
        return "expected " + missingWords() + butFound + (place() == at ? "" : " at " + positionOf(text, at)) +
               belongs(text);
    case Problem::expectedClause:
        return "expected " + listOf(keywords()) + butFound + belongs(text);
    case Problem::expectedClose:
        if (!isLeaf(clause.kind))
            return "expected \"(\" or \")\" in " + nameOf(text, clause) + butFound;
        return "expected \")\" to close " + nameOf(text, clause) + butFound + belongs(text);
    case Problem::leftOpen:
        return "expected \")\" to close " + nounOf(text, clause) + butFound +
               (isUnclear && !isLeaf(clause.kind) ? "; the layout does not show where a \")\" is missing" : "");
    case Problem::secondClause:
        return "expected one \"" + std::string(formOf(clause.kind).keyword) +
               "\" clause, found a second; the first is at " + positionOf(text, earlier);
    case Problem::missingClause:
        return "expected a \"" + std::string(formOf(missing).keyword) + "\" clause in \"FED\", found none";
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
        return std::string("expected a closing quote, found the end of the ") +
               (place() + span(text).length == text.bytes().size() ? "file" : "line");
    case Problem::trailingText:
        return "expected the end of the file" + butFound + ": the \")\" at " + positionOf(text, earlier) + " closed " +
               nameOf(text, clause) + (isUnclear ? "; the layout does not show which \")\" is superfluous" : "");
    case Problem::nulByte:
        return "expected FED text, found a NUL byte";
    // unreached: takes gigabytes
    case Problem::textTooLong:
        // unreached: takes gigabytes
        return "expected a text of at most " + std::to_string(kMaxTextSize) + " bytes, found a longer one";
    case Problem::tooManyErrors:
        return "expected at most " + std::to_string(kMaxErrors) +
               " errors, found more; the rest of the text was not read";
    case Problem::foreignComment: // unreached: worded above
    case Problem::foreignBlank:   // unreached: the same
        break;
    }
    return {}; // unreached: each problem has a case
}
