#include "infrastructure/parser/RtiFedLexer.hh"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace {

// Comments and quoted names are scanned in blocks of sixteen bytes, which the compiler compares with one
// instruction each. Words is such a block as two integers.
using Block = unsigned char __attribute__((vector_size(16)));
using Words = std::uint64_t __attribute__((vector_size(16)));

/// The index of the first byte that is not 0; 16 if all are.
RtiFedOffset firstOf(const Block &block) {
    const auto words = reinterpret_cast<Words>(block);
    const std::uint64_t word = words[0] ? words[0] : words[1];
    if (word == 0) // equivalent: a byte of a comparison is 0 or 255
        return 16;
#if __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
    const auto inWord = static_cast<RtiFedOffset>(__builtin_ctzll(word)) / 8;
#else
    const auto inWord = static_cast<RtiFedOffset>(__builtin_clzll(word)) / 8;
#endif
    return inWord + (words[0] ? 0 : 8);
}

/// The offset of the first byte from `at` on that ends a run, or of the end of the text. `ends` sets the bytes of a
/// block that do not end the run to 0, and the others to something else.
template <class Ends>
RtiFedOffset endOfRun(std::string_view bytes, RtiFedOffset at, Ends ends) {
    for (;; at += sizeof(Block)) {
        Block block;
        std::memcpy(&block, bytes.data() + at, sizeof block); // the last block includes padding of the text
        ends(block);
        const RtiFedOffset first = firstOf(block);
        if (first < sizeof block)
            return std::min(at + first, static_cast<RtiFedOffset>(bytes.size()));
    }
}

/// Whether the bytes at `at` are the same as a keyword, of four to sixteen bytes.
bool isSame(const char *at, std::string_view keyword) {
    const auto wordsAre = [at, keyword](auto word, std::size_t offset) {
        auto other = word;
        std::memcpy(&word, at + offset, sizeof word);
        std::memcpy(&other, keyword.data() + offset, sizeof other);
        return word == other;
    };
    const std::size_t size = keyword.size(); // the second word overlaps the first
    if (size >= sizeof(std::uint64_t))
        return wordsAre(std::uint64_t(), 0) && wordsAre(std::uint64_t(), size - sizeof(std::uint64_t));
    return wordsAre(std::uint32_t(), 0) && wordsAre(std::uint32_t(), size - sizeof(std::uint32_t));
}

/// The end of the line or of the text; before that, of the next `stop`.
RtiFedOffset endOfLine(std::string_view bytes, RtiFedOffset at, char stop = '\n') {
    return endOfRun(bytes, at, [stop](Block &b) {
        b = reinterpret_cast<Block>((b == '\n') | (b == '\r') | (b == '\0') | (b == static_cast<unsigned char>(stop)));
    });
}

} // namespace

RtiFedToken RtiFedLexer::next() {
    RtiFedToken token;
    next(token);
    return token;
}

void RtiFedLexer::next(RtiFedToken &token, std::vector<RtiFedOffset> *foreign) {
    token.strayQuote = RtiFedToken::kNoQuote;
    for (skip(foreign); _at < _bytes.size() && _bytes[_at] == '"' && endOfQuoted() == _at; skip(foreign)) {
        if (!token.afterStrayQuote())
            token.strayQuote = _at;
        ++_at; // read on as if the quote were not there
    }
    readToken(token);
}

void RtiFedLexer::readToken(RtiFedToken &token) {
    using Kind = RtiFedToken::Kind;
    const char first = _at < _bytes.size() ? _bytes[_at] : '\0';
    token.begin = _at;
    token.text = {};
    token.quoted = first == '"';
    if (first == '(' || first == ')') {
        token.kind = first == '(' ? Kind::open : Kind::close;
        ++_at;
        return;
    }
    if (first == '\0') {
        token.kind = _at == _bytes.size() ? Kind::end : Kind::nul;
        return;
    }
    const RtiFedOffset begin = token.quoted ? _at + 1 : _at;
    _at = token.quoted ? endOfQuoted() : endOfWord(_at);
    if (_habits.blanks && !token.quoted)
        _at = begin + static_cast<RtiFedOffset>(
                          std::min<std::size_t>(findForeignBlank(_bytes.substr(begin, _at - begin)), _at - begin));
    const bool closed = token.quoted && _at > begin && _bytes[_at - 1] == '"';
    token.kind = Kind::name;
    token.text = {begin, (closed ? _at - 1 : _at) - begin};
}

