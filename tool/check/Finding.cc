#include "tool/check/Finding.hh"

void Finding::setParticular(std::string_view part) {
    const std::size_t begin = text.find(part);
    if (begin != std::string::npos)
        particular = {static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(part.size())};
}

std::string Finding::textAt(const FurtherPlace &place) const {
    return std::string(textBefore()) + place.particular + std::string(textAfter());
}

/// The number follows what is particular to the first place: `... of the attribute "Height" and at 2 more places, ...`.
std::string Finding::textWithCount() const {
    if (furtherPlaces.empty())
        return text;
    const std::string count = "and at " + counted(furtherPlaces.size(), "more place");
    if (particular.length == 0)
        return text + " (" + count + ')';
    return std::string(textBefore()) + std::string(particularText()) + ' ' + count + std::string(textAfter());
}
