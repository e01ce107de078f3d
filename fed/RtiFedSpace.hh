#pragma once

#include "fed/RtiFedDimension.hh"
#include "fed/storage/RtiFedMemberTable.hh"

/// A routing space: its name, its signed handle, and the dimensions it owns. A space numbers its own dimensions, from
/// 0.
///
/// Its image is the name, the dimensions, the handle, the next dimension handle.
/// Lifetime: a dimension handed out by pointer lives as long as the space.
/// Threads: const members on any number of threads at once; all others need the space to themselves.
class RTIFED_EXPORT RtiFedSpace : public RtiFedElement {
public:
    static constexpr const char *_thisClassName = "RtiFedSpace";
    static constexpr const char *_thisClassVersion = "1.0";
    static constexpr std::size_t _numImageValues = 4; ///< At least: a name, a count, and two handles.

    using Handle = RtiSpaceHandle;

    RtiFedSpace(RtiSpaceHandle handle, std::string name);
    /// Restores itself from the buffer. Throws what restore throws.
    explicit RtiFedSpace(RtiBuffer &buffer);

    RtiSpaceHandle getHandle() const { return _theHandle; }

    /// Hands out the next dimension handle: 0, 1, 2 ...
    RtiDimensionHandle createDimensionHandle();

    /// Adds a dimension and returns it. Throws RTI::RTIinternalError if the name is given in upper case and taken; a
    /// name that differs from an earlier one in letter case only is added, and found by handle only.
    RtiFedDimension *addDimension(std::string name);

    /// HLA 1.3 Get Dimension Handle: finds a dimension in any letter case. Throws RTI::NameNotFound.
    RtiDimensionHandle getDimensionHandle(std::string_view name) const;
    /// HLA 1.3 Get Dimension Name. Throws RTI::DimensionNotDefined.
    std::string getDimensionName(RtiDimensionHandle handle) const;
    /// Unlike the lookup above, this finds a dimension by the upper case of its name only.
    RTI_bool dimensionExists(std::string_view name) const;
    /// Throws RTI::RTIinternalError for an unknown handle.
    RtiFedDimension *find(RtiDimensionHandle handle) const;
    /// The dimension at this place in the order of addition, from 0. Throws RTI::RTIinternalError.
    RtiFedDimension *getDimension(unsigned long index) const;
    unsigned long getNumberOfDimensions() const;

    /// A 32-bit checksum over the names and handles of the space and its dimensions. Throws RTI::RTIinternalError if a
    /// handle is wider than 32 bits.
    unsigned long getChecksum() const;

    RTI_bool save(RtiBuffer &buffer) const override;
    /// Throws RtiBufferUnderflow, and RTI::RTIinternalError if two dimensions have one handle or the next would be
    /// taken.
    void restore(RtiBuffer &buffer) override;
    void dump(std::ostream &os) const override;
    /// Compares handles and numbers of dimensions, not names.
    void diff(RtiBuffer &buffer, std::ostream &os) const override;

private:
    static const RtiFedField<RtiFedSpace> _fields[5];

    RtiFedMemberTable<RtiFedDimension> _dimensions;
    RtiSpaceHandle _theHandle;
    RtiDimensionHandle _nextDimensionHandle;
};
