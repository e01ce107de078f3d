#pragma once

#include "tool/model/MomText.hh"

#include <string>

/// Replaces `(MOM)` by the classes of the MOM: those of objects at its first place, those of interactions at its
/// second. So a text that loads is short enough that mutations meet its own clauses, and not the ten thousand bytes
/// that all such texts have in common.
inline std::string withMomClauses(std::string text) {
    static const std::string clauses[] = {momClass(kObjectTree, "Manager"), momClass(kInteractionTree, "Manager")};
    constexpr std::string_view kPlace = "(MOM)";
    std::size_t at = 0;
    for (const std::string &each : clauses) {
        at = text.find(kPlace, at);
        if (at == std::string::npos)
            break;
        text.replace(at, kPlace.size(), each);
        at += each.size();
    }
    return text;
}
