#pragma once

#include "infrastructure/RtiExport.hh"

/// The checksum by which the processes of a federation compare their models.
class RTI_EXPORT RtiCrc {
public:
    /// CRC-32 as in zip, PNG and Ethernet, in the range of 32 bits: "123456789" gives CBF43926, no bytes give 0.
    /// A negative length counts as no bytes. Threads: any number at once.
    static unsigned long computeCrc(const void *data, long length);
};
