#pragma once

#include "fed/RtiFedDatabase.hh"
#include "infrastructure/RtiFedParser.hh"
#include "tool/input/Input.hh"

#include <memory>
#include <ostream>
#include <string>

/// Returns the database of a saved image. Throws RTI::Exception if it cannot be restored, or if bytes follow it.
std::unique_ptr<RtiFedDatabase> restoreImage(const std::string &image);

/// Returns the database of a text, as the library builds it from a file of this name; null if the library refuses it.
std::unique_ptr<RtiFedDatabase> buildModel(RtiFedParser &text, const std::string &fileName);

/// Returns the database of a FED text or saved image without errors. Throws RTI::Exception or CannotWork.
std::unique_ptr<RtiFedDatabase> buildModel(const Input &input);

/// Writes the readable listing of a model. Returns false if the model, restored from an image, refers to a space,
/// transportation or ordering that does not exist; the listing then breaks off.
bool writeListing(const RtiFedDatabase &model, std::ostream &os);

/// The message about such a model.
inline constexpr const char *kDanglingReference =
    "the model refers to a space, transportation or ordering that does not exist";

/// Returns the checksum of a model as eight hexadecimal digits in lower case.
std::string checksumText(unsigned long checksum);
inline std::string checksumText(const RtiFedDatabase &database) {
    return checksumText(database.getChecksum());
}

/// Returns the SHA-256 fingerprint of a model as 64 hexadecimal digits in lower case. It is computed over the image
/// without the file name at its end, so that it is the same for all copies of a model.
std::string fingerprint(const RtiFedDatabase &database);