RtiFedPiece RtiFedLexer::nextPiece() {
    const RtiFedOffset begin = _at;
    const char first = _bytes[_at];
    RtiFedPiece::Kind kind = RtiFedPiece::Kind::word;
    switch (first) {
    case '(':
    case ')':
    case '\0':
        kind = first == '('   ? RtiFedPiece::Kind::open
               : first == ')' ? RtiFedPiece::Kind::close
                              : RtiFedPiece::Kind::nul;
        ++_at;
        break;
    case '\r':
    case '\n':
        kind = RtiFedPiece::Kind::lineEnd;
        _at += first == '\r' && _bytes.substr(_at + 1, 1) == "\n" ? 2 : 1;
        break;
    case ';':
        kind = RtiFedPiece::Kind::comment;
        _at = endOfLine(_bytes, _at);
        break;
    case '"':
        _at = endOfQuoted();
        kind = _at == begin ? RtiFedPiece::Kind::strayQuote : RtiFedPiece::Kind::quotedWord;
        _at += _at == begin ? 1 : 0;
        break;
    case ' ':
    case '\t':
    case '\v':
    case '\f':
        kind = RtiFedPiece::Kind::blanks;
        _at = static_cast<RtiFedOffset>(std::min(_bytes.find_first_not_of(" \t\v\f", _at), _bytes.size()));
        break;
    default:
        _at = endOfWord(_at);
    }
    return {kind, {begin, _at - begin}};
}

std::size_t RtiFedLexer::nextPlainWords(std::string_view keyword, std::array<RtiFedSpan, 4> &words,
                                        std::size_t longest) {
    const char *const bytes = _bytes.data(); // ends in NUL bytes, more than a keyword has
    if (!isSame(bytes + _at, keyword) || _habits.any())
        return kNotPlain;
    RtiFedOffset at = _at + static_cast<RtiFedOffset>(keyword.size());
    // equivalent: only speed, since the slow path takes all that this one refuses
    for (std::size_t count = 0;; ++count) {
        const RtiFedOffset end = at;
        if (bytes[at] == ' ') // equivalent: only speed
            ++at;
        if (bytes[at] <= ' ') // perhaps another blank, which is less common
            at = _runs.endOfBlanks(at);
        if (bytes[at] == '(' || bytes[at] == ')') { // equivalent: likewise only speed
            _at = at;
            return count;
        }
        // Too many, the end, or no word. equivalent: only speed, since the slow path takes all that this one refuses
        if (count == words.size() || at == end)
            return kNotPlain;
        const RtiFedOffset begin = at;
        at = _runs.endOfWord(at); // the NUL after the text ends a word, too. equivalent: likewise
        if (at - begin > longest) // equivalent: only speed, as above
            return kNotPlain;
        words[count] = {begin, at - begin};
    }
}

/// Returns the offset after the quote that closes the one here. If the line ends first, the quote is a stray one, and
/// its own offset is returned. But if the text, or a NUL byte, ends first and no ")" is before that, the text was cut
/// within the name, which then ends there.
RtiFedOffset RtiFedLexer::endOfQuoted() const {
    const RtiFedOffset end = endOfLine(_bytes, _at + 1, '"');
    // equivalent: the text is padded with NUL bytes
    if (end < _bytes.size() && _bytes[end] == '"')
        return end + 1;
    const bool cut = end == _bytes.size() || _bytes[end] == '\0';
    return cut && _bytes.substr(_at, end - _at).find(')') == std::string_view::npos ? end : _at;
}

void RtiFedLexer::skip(std::vector<RtiFedOffset> *foreign) {
    skipBlanksAndComments();
    if (!_habits.any())
        return;
    for (RtiFedOffset begin = _at; skipForeign(); begin = _at) {
        if (foreign)
            foreign->push_back(begin);
        skipBlanksAndComments();
    }
}

/// Skips one comment of another language, or a run of characters that look like blanks, as far as the text is known to
/// have such. Returns whether there is one.
bool RtiFedLexer::skipForeign() {
    const RtiFedOffset begin = _at;
    const std::string_view rest = _bytes.substr(begin);
    const RtiFedCommentMark mark = commentMarkAt(rest);
    if (_habits.has(mark)) {
        const std::size_t size = _unclosed.has(mark) ? std::string_view::npos : closedCommentSize(mark, rest);
        if (size == std::string_view::npos)
            _unclosed.add(mark);
        _at = size == std::string_view::npos ? endOfLine(_bytes, _at) : begin + static_cast<RtiFedOffset>(size);
        return true;
    }
    while (_habits.blanks && foreignBlankSize(_bytes.substr(_at)) > 0)
        _at += static_cast<RtiFedOffset>(foreignBlankSize(_bytes.substr(_at)));
    return _at > begin;
}

void RtiFedLexer::skipBlanksAndComments() {
    for (_at = endOfBlanks(_at); _at < _bytes.size() && _bytes[_at] == ';'; _at = endOfBlanks(_at))
        _at = endOfLine(_bytes, _at);
}
