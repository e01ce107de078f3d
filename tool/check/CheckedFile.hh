#pragma once

#include "tool/check/Checker.hh"
#include "tool/input/Input.hh"

#include <memory>
#include <vector>

/// A file and what was found in it.
struct CheckedFile {
    std::string name;
    std::unique_ptr<Checker> text; ///< Null for a saved image.
    std::vector<Finding> findings; ///< The errors in the order of the text, then the warnings.
};

/// Finds what is at least as severe as `least`.
CheckedFile checkFile(Input input, Severity least);
/// The same, of a text that was read.
CheckedFile checkText(std::string name, std::unique_ptr<Checker> text, Severity least);

/// Returns what is at least as severe as `least` in a text.
std::vector<Finding> findingsOfText(const Checker &text, Severity least);
