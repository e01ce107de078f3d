#pragma once

#include "fed/RtiFedDatabase.hh"
#include "tool/model/Input.hh"
#include "tool/report/Report.hh"

#include <memory>
#include <ostream>
#include <string>

/// How many findings of a file are shown unless more are asked for: behind these, others often follow from them.
inline constexpr std::size_t kUsuallyShown = 50;

/// The database of a saved image. Throws RTI::Exception for one that cannot be restored, or has more bytes behind it.
std::unique_ptr<RtiFedDatabase> restoreImage(const std::string &image);

/// Tells a report what is found in a file and is at least so severe: the errors, then the warnings, so that none of
/// these hides an error; each in the order of the text. Only the first `most` are shown, and the others counted.
Tally reportFindings(const Input &input, Severity least, std::size_t most, Report &report);

/// The database of a FED text or saved image. Null if it is found wrong, with its errors written to `complaints`.
std::unique_ptr<RtiFedDatabase> loadModel(const Input &input, std::ostream &complaints);

/// The same of a file that was found right before.
std::unique_ptr<RtiFedDatabase> buildModel(const Input &input);
