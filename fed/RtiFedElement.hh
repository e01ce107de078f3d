#pragma once

#include "fed/RtiFedSaveable.hh"

#include <string>
#include <utility>

template <class Record>
struct RtiFedField;

/// Base of every named record of the federation object model. The name keeps the spelling of its declaration.
///
/// Restore a record that a class, space or database owns only together with its owner: restored alone, it would still
/// be found under its former name and handle.
/// Its image is the name. Threads: as for RtiFedSaveable.
class RTIFED_EXPORT RtiFedElement : public RtiFedSaveable {
public:
    static constexpr const char *_thisClassName = "RtiFedElement";
    static constexpr const char *_thisClassVersion = "1.0";

    explicit RtiFedElement(const std::string &name) : _name(name) {}
    explicit RtiFedElement(std::string &&name) noexcept : _name(std::move(name)) {}
    /// Restores itself from the buffer. Throws RtiBufferUnderflow.
    explicit RtiFedElement(RtiBuffer &buffer);

    using RtiFedSaveable::diff, RtiFedSaveable::dump, RtiFedSaveable::save;
    RTI_bool save(RtiBuffer &buffer) override;
    void restore(RtiBuffer &buffer) override;
    void dump(std::ostream &os) override;
    /// Compares names exactly, including letter case, unlike the lookups.
    void diff(RtiBuffer &buffer, std::ostream &os) override;

    /// The name as declared. The reference stays valid and shows a later restore.
    virtual const std::string &getName() const { return _name; }

protected:
    RtiFedElement() = default;

private:
    static const RtiFedField<RtiFedElement> _fields[1];

    std::string _name;
};
