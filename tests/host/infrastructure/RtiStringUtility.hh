#pragma once

#include "infrastructure/RtiBuffer.hh"

/// A string is two bytes, its length, and then its bytes.
class RtiStringUtility {
public:
    static void putString(const std::string &text, RtiBuffer &buffer) {
        if (text.size() > 0xFFFF)
            throw std::length_error("a string is too long");
        buffer.appendNumber(text.size(), 2);
        buffer.append(text);
    }
    static std::string getString(RtiBuffer &buffer) {
        const unsigned long size = buffer.takeNumber(2);
        return buffer.take(size);
    }
};
