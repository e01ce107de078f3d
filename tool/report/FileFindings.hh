#pragma once

#include "tool/check/CheckedFile.hh"
#include "tool/report/Report.hh"

#include <utility>
#include <vector>

/// Reports the findings of a file: all errors, then all warnings, so that no warning hides an error; each in the order
/// of the text. The first `most` are shown, the others counted.
Tally reportFindings(const Source &source, std::vector<Finding> findings, std::size_t most, Report &report);
Tally reportFindings(CheckedFile file, std::size_t most, Report &report);

/// Checks a file and reports the findings that are at least as severe as `least`.
inline Tally reportFindings(Input input, Severity least, std::size_t most, Report &report) {
    return reportFindings(checkFile(std::move(input), least), most, report);
}
