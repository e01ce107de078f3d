#pragma once

#include "fed/RtiFedDatabase.hh"
#include "infrastructure/RtiFedParser.hh"
#include "tool/check/CheckedFile.hh"
#include "tool/input/Input.hh"
#include "tool/model/Outline.hh"
#include "tool/report/DiffReport.hh"

#include <memory>
#include <optional>
#include <ostream>
#include <string>

/// How commands other than check load a file. If the library refuses it, they say so in one line, with the first error,
/// and name `rtifed check` for the others.

/// Returns the database of a FED text or saved image. Null if the library refuses it.
std::unique_ptr<RtiFedDatabase> loadModel(Input input, std::ostream &complaints);

/// A file as far as it can be understood.
struct ShownFile {
    Outline outline;
    std::unique_ptr<RtiFedDatabase> database; ///< Null if the library refuses the file.
};

/// Reads a file, also a FED text that the library refuses. Nothing for an image that cannot be restored.
std::optional<ShownFile> fileToShow(Input input, std::ostream &complaints);
/// The same, of which only the outline is needed.
std::optional<Outline> outlineToShow(Input input, std::ostream &complaints);

/// Returns the line that says that the library refuses a file, followed by `consequence`; empty if it does not. The
/// file must have all its errors, before settings have decided about them.
std::string complaintAbout(const CheckedFile &file, const char *consequence);
/// Writes this line about a file that is checked for it, or that the file is XML. Returns whether it wrote one.
bool complainIfRefused(Input input, const char *consequence, std::ostream &complaints);

/// The same for what a command has written. If that is named "-", it went to standard output, where `rtifed check`
/// cannot read it again, so that the complaint does not refer to that.
bool complainIfResultRefused(Input result, std::ostream &complaints);
inline constexpr const char *kOnlyUnderstood = ", so that only what can be understood is shown";

/// Returns a file to compare; of a FED text that the library refuses, as far as it can be understood. Throws CannotWork
/// for an image that cannot be restored.
ComparedFile loadForComparison(Input input);

/// Writes that FED text was expected if the file is a saved image. Returns whether it is.
bool complainIfImage(const Input &input, std::ostream &complaints);

/// Writes the syntax errors of a text as `check` does: for commands that need no more than that it parses. Returns
/// whether there are any.
bool reportSyntaxErrors(const RtiFedParser &parser, const std::string &name, std::ostream &complaints);
