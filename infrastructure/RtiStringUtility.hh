#pragma once

#include "infrastructure/RtiExport.hh"

#include <string>
#include <string_view>

class RtiBuffer;

/// String services: the form of a string in an image, and the upper case by which all names are matched.
///
/// Threads: every function may run on any number of threads at once.
class RTI_EXPORT RtiStringUtility {
public:
    /// Appends a string of any bytes and any length: its length as one number, then its bytes.
    static void putString(const std::string &text, RtiBuffer &buffer);

    /// Reads the next string. Throws RtiBufferUnderflow before it takes memory for one that the buffer cannot hold.
    static std::string getString(RtiBuffer &buffer);

    /// An upper-case copy: a to z only, byte by byte, whatever the locale.
    static std::string toupper(std::string_view text);

    /// The same for one byte.
    static constexpr unsigned char toupper(char byte) {
        return static_cast<unsigned char>(byte >= 'a' && byte <= 'z' ? byte - 'a' + 'A' : byte);
    }
};
