#pragma once

#include "fed/RtiFedDatabase.hh"
#include "tool/Checker.hh"

#include <memory>
#include <ostream>
#include <stdexcept>
#include <string>

/// What keeps a command from doing its work, such as a file that cannot be opened.
class CannotWork : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The contents of a file, or of standard input for the name "-". Throws CannotWork.
std::string readInput(const std::string &fileName);

/// Writes `FILE:LINE:COLUMN: error: TEXT`, and the details under it.
void print(std::ostream &os, const std::string &fileName, const Finding &finding);

/// The database of a FED text or saved image that is named on the command line. Null if it is found wrong, with the
/// findings written to `complaints`. Throws CannotWork.
std::unique_ptr<RtiFedDatabase> loadModel(const std::string &fileName, std::ostream &complaints);
