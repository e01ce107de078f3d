#pragma once

#include "infrastructure/RtiExport.hh"

#include <string>
#include <string_view>

class RtiBuffer;

/// String services: reading and writing strings in images, and upper-casing.
///
/// Threads: every function may run on any number of threads at once.
class RTI_EXPORT RtiStringUtility {
public:
    /// Appends a string of any bytes and any length: its length as one number, then its bytes.
    static void putString(const std::string &text, RtiBuffer &buffer);

    /// Reads the next string. Throws RtiBufferUnderflow if the buffer has fewer bytes than its length; it never
    /// allocates much more than the buffer has.
    static std::string getString(RtiBuffer &buffer);

    /// Returns an upper-case copy. Only a to z change, in every locale.
    static std::string toupper(std::string_view text);

    /// The same for one byte.
    static constexpr unsigned char toupper(char byte) {
        return static_cast<unsigned char>(byte >= 'a' && byte <= 'z' ? byte - 'a' + 'A' : byte);
    }
};
