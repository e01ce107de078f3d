#include "fed/RtiFedElement.hh"

#include "fed/image/RtiFedDump.hh"
#include "infrastructure/RtiStringUtility.hh"

const RtiFedField<RtiFedElement> RtiFedElement::_fields[] = {
    {"_name", [](const RtiFedElement &e) { return fieldText(e._name); }}};

RtiFedElement::RtiFedElement(RtiBuffer &buffer) : _name(RtiStringUtility::getString(buffer)) {}

RTI_bool RtiFedElement::save(RtiBuffer &buffer) {
    RtiStringUtility::putString(_name, buffer);
    return RTI_true;
}

void RtiFedElement::restore(RtiBuffer &buffer) {
    _name = RtiStringUtility::getString(buffer);
}

void RtiFedElement::dump(std::ostream &os) {
    dumpFields(_fields, *this, os);
}

void RtiFedElement::diff(RtiBuffer &buffer, std::ostream &os) {
    diffFields(_fields, *this, buffer, os);
}
