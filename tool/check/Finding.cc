#include "tool/check/Finding.hh"

#include <re2/re2.h>
#include <utility>

namespace {

/// Removes the numbers of lines and columns, and suggestions.
std::string lasting(std::string text) {
    static const re2::RE2 place("[0-9]+:[0-9]+"), lines("(lines?:?) [0-9]+(, [0-9]+)*( or [0-9]+)?"),
        suggestion("; did you mean [^\n]*");
    re2::RE2::GlobalReplace(&text, place, "...");
    re2::RE2::GlobalReplace(&text, lines, "\\1 ...");
    re2::RE2::GlobalReplace(&text, suggestion, "");
    return text;
}

} // namespace

void Finding::setParticular(std::string_view part) {
    particular = {static_cast<std::uint32_t>(text.find(part)), static_cast<std::uint32_t>(part.size())};
}

std::string Finding::textAt(const FurtherPlace &place) const {
    return std::string(textBefore()) + place.particular + std::string(textAfter());
}

std::string Finding::lastingText() const {
    return lasting(text);
}

/// A part that begins with a blank, such as ` of the attribute "Height"`, leaves a sentence; any other leaves a gap.
std::string Finding::commonText() const {
    const bool leavesGap = particular.length > 0 && particularText().front() != ' ';
    return lasting(std::string(textBefore()) + (leavesGap ? "..." : "") + std::string(textAfter()));
}

/// The number follows what is particular to the first place: `... of the attribute "Height" and at 2 more places, ...`;
/// but the subject of a sentence keeps its verb: `the attribute lacks its name (and at 2 more places)`.
std::string Finding::textWithCount() const {
    if (furtherPlaces.empty())
        return text;
    const std::string count = "and at " + counted(furtherPlaces.size(), "more place");
    if (particular.length == 0 || textBefore().empty())
        return text + " (" + count + ')';
    return std::string(textBefore()) + std::string(particularText()) + ' ' + count + std::string(textAfter());
}
