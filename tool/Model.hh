#pragma once

#include "fed/RtiFedDatabase.hh"
#include "tool/Checker.hh"
#include "tool/Input.hh"

#include <memory>
#include <ostream>
#include <string>

/// The database of a saved image. Throws RTI::Exception for one that cannot be restored, or has more bytes behind it.
std::unique_ptr<RtiFedDatabase> restoreImage(const std::string &image);

/// Writes every problem of a file to `os`, each as one line with its details under it. Returns whether there is none.
bool reportProblems(const Input &input, std::ostream &os);

/// The database of a FED text or saved image. Null if it is found wrong, with its problems written to `complaints`.
std::unique_ptr<RtiFedDatabase> loadModel(const Input &input, std::ostream &complaints);

/// The same of a file that was found right before.
std::unique_ptr<RtiFedDatabase> buildModel(const Input &input);

void print(std::ostream &os, const std::string &fileName, const Finding &finding);
