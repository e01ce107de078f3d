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

/// An image begins with the length of a name, whose first byte is zero; FED text never does.
bool isImage(const std::string &contents);

/// The database of a saved image. Throws RTI::Exception for one that cannot be restored, or has more bytes behind it.
std::unique_ptr<RtiFedDatabase> restoreImage(const std::string &image);

/// Writes every problem of the contents of a file, as `FILE:LINE:COLUMN: error: TEXT` with its details under it.
/// Returns whether there is none.
bool reportProblems(const std::string &fileName, const std::string &contents, std::ostream &os);

/// The database of a FED text or saved image that is named on the command line. Null if it is found wrong, with its
/// problems written to `complaints`. Throws CannotWork.
std::unique_ptr<RtiFedDatabase> loadModel(const std::string &fileName, std::ostream &complaints);

void print(std::ostream &os, const std::string &fileName, const Finding &finding);
