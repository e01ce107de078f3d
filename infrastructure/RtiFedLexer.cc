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
    skipBlanksAndComments();
    RtiFedToken token;
    token.begin = _at;
    if (_at == _bytes.size())
        return token;
    switch (_bytes[_at]) {
    case '(':
        token.kind = RtiFedToken::Kind::open;
        ++_at;
        return token;
    case ')':
        token.kind = RtiFedToken::Kind::close;
        ++_at;
        return token;
    case '\0':
        token.kind = RtiFedToken::Kind::nul;
        return token;
    case '"':
        return quotedName();
    default:
        return plainName(_at);
    }
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

RtiFedToken RtiFedLexer::quotedName() {
    RtiFedOffset close = _at + 1;
    while (close < _bytes.size() && _bytes[close] != '"' && classOf(_bytes[close]) != lineEnd && _bytes[close] != '\0')
        ++close;
    const bool closed = close < _bytes.size() && _bytes[close] == '"';
    const bool cut = close == _bytes.size() && _bytes.find(')', _at) == std::string_view::npos; // the text just ends
    if (closed || cut) {
        RtiFedToken token{RtiFedToken::Kind::name, true, false, _at, {_at + 1, close - _at - 1}};
        _at = closed ? close + 1 : close;
        return token;
    }
    // Without its second quote, the first is taken as a slip: what follows is read as if it were not there.
    const RtiFedOffset quote = _at++;
    RtiFedToken token = plainName(_at);
    token.quoted = token.unterminated = true;
    token.begin = quote;
    return token;
}

RtiFedToken RtiFedLexer::plainName(RtiFedOffset begin) {
    while (_at < _bytes.size() && classOf(_bytes[_at]) == ordinary)
        ++_at;
    return {RtiFedToken::Kind::name, false, false, begin, {begin, _at - begin}};
}
