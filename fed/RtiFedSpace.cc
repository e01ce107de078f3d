#include "fed/RtiFedSpace.hh"

#include <utility>

const RtiFedField<RtiFedSpace> RtiFedSpace::_fields[] = {
    {"_theHandle", [](const RtiFedSpace &s) { return fieldText(s._theHandle); }},
    {"_nextDimensionHandle", [](const RtiFedSpace &s) { return fieldText(s._nextDimensionHandle); }},
    {"size _dimensionNameMap", [](const RtiFedSpace &s) { return fieldText(s._dimensions.numNames()); }},
    {"size _dimensionHandleMap", [](const RtiFedSpace &s) { return fieldText(s._dimensions.numHandles()); }},
    {"size _dimensionVector", [](const RtiFedSpace &s) { return fieldText(s._dimensions.size()); }}};

RtiFedSpace::RtiFedSpace(RtiSpaceHandle handle, std::string name)
    : RtiFedElement(std::move(name)), _theHandle(handle) {}

RtiFedSpace::RtiFedSpace(RtiBuffer &buffer) {
    RtiFedSpace::restore(buffer);
}

RtiFedSpace::RtiFedSpace(RtiFedImageReader &reader) {
    restore(reader);
}

RtiDimensionHandle RtiFedSpace::createDimensionHandle() {
    return _nextDimensionHandle._value++;
}

RtiFedDimension *RtiFedSpace::addDimension(std::string name) {
    // A name with a lower-case letter is never found: callers rely on a space accepting "X" and then "x", which only
    // the handle finds.
    const RtiFedName hashed(name);
    if (_dimensions.findIfUpperCase(hashed))
        rtiFedRaise<RTI::RTIinternalError>("\"RtiFedSpace\", line 338: ");
    RtiFedDimension *added = _dimensions.add(_nextDimensionHandle, hashed);
    createDimensionHandle(); // last, so that a failed addition uses up no handle
    return added;
}

RtiDimensionHandle RtiFedSpace::getDimensionHandle(std::string_view name) const {
    if (const RtiFedDimension *dimension = _dimensions.find(name))
        return dimension->getHandle();
    rtiFedRaise<RTI::NameNotFound>("\"RtiFedSpace\", line 278: ");
}

std::string RtiFedSpace::getDimensionName(RtiDimensionHandle handle) const {
    if (const RtiFedDimension *dimension = _dimensions.find(handle))
        return dimension->getName();
    rtiFedRaise<RTI::DimensionNotDefined>("\"RtiFedSpace\", line 301: ");
}

RTI_bool RtiFedSpace::dimensionExists(std::string_view name) const {
    return _dimensions.findIfUpperCase(name) ? RTI_true : RTI_false;
}

RtiFedDimension *RtiFedSpace::find(RtiDimensionHandle handle) const {
    if (RtiFedDimension *dimension = _dimensions.find(handle))
        return dimension;
    rtiFedRaise<RTI::RTIinternalError>("\"RtiFedSpace\", line 372: ");
}

RtiFedDimension *RtiFedSpace::getDimension(unsigned long index) const {
    if (RtiFedDimension *dimension = _dimensions.at(index))
        return dimension;
    rtiFedRaise<RTI::RTIinternalError>("\"RtiFedSpace\", line 389: ");
}

unsigned long RtiFedSpace::getNumberOfDimensions() const {
    return static_cast<unsigned long>(_dimensions.size());
}

unsigned long RtiFedSpace::getChecksum() const {
    return checksumOf(nameText()) ^ checksumOf(_theHandle) ^ _dimensions.checksum();
}

RTI_bool RtiFedSpace::save(RtiBuffer &buffer) {
    RtiFedElement::save(buffer);
    _dimensions.save(buffer);
    writeHandle(buffer, _theHandle);
    writeHandle(buffer, _nextDimensionHandle);
    return RTI_true;
}

void RtiFedSpace::restore(RtiBuffer &buffer) {
    RtiFedImageReader reader(buffer);
    restore(reader);
}

void RtiFedSpace::restore(RtiFedImageReader &reader) {
    restoreName(reader);
    _dimensions.restore(reader, "dimensions");
    reader.read(_theHandle);
    const std::size_t byte = reader.byte();
    reader.read(_nextDimensionHandle);
    if (_dimensions.numHandles() < _dimensions.size())
        refuseImage(byte, "duplicate dimension handle in the space ", getName());
    for (const RtiFedDimension &dimension : _dimensions)
        if (!(dimension.getHandle() < _nextDimensionHandle))
            refuseImage(byte, "the next dimension handle of the space ", getName(), " is in use");
}

void RtiFedSpace::dump(std::ostream &os) {
    dumpFields(_fields, *this, os);
}

void RtiFedSpace::diff(RtiBuffer &buffer, std::ostream &os) {
    diffFields(_fields, *this, buffer, os);
}
