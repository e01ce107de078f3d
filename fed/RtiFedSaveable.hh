#pragma once

#include "fed/RtiFedExport.hh"
#include "infrastructure/RtiBuffer.hh"
#include "infrastructure/RtiSaveableType.hh"

#include <ostream>

/// Base of everything in this library that can be saved. Its overloads let const objects be saved, dumped and compared
/// as well: the host's RtiSaveableType declares these operations without const, although none of ours changes the
/// object. A class that overrides them makes the overloads visible again with a using-declaration.
///
/// Threads: save, dump and diff may run on any number of threads at once, each with a buffer and stream of its own;
/// restore needs exclusive access to the object.
class RTIFED_EXPORT RtiFedSaveable : public RtiSaveableType {
public:
    using RtiSaveableType::diff, RtiSaveableType::dump, RtiSaveableType::save;

    RTI_bool save(RtiBuffer &buffer) const { return mutableSelf().save(buffer); }
    void dump(std::ostream &os) const { mutableSelf().dump(os); }
    void diff(RtiBuffer &buffer, std::ostream &os) const { mutableSelf().diff(buffer, os); }

private:
    RtiSaveableType &mutableSelf() const {
        return const_cast<RtiFedSaveable &>(*this); // NOLINT(cppcoreguidelines-pro-type-const-cast): nothing is changed
    }
};
