#pragma once

#include "infrastructure/RTI.hh"

#include <iosfwd>

class RtiBuffer;

class RtiSaveableType {
public:
    virtual ~RtiSaveableType() = default;
    virtual RTI_bool save(RtiBuffer &buffer) = 0;
    virtual void restore(RtiBuffer &buffer) = 0;
    virtual void dump(std::ostream &os) = 0;
    virtual void diff(RtiBuffer &buffer, std::ostream &os) = 0;
};
