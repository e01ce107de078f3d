#pragma once

#include "infrastructure/RtiFedParser.hh"
#include "tool/check/Rule.hh"
#include "tool/console/Text.hh"

#include <optional>
#include <string>
#include <vector>

/// A span of a text, and the text to replace it with.
struct Replacement {
    RtiFedSpan span;
    std::string text;
};

/// Why a finding is not reported.
struct Suppression {
    enum class Kind : unsigned char { inText, byConfiguration, byBaseline };

    Kind kind;
    std::string justification; ///< The reason that a person gave; may be empty.
};

/// One problem of a file, in the words of a person who edits it.
struct Finding {
    const Rule *rule;
    std::optional<RtiFedSpan> span; ///< Absent if it is about the file as a whole.
    std::string text;
    std::vector<std::string> details = {};      ///< Further lines, shown below the text.
    std::vector<RtiFedParser::Note> notes = {}; ///< Other places that the finding refers to.
    std::vector<Replacement> fix = {};          ///< What was probably meant; empty if unknown.
    Severity severity = rule->severity;         ///< As reported; a configuration may change it.
    std::optional<Suppression> suppression = {};

    /// Whether the library refuses the file for it, whatever severity it is reported with.
    bool refusesFile() const { return rule->severity == Severity::error; }

    std::string textWithDetails() const { return text + (details.empty() ? "" : '\n' + joined(details, "\n")); }
};
