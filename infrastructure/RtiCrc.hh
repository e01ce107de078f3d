#pragma once

#include "infrastructure/RtiExport.hh"

/// The checksum by which the processes of a federation compare their models.
class RTI_EXPORT RtiCrc {
public:
    /// Computes the CRC-32 of zip, PNG and Ethernet: "123456789" gives CBF43926, no bytes give 0. A negative length is
    /// treated as 0. Threads: any number at once.
    static unsigned long computeCrc(const void *data, long length);
};
