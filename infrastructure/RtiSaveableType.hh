#pragma once

#include "infrastructure/RTI.hh"

#include <ostream>

class RtiBuffer;

/// The interface of everything that can be saved. An image is the bare sequence of field values: no class name, no
/// version, no tags.
class RTI_EXPORT RtiSaveableType {
public:
    virtual ~RtiSaveableType() = default;

    /// Appends the object's image to the buffer and returns RTI_true. Throws RtiBufferOverflow if a number of the
    /// object does not fit into the 32 bits of an image; the buffer then holds the part before that number.
    virtual RTI_bool save(RtiBuffer &buffer) = 0;

    /// Replaces the object's fields by the next image in the buffer. Throws RtiBufferUnderflow if the buffer ends
    /// before the image does, and what the concrete class documents; the object is then partly restored.
    virtual void restore(RtiBuffer &buffer) = 0;

    /// Writes one line for each field: name, "=``", value, "''". Numbers are decimal with any settings of the stream.
    virtual void dump(std::ostream &os) = 0;

    /// Reads one image of the same class and writes one line for each field that differs: "old" is the image, "new" is
    /// this object. Writes nothing if they agree. Throws what restore throws.
    virtual void diff(RtiBuffer &buffer, std::ostream &os) = 0;
};
