#pragma once

#include <array>
#include <cstddef>

/// What a word of an attribute or interaction class can be, judging by the word alone.
enum class WordKind : unsigned char { absent, transportation, ordering, space, other };

/// The words of an attribute or interaction class: name, transportation, ordering and perhaps space, if all is right.
using WordKinds = std::array<WordKind, 4>;

/// One mistake in these words that explains why they are not in their places.
struct WordMistake {
    enum What : unsigned char {
        unknown, ///< Each word is wrong by itself, or none is.
        lacksName,
        lacksTransportation,
        lacksOrdering,
        lacksBoth,  ///< Transportation and ordering.
        wrongOrder, ///< All words are there.
        tooMany     ///< A word before the transportation or ordering.
    };

    What what = unknown;
    std::size_t at = 0;                    ///< The word before which one is missing, or the first word that is wrong.
    std::array<std::size_t, 4> order = {}; ///< Of wrongOrder: the words in the right order.
};

/// Finds the mistake in words of which the second is not a transportation or the third not an ordering.
///
/// The idea: transportations and orderings are small known sets, and the spaces are declared, so the place of such a
/// word shows whether a word before it is missing or superfluous. If all of them are there once beside one other word,
/// which is the name, only their order is wrong. Without a known word in a wrong place nothing can be said.
WordMistake mistakeIn(WordKinds kinds);
