#pragma once

#include "infrastructure/RtiFedParser.hh"
#include "tool/format/Format.hh"

#include <string>

inline std::string formattedText(const std::string &text, const FormatOptions &options = {}) {
    const RtiFedParser parser(text);
    return formatted(SyntaxTree(parser), options);
}
