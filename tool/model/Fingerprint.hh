#pragma once

#include "fed/RtiFedDatabase.hh"

#include <string>

/// Returns the checksum of a model as eight hexadecimal digits in lower case.
std::string checksumText(const RtiFedDatabase &database);

/// Returns the SHA-256 fingerprint of a model as 64 hexadecimal digits in lower case. It is computed over the image
/// without the file name at its end, so that it is the same for all copies of a model.
std::string fingerprint(const RtiFedDatabase &database);
