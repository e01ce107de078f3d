// Mutates texts by words and clauses, not by bytes.
//
// A random byte mostly breaks a word or a parenthesis, so that of a thousand inputs nearly all fail in the same place,
// the syntax. This cuts a text into words, quoted strings, comments, blanks and brackets, and changes these: what is
// nested stays nested, and the mistakes are those that people make. The words of FED texts, JSON and TOML are cut
// alike. Some inputs are still mutated by bytes, for all that is not thought of here.

#include "fuzz/Mutator.hh"

#include <algorithm>
#include <cstdint>
#include <list>
#include <random>
#include <string>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t *data, std::size_t size, std::size_t maxSize);

namespace {

using Pieces = std::vector<std::string_view>;

constexpr std::string_view kOpening = "([{", kClosing = ")]}", kBrackets = "([{}])", kBlanks = " \t\r\n";
constexpr std::string_view kSeparators{"()[]{}\" \t\r\n\0,:=", 16};

bool isOneOf(std::string_view piece, std::string_view characters) {
    return characters.find(piece.front()) != std::string_view::npos;
}

/// The size of the first piece of a text. A quoted string or comment that does not end is not more than its first byte.
std::size_t sizeOfFirst(std::string_view text) {
    if (isOneOf(text, kBlanks))
        return std::min(text.find_first_not_of(kBlanks), text.size());
    if (text[0] == ';' || text[0] == '#')
        return std::min(text.find('\n'), text.size());
    if (text[0] == '"') {
        std::size_t end = 1;
        while (end < text.size() && text[end] != '"' && text[end] != '\n')
            end += text[end] == '\\' ? 2 : 1;
        return end < text.size() ? end + 1 : 1;
    }
    return isOneOf(text, kSeparators) ? 1 : std::min(text.find_first_of(kSeparators), text.size());
}

Pieces piecesOf(std::string_view text) {
    Pieces pieces;
    while (!text.empty()) {
        pieces.push_back(text.substr(0, sizeOfFirst(text)));
        text.remove_prefix(pieces.back().size());
    }
    return pieces;
}

class Mutation {
public:
    Mutation(std::string_view text, unsigned seed) : _pieces(piecesOf(text)), _random(seed) {}

    /// Makes some changes, most often one.
    std::string changed() {
        if (below(16) == 0)
            copyFirst();
        do
            change();
        while (below(3) == 0);
        return text();
    }

    /// Puts a part of another text in place of a part of this one, or beside it.
    std::string crossedWith(std::string_view other) {
        Mutation donor(other, static_cast<unsigned>(_random()));
        const Pieces part = donor.cut(donor.randomPart());
        if (below(2) == 0)
            cut(randomPart());
        insert(part);
        return text();
    }

private:
    struct Part {
        std::size_t begin, end;
    };

    std::size_t below(std::size_t end) { return std::uniform_int_distribution<std::size_t>(0, end - 1)(_random); }

    std::string text() const {
        std::string text;
        for (const std::string_view piece : _pieces)
            text += piece;
        return text;
    }

    /// One piece, or, more often, a clause: a bracket with all up to the one that closes it. A bracket alone is rare:
    /// few texts would be without a syntax error soon.
    Part randomPart() {
        if (_pieces.empty())
            return {0, 0};
        std::size_t begin = below(_pieces.size());
        const bool closes = isOneOf(_pieces[begin], kClosing) && below(16) > 0;
        if (closes || below(2) == 0) // the word belongs to the clause that begins before it
            while (begin > 0 && !isOneOf(_pieces[begin], kOpening))
                --begin;
        if (!isOneOf(_pieces[begin], kOpening) || below(16) == 0)
            return {begin, begin + 1};
        std::size_t end = begin, depth = 0;
        do {
            depth += isOneOf(_pieces[end], kOpening) ? 1U : 0U;
            depth -= isOneOf(_pieces[end], kClosing) ? 1U : 0U;
            ++end;
        } while (depth > 0 && end < _pieces.size());
        return {begin, end};
    }

