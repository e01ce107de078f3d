#include "fed/RtiFedElement.hh"

#include "fed/image/RtiFedDump.hh"

const RtiFedField<RtiFedElement> RtiFedElement::_fields[] = {
    {"_name", [](const RtiFedElement &e) { return std::string(e.nameText()); }}};

RtiFedElement::RtiFedElement(RtiBuffer &buffer) {
    RtiFedElement::restore(buffer);
}

RTI_bool RtiFedElement::save(RtiBuffer &buffer) {
    writeString(buffer, nameText());
    return RTI_true;
}

void RtiFedElement::restore(RtiBuffer &buffer) {
    RtiFedImageReader reader(buffer);
    restoreName(reader);
}

void RtiFedElement::dump(std::ostream &os) {
    dumpFields(_fields, *this, os);
}

void RtiFedElement::diff(RtiBuffer &buffer, std::ostream &os) {
    diffFields(_fields, *this, buffer, os);
}
