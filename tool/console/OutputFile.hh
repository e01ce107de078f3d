#pragma once

#include "tool/console/Console.hh"

#include <cstddef>
#include <functional>
#include <ostream>
#include <string>

/// Replaces a file, whole or not at all: the bytes are written to a new file beside it, which gets the mode, owner and
/// group of the old one and is renamed. A symbolic link is followed; its target must exist. Anything but a regular
/// file, such as a device or pipe, is written in place. Throws CannotWork and leaves the old file as it is. A signal
/// that ends the program while it writes leaves no new file, if cleanUpWhenInterrupted was called.
void writeFile(const std::string &fileName, const void *bytes, std::size_t size);

/// The same for a file that must not exist; not even one made meanwhile by another program is replaced.
void createFile(const std::string &fileName, const void *bytes, std::size_t size);

/// Writes the result of a command to a file, as `writeFile` does, or to standard output for the name "-".
void writeOutput(const std::string &fileName, const std::string &text, const Console &console);

/// The same for a result that `write` writes in parts, so that it need not be in memory as a whole. What `write` throws
/// leaves the old file as it is.
void writeOutput(const std::string &fileName, const std::function<void(std::ostream &)> &write, const Console &console);
