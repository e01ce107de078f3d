#pragma once

/// FNV-1a.
class RtiCrc {
public:
    static unsigned long computeCrc(const void *data, long length) {
        const auto *bytes = static_cast<const unsigned char *>(data);
        unsigned long hash = 0x811C9DC5;
        for (long i = 0; i < length; ++i)
            hash = (hash ^ bytes[i]) * 0x01000193 & 0xFFFFFFFF;
        return hash;
    }
};
