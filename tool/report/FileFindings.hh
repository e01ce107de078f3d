#pragma once

#include "tool/check/Checker.hh"
#include "tool/model/Input.hh"
#include "tool/report/Report.hh"

#include <functional>

/// Decides about the findings of a file: changes severities, marks findings as suppressed, adds findings about
/// suppressions. `text` is null for a saved image.
using Control = std::function<void(const Checker *text, std::vector<Finding> &findings)>;

/// Reports the findings of a file whose rules are at least as severe as `least`, as `control` leaves them: all errors,
/// then all warnings, so that no warning hides an error; each in the order of the text. The first `most` are shown, the
/// others counted.
Tally reportFindings(const Input &input, Severity least, std::size_t most, Report &report, const Control &control = {});
