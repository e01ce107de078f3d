#pragma once

#include "fed/RtiFedDatabase.hh"
#include "tool/model/Input.hh"

#include <memory>
#include <ostream>
#include <string>

/// Returns the database of a saved image. Throws RTI::Exception if it cannot be restored, or if bytes follow it.
std::unique_ptr<RtiFedDatabase> restoreImage(const std::string &image);

/// Returns the database of a FED text or saved image without errors. Throws RTI::Exception or CannotWork.
std::unique_ptr<RtiFedDatabase> buildModel(const Input &input);

/// Writes the readable listing of a model. Returns false if the model, restored from an image, refers to a space,
/// transportation or ordering that does not exist; the listing then breaks off.
bool writeListing(const RtiFedDatabase &model, std::ostream &os);

/// The message about such a model.
inline constexpr const char *kDanglingReference =
    "the model refers to a space, transportation or ordering that does not exist";
