#pragma once

#include "fed/RtiFedSaveable.hh"
#include "fed/image/RtiFedImage.hh"
#include "fed/storage/RtiFedStoredName.hh"

#include <string>
#include <string_view>
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

    explicit RtiFedElement(std::string name) : _name(std::move(name)) {}
    /// The arena of the letters must outlive the record.
    explicit RtiFedElement(RtiFedLetters name) : _name(name) {}
    /// Restores itself from the buffer. Throws RtiBufferUnderflow.
    explicit RtiFedElement(RtiBuffer &buffer);
    // Without moves: a name in an arena cannot be moved out of it.
    RtiFedElement(const RtiFedElement &) = default;
    RtiFedElement &operator=(const RtiFedElement &) = default;

    using RtiFedSaveable::diff, RtiFedSaveable::dump, RtiFedSaveable::save;
    RTI_bool save(RtiBuffer &buffer) override;
    void restore(RtiBuffer &buffer) override;
    void dump(std::ostream &os) override;
    /// Compares names exactly, including letter case, unlike the lookups.
    void diff(RtiBuffer &buffer, std::ostream &os) override;

    /// The name as declared. The reference stays valid and shows a later restore. Throws std::bad_alloc: the first call
    /// makes the string.
    virtual const std::string &getName() const { return _name.string(); }
    /// The same, without making a string. The view is valid until a restore.
    std::string_view nameText() const { return _name.text(); }

protected:
    RtiFedElement() = default;
    void restoreName(RtiFedImageReader &reader) { _name.assign(reader.string()); }

private:
    static const RtiFedField<RtiFedElement> _fields[1];

    RtiFedStoredName _name;
};
