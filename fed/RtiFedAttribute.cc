#include "fed/RtiFedAttribute.hh"

#include "fed/image/RtiFedFields.hh"

// The doubled comma of three separators is part of the text that others read.
const RtiFedField<RtiFedAttribute> RtiFedAttribute::_fields[] = {
    {"_theHandle", [](const RtiFedAttribute &a) { return fieldText(a.getHandle()); }},
    {"_defaultTransport", [](const RtiFedAttribute &a) { return fieldText(a.getTransport()); }, "'',, "},
    {"_defaultOrdering", [](const RtiFedAttribute &a) { return fieldText(a.getOrdering()); }, "'',, "},
    {"_defaultSpace", [](const RtiFedAttribute &a) { return fieldText(a.getSpace()); }, "'',, "}};

// The handle stands last in the image, though first in the dump: processes exchange images of this order.
template <class Attribute, class Visit>
void RtiFedAttribute::visitImage(Attribute &attribute, Visit visit) {
    visit(attribute._defaultTransport);
    visit(attribute._defaultOrdering);
    visit(attribute._defaultSpace);
    visit(attribute._theHandle);
}

RtiFedAttribute::RtiFedAttribute(RtiBuffer &buffer) : RtiFedElement(buffer) {
    visitImage(*this, [&buffer](auto &field) { field.restore(buffer); });
}

RTI_bool RtiFedAttribute::save(RtiBuffer &buffer) const {
    RtiFedElement::save(buffer);
    visitImage(*this, [&buffer](const auto &field) { field.save(buffer); });
    return RTI_true;
}

void RtiFedAttribute::restore(RtiBuffer &buffer) {
    RtiFedElement::restore(buffer);
    visitImage(*this, [&buffer](auto &field) { field.restore(buffer); });
}

void RtiFedAttribute::dump(std::ostream &os) const {
    dumpFields(_fields, *this, os);
}

void RtiFedAttribute::diff(RtiBuffer &buffer, std::ostream &os) const {
    diffFields(_fields, *this, buffer, os);
}
