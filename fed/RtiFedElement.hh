#pragma once

#include "fed/RtiFedExport.hh"
#include "infrastructure/RtiBuffer.hh"
#include "infrastructure/RtiSaveableType.hh"

#include <string>
#include <utility>

template <class Record>
struct RtiFedField;

/// Base of every named record of the federation object model. The name keeps the spelling of its declaration.
///
/// A record that a class, space or database holds is restored with its holder: alone, it would be looked for under the
/// name and handle that it had.
/// Its image is the name. Threads: as RtiSaveableType says.
class RTIFED_EXPORT RtiFedElement : public RtiSaveableType {
public:
    static constexpr const char *_thisClassName = "RtiFedElement";
    static constexpr const char *_thisClassVersion = "1.0";

    explicit RtiFedElement(const std::string &name) : _name(name) {}
    explicit RtiFedElement(std::string &&name) noexcept : _name(std::move(name)) {}
    /// Restores itself from the buffer. Throws RtiBufferUnderflow.
    explicit RtiFedElement(RtiBuffer &buffer);

    RTI_bool save(RtiBuffer &buffer) const override;
    void restore(RtiBuffer &buffer) override;
    void dump(std::ostream &os) const override;
    /// Compares names exactly, letter case included, unlike any lookup.
    void diff(RtiBuffer &buffer, std::ostream &os) const override;

    /// The name as declared; the reference sees a later restore.
    virtual const std::string &getName() const { return _name; }

protected:
    RtiFedElement() = default;

private:
    static const RtiFedField<RtiFedElement> _fields[1];

    std::string _name;
};
