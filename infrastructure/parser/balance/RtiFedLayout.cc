#include "infrastructure/parser/balance/RtiFedLayout.hh"

#include "infrastructure/parser/RtiFedLexer.hh"

#include <algorithm>

namespace {

constexpr int kTab = 8; // equivalent: a guess at what the writer saw

bool isBlank(char byte) {
    return byte == ' ' || byte == '\t';
}

int columnOf(std::string_view indentation) {
    int column = 0; // equivalent: only differences of columns matter
    for (const char byte : indentation)
        column = byte == '\t' ? (column / kTab + 1) * kTab : column + 1;
    return column;
}

std::string_view firstWordOf(std::string_view comment) {
    constexpr const char *kBeforeWord = " \t;";
    const std::size_t begin = std::min(comment.find_first_not_of(kBeforeWord), comment.size());
    return comment.substr(begin, comment.find_first_of(" \t;\r", begin) - begin);
}

bool isKeywordAnywhere(std::string_view word) {
    for (auto kind = RtiFedClause::fed; kind != RtiFedClause::unknown;
         kind = static_cast<RtiFedClause>(static_cast<unsigned char>(kind) + 1))
        if (isKeywordOf(kind, word))
            return true;
    return false;
}

} // namespace

RtiFedLayout::RtiFedLayout(const RtiFedText &text, std::size_t most) : _bytes(text.bytes()) {
    RtiFedLexer lexer(text, text.begin());
    RtiFedOffset after = text.begin();
    bool first = true;
    for (RtiFedToken token;;) {
        lexer.next(token);
        Sign sign;
        sign.at = token.begin;
        sign.after = after;
        sign.lineBefore = _line;
        sign.beginsLine = first;
        readGap(after, token.begin, sign);
        sign.line = _line;
        first = false;
        after = lexer.at();
        if (token.kind == RtiFedToken::Kind::name) {
            if (signs.empty() || !complete)
                continue;
            Sign &owner = signs.back();
            if (owner.words++ == 0 && !token.quoted)
                owner.keyword = token.text;
            else if (owner.keywordInside.length == 0 && !token.quoted && isKeywordAnywhere(text.at(token.text))) {
                owner.keywordInside = token.text;
                owner.wordsBeforeInside = owner.words - 1;
            }
            continue;
        }
        const bool isOpen = token.kind == RtiFedToken::Kind::open;
        const bool isClose = token.kind == RtiFedToken::Kind::close;
        if (token.kind == RtiFedToken::Kind::nul) { // the text is not read any further
            complete = false;
            return;
        }
        sign.kind = isOpen ? Kind::open : isClose ? Kind::close : Kind::end;
        missingCloses += isOpen ? 1 : isClose ? -1 : 0;
        complete = complete && signs.size() < most;
        if (complete)
            signs.push_back(sign);
        if (sign.kind == Kind::end)
            return;
    }
}

/// Reads what is between two tokens: blanks, line ends and comments.
void RtiFedLayout::readGap(RtiFedOffset begin, RtiFedOffset end, Sign &sign) {
    const bool afterClose =
        !signs.empty() && signs.back().kind == Kind::close && signs.back().beginsLine && signs.back().words == 0;
    bool firstLine = !sign.beginsLine;
    RtiFedOffset lineBegin = begin;
    for (RtiFedOffset at = begin; at < end; ++at) {
        const char byte = _bytes[at];
        // equivalent: no token begins between CR and LF
        if (byte != '\n' && (byte != '\r' || (at + 1 < end && _bytes[at + 1] == '\n')))
            continue;
        const std::string_view line = _bytes.substr(lineBegin, at - lineBegin);
        const std::size_t comment = line.find(';');
        if (!firstLine)
            addTrace(lineBegin, at, sign);
        else if (afterClose && comment != std::string_view::npos)
            ++_commentsOfCloses[firstWordOf(line.substr(comment))];
        firstLine = false;
        ++_line;
        lineBegin = at + 1;
        sign.beginsLine = true;
    }
    if (sign.beginsLine)
        sign.column = columnOf(_bytes.substr(lineBegin, end - lineBegin));
}

/// Of several lines without tokens, the one that is most likely the trace of a lost ")" counts.
void RtiFedLayout::addTrace(RtiFedOffset begin, RtiFedOffset end, Sign &sign) {
    RtiFedOffset at = begin;
    while (at < end && isBlank(_bytes[at]))
        ++at;
    const std::string_view rest = _bytes.substr(at, end - at);
    auto trace = at == begin ? Trace::empty : Trace::blanks;
    if (!rest.empty() && rest[0] == ';') {
        const auto known = _commentsOfCloses.find(firstWordOf(rest));
        trace = known != _commentsOfCloses.end() ? Trace::commentOfClose : Trace::comment;
    }
    const auto weight = [](Trace t) { // headings and empty lines mean less
        // equivalent: only their order counts, and two seldom meet
        constexpr int kWeights[kNumTraces] = {0, 2, 3, 1, 4};
        return kWeights[static_cast<std::size_t>(t)];
    };
    if (weight(trace) <= weight(sign.trace))
        return;
    sign.trace = trace;
    sign.traceAt = at;
    sign.traceLine = _line;
    sign.traceColumn = columnOf(_bytes.substr(begin, at - begin));
}
