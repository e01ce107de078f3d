#pragma once

#include "fed/RtiFedDimension.hh"
#include "fed/storage/RtiFedMemberTable.hh"

/// A routing space: its name, its signed handle, and the dimensions it owns. Each space numbers its dimensions from 0.
///
/// Its image is name, dimensions, handle, next dimension handle.
/// Lifetime: a returned dimension lives as long as the space.
/// Threads: const members on any number of threads at once; all others need exclusive access.
class RTIFED_EXPORT RtiFedSpace : public RtiFedElement {
public:
    static constexpr const char *_thisClassName = "RtiFedSpace";
    static constexpr const char *_thisClassVersion = "1.0";
    static constexpr std::size_t _numImageValues = 4; ///< A name, a count and two handles.

    using Handle = RtiSpaceHandle;

    RtiFedSpace(RtiSpaceHandle handle, std::string name);
    /// Restores itself from the buffer. Throws what restore throws.
    explicit RtiFedSpace(RtiBuffer &buffer);
    explicit RtiFedSpace(RtiFedImageReader &reader);

    RtiSpaceHandle getHandle() const { return _theHandle; }

    /// Issues the next dimension handle: 0, 1, 2 ...
    RtiDimensionHandle createDimensionHandle();

    /// Adds a dimension and returns it. Throws RTI::RTIinternalError if `name` is in upper case and in use. A name that
    /// differs from an earlier one in letter case only is added, but lookups by it return the earlier dimension.
    RtiFedDimension *addDimension(std::string name);

    /// HLA 1.3 Get Dimension Handle, in any letter case. Throws RTI::NameNotFound.
    RtiDimensionHandle getDimensionHandle(std::string_view name) const;
    /// HLA 1.3 Get Dimension Name. Throws RTI::DimensionNotDefined.
    std::string getDimensionName(RtiDimensionHandle handle) const;
    /// Unlike getDimensionHandle, this finds a dimension only by the upper case of its name.
    RTI_bool dimensionExists(std::string_view name) const;
    /// The dimension of a handle. Throws RTI::RTIinternalError.
    RtiFedDimension *find(RtiDimensionHandle handle) const;
    /// The dimension at `index` in the order of addition, from 0. Throws RTI::RTIinternalError.
    RtiFedDimension *getDimension(unsigned long index) const;
    unsigned long getNumberOfDimensions() const;

    /// Returns a 32-bit checksum over the names and handles of the space and its dimensions. Throws
    /// RTI::RTIinternalError if a handle does not fit into 32 bits.
    unsigned long getChecksum() const;

    using RtiFedSaveable::diff, RtiFedSaveable::dump, RtiFedSaveable::save;
    RTI_bool save(RtiBuffer &buffer) override;
    /// Throws RtiBufferUnderflow, and RTI::RTIinternalError for a duplicate dimension handle or one that is not below
    /// the next dimension handle.
    void restore(RtiBuffer &buffer) override;
    void dump(std::ostream &os) override;
    /// Compares handles and the number of dimensions, not names.
    void diff(RtiBuffer &buffer, std::ostream &os) override;

private:
    static const RtiFedField<RtiFedSpace> _fields[5];

    void restore(RtiFedImageReader &reader);

    RtiFedMemberTable<RtiFedDimension> _dimensions;
    RtiSpaceHandle _theHandle;
    RtiDimensionHandle _nextDimensionHandle;
};
