#pragma once

#include <cstddef>
#include <string>

/// Replaces a file by these bytes, whole or not at all: they are written beside it and renamed into its place. Of a
/// symbolic link, it is the file that it leads to, and there must be one. What is no regular file, such as a device or
/// a pipe, is written to as it is. Throws CannotWork; the old file then stands.
void writeFile(const std::string &fileName, const void *bytes, std::size_t size);
