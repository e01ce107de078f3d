#pragma once

#include "infrastructure/RtiFedParser.hh"
#include "tool/check/Fix.hh"
#include "tool/check/Rule.hh"
#include "tool/console/Text.hh"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Why a finding is not reported.
struct Suppression {
    enum class Kind : unsigned char { inText, byConfiguration, byBaseline };

    Kind kind;
    std::string justification; ///< The reason that a person gave; may be empty.
};

/// Another place of the same mistake.
struct FurtherPlace {
    RtiFedSpan span;
    std::string particular; ///< What the text says about this place only, as Finding::particularText().
    Fix fix;                ///< As Finding::fix.
};

/// One problem of a file, in the words of a person who edits it.
struct Finding {
    const Rule *rule;
    std::optional<RtiFedSpan> span; ///< Absent if it is about the file as a whole.
    std::string text;
    std::vector<std::string> details = {};      ///< Further lines, shown below the text.
    std::vector<RtiFedParser::Note> notes = {}; ///< Other places that the finding refers to.
    Fix fix = {};                               ///< What can be done about it; empty if that is unknown.
    Severity severity = rule->severity;         ///< As reported; a configuration may change it.
    std::optional<Suppression> suppression = {};
    /// The part of the text that concerns this place only, such as ` of the attribute "Height"`. Findings that are
    /// equal but for this part are one mistake; reports join them.
    RtiFedSpan particular = {};
    std::vector<FurtherPlace> furtherPlaces = {}; ///< Filled by reports that join findings.

    /// Marks a part of the text as particular to its place.
    void setParticular(std::string_view part);

    std::string_view textBefore() const { return std::string_view(text).substr(0, particular.begin); }
    std::string_view particularText() const {
        return std::string_view(text).substr(particular.begin, particular.length);
    }
    std::string_view textAfter() const { return std::string_view(text).substr(particular.begin + particular.length); }
    /// The text as it is at another place.
    std::string textAt(const FurtherPlace &place) const;
    /// The text with the number of further places.
    std::string textWithCount() const;

    /// The text with what is particular to its place, without what changes when other parts of the file do: the numbers
    /// of lines and columns, and suggestions. By it a finding is recognised in a later version of the file.
    std::string lastingText() const;
    /// The same without what is particular to its place, so that it is the same for all places of a mistake.
    std::string commonText() const;

    /// Whether the library refuses the file for it, whatever severity it is reported with.
    bool refusesFile() const { return rule->severity == Severity::error; }

    /// The text with the number of further places, and the details below it.
    std::string textWithDetails() const {
        return textWithCount() + (details.empty() ? "" : '\n' + joined(details, "\n"));
    }
};