    /// Removes a part and returns it.
    Pieces cut(Part part) {
        const auto at = [this](std::size_t index) { return _pieces.begin() + static_cast<std::ptrdiff_t>(index); };
        Pieces cut(at(part.begin), at(part.end));
        _pieces.erase(at(part.begin), at(part.end));
        return cut;
    }

    Pieces copyOf(Part part) const {
        return {_pieces.begin() + static_cast<std::ptrdiff_t>(part.begin),
                _pieces.begin() + static_cast<std::ptrdiff_t>(part.end)};
    }

    void insert(const Pieces &pieces) { insert(pieces, below(_pieces.size() + 1)); }
    void insert(const Pieces &pieces, std::size_t at) {
        _pieces.insert(_pieces.begin() + static_cast<std::ptrdiff_t>(at), pieces.begin(), pieces.end());
    }

    void change() {
        const Part part = randomPart();
        switch (below(8)) {
        case 0:
            cut(part);
            break;
        case 1: // move
            insert(cut(part));
            break;
        case 2: // copy, also into itself
            insert(copyOf(part));
            break;
        case 3: // repeat in place, rarely so often that limits are reached
            for (std::size_t left = below(64) == 0 ? 300 : 1; left > 0 && _pieces.size() < 4096; --left)
                insert(copyOf(part), part.end);
            break;
        case 4:
            replace(part, copyOf(randomPart()));
            break;
        case 5:
            replace(part, randomWords());
            break;
        case 6:
            insert({" "}, part.begin);
            insert(randomWords(), part.begin);
            break;
        default:
            if (!_pieces.empty())
                misspell();
        }
    }

    void replace(Part part, const Pieces &by) {
        cut(part);
        insert(by, part.begin);
    }

    Pieces randomWords() { return piecesOf(kMutatorWords[below(kMutatorWords.size())]); }

    /// Changes a word as people do by mistake: a letter is missing, doubled or in another case. Blanks become another
    /// indentation.
    void misspell() {
        const std::size_t index = below(_pieces.size());
        if (isOneOf(_pieces[index], kBrackets) && below(16) > 0)
            return;
        std::string &word = _made.emplace_back(_pieces[index]);
        const std::size_t at = below(word.size());
        if (isOneOf(word, kBlanks))
            word = "\n" + std::string(below(9), ' ');
        else if (below(3) == 0)
            word.insert(at, 1, word[at]);
        else if (below(2) == 0)
            word[at] = static_cast<char>(word[at] ^ ' ');
        else
            word.erase(at, 1);
        cut({index, index + 1});
        if (!word.empty())
            insert({word}, index);
    }

    /// Makes the second text of a pair, after a NUL byte, a copy of the first: they are to differ in little.
    void copyFirst() {
        const auto nul = std::find(_pieces.begin(), _pieces.end(), std::string_view("\0", 1));
        const auto index = static_cast<std::size_t>(nul - _pieces.begin());
        if (nul != _pieces.end())
            replace({index + 1, _pieces.size()}, copyOf({0, index}));
    }

    Pieces _pieces;
    std::minstd_rand _random;
    std::list<std::string> _made; // words that are not in the text
};

/// Copies a text to the fuzzer. One that is too long is cut.
std::size_t give(const std::string &text, std::uint8_t *data, std::size_t maxSize) {
    const std::size_t size = std::min(text.size(), maxSize);
    std::copy_n(text.begin(), size, data);
    return size;
}

std::string_view viewOf(const std::uint8_t *data, std::size_t size) {
    return {reinterpret_cast<const char *>(data), size};
}

} // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t *data, std::size_t size, std::size_t maxSize,
                                               unsigned seed) {
    if (seed % 8 == 0 || size == 0)
        return LLVMFuzzerMutate(data, size, maxSize);
    return give(Mutation(viewOf(data, size), seed).changed(), data, maxSize);
}

extern "C" std::size_t LLVMFuzzerCustomCrossOver(const std::uint8_t *data, std::size_t size, const std::uint8_t *other,
                                                 std::size_t otherSize, std::uint8_t *out, std::size_t maxSize,
                                                 unsigned seed) {
    return give(Mutation(viewOf(data, size), seed).crossedWith(viewOf(other, otherSize)), out, maxSize);
}
