#include "infrastructure/RtiFedLexer.hh"

#include <array>

namespace {

enum Class : unsigned char { ordinary, blank, lineEnd, special };

constexpr std::array<Class, 256> classify() {
    std::array<Class, 256> classes{};
    for (const char c : {' ', '\t', '\v', '\f'})
        classes[static_cast<unsigned char>(c)] = blank;
    for (const char c : {'\n', '\r'})
        classes[static_cast<unsigned char>(c)] = lineEnd;
    for (const char c : {'(', ')', '"', ';', '\0'})
        classes[static_cast<unsigned char>(c)] = special;
    return classes;
}

constexpr auto kClasses = classify();

Class classOf(char c) {
    return kClasses[static_cast<unsigned char>(c)];
}

} // namespace

RtiFedToken RtiFedLexer::next() {
    RtiFedToken token;
    next(token);
    return token;
}

void RtiFedLexer::next(RtiFedToken &token) {
    token.strayQuote = RtiFedToken::kNoQuote;
    for (skipBlanksAndComments(); _at < _bytes.size() && _bytes[_at] == '"' && endOfQuoted() == _at;
         skipBlanksAndComments()) {
        if (!token.behindStrayQuote())
            token.strayQuote = _at;
        ++_at; // what follows is read as if the quote were not there
    }
    readToken(token);
}

void RtiFedLexer::readToken(RtiFedToken &token) {
    token.begin = _at;
    token.text = {};
    token.quoted = false;
    if (_at == _bytes.size()) {
        token.kind = RtiFedToken::Kind::end;
        return;
    }
    switch (_bytes[_at]) {
    case '(':
        token.kind = RtiFedToken::Kind::open;
        ++_at;
        return;
    case ')':
        token.kind = RtiFedToken::Kind::close;
        ++_at;
        return;
    case '\0':
        token.kind = RtiFedToken::Kind::nul;
        return;
    case '"':
        token.quoted = true;
        return readName(token, endOfQuoted());
    default:
        break;
    }
    RtiFedOffset end = _at;
    while (end < _bytes.size() && classOf(_bytes[end]) == ordinary)
        ++end;
    readName(token, end);
}

/// Behind the second quote of the pair that begins here. Where the line ends before one, here; but where the text ends,
/// or a NUL byte ends it, without any parenthesis, the name is cut short there.
RtiFedOffset RtiFedLexer::endOfQuoted() const {
    RtiFedOffset end = _at + 1;
    while (end < _bytes.size() && _bytes[end] != '"' && classOf(_bytes[end]) != lineEnd && _bytes[end] != '\0')
        ++end;
    if (end < _bytes.size() && _bytes[end] == '"')
        return end + 1;
    const bool cut = end == _bytes.size() || _bytes[end] == '\0';
    return cut && _bytes.substr(_at, end - _at).find(')') == std::string_view::npos ? end : _at;
}

void RtiFedLexer::skipBlanksAndComments() {
    for (; _at < _bytes.size(); ++_at) {
        const Class found = classOf(_bytes[_at]);
        if (found == blank || found == lineEnd)
            continue;
        if (_bytes[_at] != ';')
            return;
        while (_at + 1 < _bytes.size() && classOf(_bytes[_at + 1]) != lineEnd && _bytes[_at + 1] != '\0')
            ++_at;
    }
}

void RtiFedLexer::readName(RtiFedToken &token, RtiFedOffset end) {
    const bool closed = token.quoted && end > _at + 1 && _bytes[end - 1] == '"';
    const RtiFedOffset first = token.quoted ? _at + 1 : _at;
    token.kind = RtiFedToken::Kind::name;
    token.text = {first, (closed ? end - 1 : end) - first};
    _at = end;
}
