#pragma once

#include "infrastructure/RtiStringUtility.hh"

#include <array>
#include <string>
#include <string_view>
#include <vector>

/// A word that FED texts use for a transportation or ordering: the short form, the long form, and the library's handle.
/// A test compares these tables with the answers of the library.
struct DeliveryWord {
    const char *shortForm, *longForm;
    unsigned long handle;
};
using DeliveryWords = std::array<DeliveryWord, 2>;

inline constexpr DeliveryWords kTransportations = {
    {{"reliable", "RTI_RELIABLE", 2}, {"best_effort", "RTI_BEST_EFFORT", 1}}};
inline constexpr DeliveryWords kOrderings = {
    {{"timestamp", "RTI_TIME_STAMP_ORDERING", 2}, {"receive", "RTI_RECEIVE_ORDERING", 1}}};

/// The short form for a handle, or null if no word has it.
inline const char *shortForm(const DeliveryWords &words, unsigned long handle) {
    for (const DeliveryWord &word : words)
        if (word.handle == handle)
            return word.shortForm;
    return nullptr;
}

/// All words that may be written, the short forms first.
inline std::vector<std::string> allForms(const DeliveryWords &words) {
    return {words[0].shortForm, words[1].shortForm, words[0].longForm, words[1].longForm};
}

/// Returns a word as it counts: in upper case, and the short form of a transportation or ordering for its long form.
inline std::string meaningOf(std::string_view word) {
    std::string upper = RtiStringUtility::toupper(word);
    for (const DeliveryWords &words : {kTransportations, kOrderings})
        for (const DeliveryWord &known : words)
            if (upper == known.longForm)
                return RtiStringUtility::toupper(known.shortForm);
    return upper;
}

/// Returns the expected words for a message: `reliable or best_effort`.
inline std::string expectedForms(const DeliveryWords &words) {
    return std::string(words[0].shortForm) + " or " + words[1].shortForm;
}
