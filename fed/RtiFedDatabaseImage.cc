// The operations of RtiFedDatabase on images: save, restore, dump, diff and checksum.

#include "fed/RtiFedDatabase.hh"

#include "fed/image/RtiFedChecksum.hh"
#include "fed/image/RtiFedDump.hh"
#include "fed/image/RtiFedImage.hh"
#include "infrastructure/RtiStringUtility.hh"

#include <utility>

const RtiFedField<RtiFedDatabase> RtiFedDatabase::_fields[] = {
    {"_fedName", [](const RtiFedDatabase &d) { return fieldText(d._fedName); }},
    {"_fedVersion", [](const RtiFedDatabase &d) { return fieldText(d._fedVersion); }},
    {"size _objectClassNameMap", [](const RtiFedDatabase &d) { return fieldText(d._objectClasses.numNames()); }},
    {"size _objectClassHandleMap", [](const RtiFedDatabase &d) { return fieldText(d._objectClasses.numHandles()); }},
    {"size _interactionClassNameMap",
     [](const RtiFedDatabase &d) { return fieldText(d._interactionClasses.numNames()); }},
    {"size _interactionClassHandleMap",
     [](const RtiFedDatabase &d) { return fieldText(d._interactionClasses.numHandles()); }},
    {"size _spaceNameMap", [](const RtiFedDatabase &d) { return fieldText(d._spaceNameMap.size()); }},
    {"size _spaceHandleMap", [](const RtiFedDatabase &d) { return fieldText(d._spaceHandleMap.size()); }},
    {"_nextSpaceHandle", [](const RtiFedDatabase &d) { return fieldText(d._nextSpaceHandle); }},
    {"_nextObjectClassHandle", [](const RtiFedDatabase &d) { return fieldText(d._nextObjectClassHandle); }},
    {"_nextAttributeHandle", [](const RtiFedDatabase &d) { return fieldText(d._nextAttributeHandle); }},
    {"_nextInteractionClassHandle", [](const RtiFedDatabase &d) { return fieldText(d._nextInteractionClassHandle); }},
    {"_nextParameterHandle", [](const RtiFedDatabase &d) { return fieldText(d._nextParameterHandle); }},
    {"_fileName", [](const RtiFedDatabase &d) { return fieldText(d._fileName); }}};

/// Calls `visit` for each counter, in the order of the image.
template <class Visit>
void RtiFedDatabase::forEachCounter(Visit visit) {
    visit(_nextSpaceHandle);
    visit(_nextObjectClassHandle);
    visit(_nextAttributeHandle);
    visit(_nextInteractionClassHandle);
    visit(_nextParameterHandle);
}

RtiFedDatabase::RtiFedDatabase(RtiBuffer &buffer) {
    RtiFedDatabase::restore(buffer);
}

RTI_bool RtiFedDatabase::save(RtiBuffer &buffer) {
    RtiStringUtility::putString(_fedName, buffer);
    RtiStringUtility::putString(_fedVersion, buffer);
    _objectClasses.save(buffer);
    _interactionClasses.save(buffer);
    buffer.put(numSpaces());
    for (const auto &[name, space] : _spaceNameMap.sorted())
        buffer.put(*space);
    buffer.put(static_cast<unsigned long>(_attributeObjectClassMap.size()));
    _attributeObjectClassMap.forEach([&buffer](const RtiAttributeHandle &attribute, unsigned long objectClass) {
        writeHandle(buffer, attribute);
        writeHandle(buffer, RtiObjectClassHandle(objectClass));
    });
    forEachCounter([&buffer](auto &counter) { writeHandle(buffer, counter); });
    RtiStringUtility::putString(_fileName, buffer);
    return RTI_true;
}

void RtiFedDatabase::restore(RtiBuffer &buffer) {
    try {
        clear();
        RtiFedImageReader reader(buffer);
        restoreContents(reader);
    } catch (...) {
        clear(); // nothing of an image that was refused remains
        throw;
    }
}

void RtiFedDatabase::restoreContents(RtiFedImageReader &reader) {
    _fedName = reader.string();
    _fedVersion = reader.string();
    _objectClasses.restore(reader, "object classes");
    _interactionClasses.restore(reader, "interaction classes");
    restoreSpaces(reader);
    restoreAttributeClasses(reader);

    // Attributes and parameters are not compared with their counters: a host may have chosen their handles itself.
    const std::size_t byte = reader.byte();
    forEachCounter([&reader](auto &counter) { reader.read(counter); });
    if (_nextSpaceHandle < _spaceHandleMap.greatest() || _nextObjectClassHandle < _objectClasses.greatest() ||
        _nextInteractionClassHandle < _interactionClasses.greatest())
        refuseImage(byte, "the counter of a handle is less than a handle in use");
    _fileName = reader.string();
}

void RtiFedDatabase::restoreSpaces(RtiFedImageReader &reader) {
    for (unsigned long count = reader.count(RtiFedSpace::_numImageValues, "spaces"); count > 0; --count) {
        const std::size_t byte = reader.byte();
        auto space = std::make_unique<RtiFedSpace>(reader);
        if (!(RtiSpaceHandle(0) < space->getHandle()) || find(space->getHandle()))
            refuseImage(byte, "the handle of the space ", space->getName(), " is less than 1 or a duplicate");
        if (_spaceNameMap.find(space->nameText()))
            refuseImage(byte, "duplicate space name ", space->getName());
        insertSpace(std::move(space));
    }
}

void RtiFedDatabase::restoreAttributeClasses(RtiFedImageReader &reader) {
    const unsigned long count = reader.count(2, "pairs of attribute and class");
    _attributeObjectClassMap.reserve(reader.countToReserve(count)); // equivalent: only speed
    RtiAttributeHandle attribute, last;
    RtiObjectClassHandle objectClass;
    for (unsigned long i = 0; i < count; ++i) {
        const std::size_t byte = reader.byte();
        reader.read(attribute, objectClass);
        if (i > 0 && !(last < attribute))
            refuseImage(byte, "the attribute handle ", toString(attribute._value), " follows ", toString(last._value));
        _attributeObjectClassMap.insert(attribute, objectClass._value);
        last = attribute;
    }
}

/// Empties the database, but keeps the file name.
void RtiFedDatabase::clear() {
    ++_generation;
    _fedName.clear();
    _fedVersion.clear();
    _objectClasses.clear();
    _interactionClasses.clear();
    _spaceNameMap.clear();
    _spaceHandleMap.clear();
    _attributeObjectClassMap.clear();
    forEachCounter([](auto &counter) { counter._value = 0; });
}

void RtiFedDatabase::dump(std::ostream &os) {
    dumpFields(_fields, *this, os);
}

void RtiFedDatabase::diff(RtiBuffer &buffer, std::ostream &os) {
    diffFields(_fields, *this, buffer, os);
}

unsigned long RtiFedDatabase::getChecksum() const {
    unsigned long checksum =
        checksumOf(_fedName) ^ checksumOf(_fedVersion) ^ _objectClasses.checksum() ^ _interactionClasses.checksum();
    for (const auto &[name, space] : _spaceNameMap.sorted())
        checksum ^= space->getChecksum();
    return checksum;
}
