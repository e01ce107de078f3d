#pragma once

#include "fed/RtiFedDatabase.hh"

#include <string>

/// The checksum of a model as eight hexadecimal digits in lower case.
std::string checksumText(const RtiFedDatabase &database);

/// The SHA-256 fingerprint of a model as 64 hexadecimal digits in lower case: that of its image without the file name
/// at the end, so that all copies of a model have the same.
std::string fingerprint(const RtiFedDatabase &database);
