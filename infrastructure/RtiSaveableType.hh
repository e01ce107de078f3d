#pragma once

#include "infrastructure/RTI.hh"

#include <ostream>

class RtiBuffer;

/// Everything that can be saved. An image is the bare sequence of field values: no class name, no version, no tags.
///
/// Threads: save, dump and diff may run on any number of threads at once, each with a buffer and stream of its own;
/// restore needs the object to itself.
class RTI_EXPORT RtiSaveableType {
public:
    virtual ~RtiSaveableType() = default;

    /// Appends the object's image to the buffer and returns RTI_true. Throws RtiBufferOverflow if a number of the
    /// object is wider than the image's 32 bits; the buffer then holds the part before it.
    virtual RTI_bool save(RtiBuffer &buffer) const = 0;

    /// Replaces the object's fields by the next image in the buffer. Throws RtiBufferUnderflow if the buffer ends
    /// before the image does, and what the concrete class says; the object is then partly restored.
    virtual void restore(RtiBuffer &buffer) = 0;

    /// Writes the object's fields, a line each: name, "=``", value, "''". Numbers are decimal whatever the stream's
    /// settings.
    virtual void dump(std::ostream &os) const = 0;

    /// Reads one image of the same class and writes a line for each field in which it differs: "old" is the image,
    /// "new" this object. Writes nothing if they agree. Throws what restore throws.
    virtual void diff(RtiBuffer &buffer, std::ostream &os) const = 0;
};
