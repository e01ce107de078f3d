#include "fed/RtiFedAttribute.hh"

#include "fed/image/RtiFedDump.hh"
#include "fed/image/RtiFedImage.hh"

// Readers of the text rely on the doubled comma of three separators.
const RtiFedField<RtiFedAttribute> RtiFedAttribute::_fields[] = {
    {"_theHandle", [](const RtiFedAttribute &a) { return fieldText(a.getHandle()); }},
    {"_defaultTransport", [](const RtiFedAttribute &a) { return fieldText(a.getTransport()); }, "'',, "},
    {"_defaultOrdering", [](const RtiFedAttribute &a) { return fieldText(a.getOrdering()); }, "'',, "},
    {"_defaultSpace", [](const RtiFedAttribute &a) { return fieldText(a.getSpace()); }, "'',, "}};

/// The handles in the order of the image. The attribute's own handle is last, although it is first in the dump:
/// processes exchange images of this order.
constexpr auto RtiFedAttribute::imageHandles() {
    using A = RtiFedAttribute;
    constexpr auto handles =
        std::make_tuple(&A::_defaultTransport, &A::_defaultOrdering, &A::_defaultSpace, &A::_theHandle);
    static_assert(std::tuple_size_v<decltype(handles)> == std::size(_fields));
    static_assert(std::tuple_size_v<decltype(handles)> + 1 == _numImageValues);
    return handles;
}

RtiFedAttribute::RtiFedAttribute(RtiBuffer &buffer) {
    RtiFedAttribute::restore(buffer);
}

RtiFedAttribute::RtiFedAttribute(RtiFedLetters name, RtiFedImageReader &reader) : RtiFedElement(name) {
    restoreHandles(imageHandles(), *this, reader);
}

RTI_bool RtiFedAttribute::save(RtiBuffer &buffer) {
    RtiFedElement::save(buffer);
    saveHandles(imageHandles(), *this, buffer);
    return RTI_true;
}

void RtiFedAttribute::restore(RtiBuffer &buffer) {
    RtiFedImageReader reader(buffer);
    restoreName(reader);
    restoreHandles(imageHandles(), *this, reader);
}

void RtiFedAttribute::dump(std::ostream &os) {
    dumpFields(_fields, *this, os);
}

void RtiFedAttribute::diff(RtiBuffer &buffer, std::ostream &os) {
    diffFields(_fields, *this, buffer, os);
}
