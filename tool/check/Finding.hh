#pragma once

#include "infrastructure/RtiFedParser.hh"
#include "tool/check/Rule.hh"
#include "tool/console/Text.hh"

#include <optional>
#include <string>
#include <vector>

/// Bytes of a text, and what should stand there instead.
struct Replacement {
    RtiFedSpan span;
    std::string text;
};

/// One problem of a file, in the words of a person who edits it.
struct Finding {
    const Rule *rule;
    std::optional<RtiFedSpan> span; ///< Nothing if it is about the file as a whole.
    std::string text;
    std::vector<std::string> details;      ///< Further lines, shown under the text.
    std::vector<RtiFedParser::Note> notes; ///< Second places that it has to do with.
    std::vector<Replacement> fix;          ///< What was probably meant; empty if that is not known.

    std::string textWithDetails() const { return text + (details.empty() ? "" : '\n' + joined(details, "\n")); }
};
