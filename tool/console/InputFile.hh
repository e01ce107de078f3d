#pragma once

#include <cstddef>
#include <string>

/// Reads a file of at most `longest` bytes, which messages call `name`. Throws CannotWork.
std::string readSmallFile(const std::string &fileName, const std::string &name, std::size_t longest);
