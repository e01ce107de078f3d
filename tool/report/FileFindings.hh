#pragma once

#include "fed/RtiFedDatabase.hh"
#include "tool/check/Checker.hh"
#include "tool/model/Input.hh"
#include "tool/model/Outline.hh"
#include "tool/report/Report.hh"

#include <functional>
#include <memory>
#include <optional>
#include <ostream>

/// The number of findings shown of a file by default; later ones often follow from earlier ones.
inline constexpr std::size_t kUsuallyShown = 50;

/// Decides about the findings of a file: changes severities, marks findings as suppressed, adds findings about
/// suppressions. `text` is null for a saved image.
using Control = std::function<void(const Checker *text, std::vector<Finding> &findings)>;

/// Reports the findings of a file whose rules are at least as severe as `least`, as `control` leaves them: all errors,
/// then all warnings, so that no warning hides an error; each in the order of the text. The first `most` are shown, the
/// others counted.
Tally reportFindings(const Input &input, Severity least, std::size_t most, Report &report, const Control &control = {});

/// Returns the database of a FED text or saved image. Null if it has errors, which are written to `complaints`.
std::unique_ptr<RtiFedDatabase> loadModel(const Input &input, std::ostream &complaints);

/// Returns the outline of a file, and says on `complaints` if the library refuses the file. Nothing for an image that
/// cannot be restored.
std::optional<Outline> outlineToShow(const Input &input, std::ostream &complaints);
