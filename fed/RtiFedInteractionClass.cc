#include "fed/RtiFedInteractionClass.hh"

#include <utility>

using Node = RtiFedInteractionClass;

const RtiFedField<Node> RtiFedInteractionClass::_fields[] = {
    {"_theHandle", [](const Node &c) { return fieldText(c.getHandle()); }},
    {"_parentInteractionClassHandle", [](const Node &c) { return fieldText(c.getParentClassHandle()); }},
    {"_defaultTransport", [](const Node &c) { return fieldText(c.getDefaultTransport()); }},
    {"_defaultOrdering", [](const Node &c) { return fieldText(c.getDefaultOrdering()); }},
    {"_defaultSpace", [](const Node &c) { return fieldText(c.getDefaultSpace()); }},
    {"size _subClassHandleToPtrMap", [](const Node &c) { return fieldText(c.numSubclasses()); }},
    {"size _parameterHandlePtrMap", [](const Node &c) { return fieldText(c._members.numHandles()); }},
    {"size _parameterNamePtrMap", [](const Node &c) { return fieldText(c._members.numNames()); }},
    {"size _parameterVector", [](const Node &c) { return fieldText(c._members.size()); }},
    {"size _childrenClasses", [](const Node &c) { return fieldText(c._childrenClasses.size()); }}};

/// The handles in the order of the image, where they follow the part that both trees share.
constexpr auto RtiFedInteractionClass::imageHandles() {
    constexpr auto handles = std::make_tuple(&Node::_defaultTransport, &Node::_defaultOrdering, &Node::_defaultSpace,
                                             &Node::_theHandle, &Node::_parentHandle);
    static_assert(kNumSharedValues + std::tuple_size_v<decltype(handles)> == _numImageValues);
    return handles;
}

RtiFedInteractionClass::RtiFedInteractionClass(RtiInteractionClassHandle handle, std::string name,
                                               RtiFedInteractionClass *parent, RtiTransportationHandle transport,
                                               RtiOrderingHandle ordering, RtiSpaceHandle space)
    : RtiFedClassNode(handle, std::move(name), parent), _defaultTransport(transport), _defaultOrdering(ordering),
      _defaultSpace(space) {}

RtiFedInteractionClass::RtiFedInteractionClass(RtiInteractionClassHandle handle, RtiFedLetters name,
                                               RtiFedInteractionClass *parent, RtiTransportationHandle transport,
                                               RtiOrderingHandle ordering, RtiSpaceHandle space)
    : RtiFedClassNode(handle, name, parent), _defaultTransport(transport), _defaultOrdering(ordering),
      _defaultSpace(space) {}

RtiFedInteractionClass::RtiFedInteractionClass(RtiBuffer &buffer) {
    RtiFedInteractionClass::restore(buffer);
}

RtiFedInteractionClass *RtiFedInteractionClass::addInteractionClass(RtiInteractionClassHandle handle, std::string name,
                                                                    RtiTransportationHandle transport,
                                                                    RtiOrderingHandle ordering, RtiSpaceHandle space) {
    return adopt(std::make_unique<RtiFedInteractionClass>(handle, std::move(name), this, transport, ordering, space));
}

RtiFedParameter *RtiFedInteractionClass::addParameter(RtiParameterHandle handle, std::string name) {
    return addParameter(handle, RtiFedName(name));
}

RtiFedParameter *RtiFedInteractionClass::addParameter(const RtiParameterHandle &handle, const RtiFedName &name) {
    // The messages say attribute, although they are about a parameter: callers compare them.
    if (memberExists(name))
        rtiFedRaise<RTI::ErrorReadingFED>("\"RtiFedInteractionClass\", line 413:  Duplicate attribute ", name.text(),
                                          " in interaction class ", getName());
    if (memberIsInherited(name))
        rtiFedRaise<RTI::ErrorReadingFED>("\"RtiFedInteractionClass\", line 423:  Duplicate attribute ", name.text(),
                                          " in interaction class hierarchy at class ", getName());
    dropMemberIndex(); // equivalent: only speed; what the index does not know is found by a walk
    return _members.addNew(handle, name);
}

RtiParameterHandle RtiFedInteractionClass::getParameterHandle(std::string_view name) const {
    if (const RtiFedParameter *parameter = _members.find(name))
        return parameter->getHandle();
    rtiFedRaise<RTI::NameNotFound>("\"RtiFedInteractionClass\", line 202: ");
}

std::string RtiFedInteractionClass::getParameterName(RtiParameterHandle handle) const {
    if (const RtiFedParameter *parameter = _members.find(handle))
        return parameter->getName();
    rtiFedRaise<RTI::InteractionParameterNotDefined>("\"RtiFedInteractionClass\", line 225: ");
}

RTI_bool RtiFedInteractionClass::parameterExists(std::string_view name) const {
    return memberExists(name) ? RTI_true : RTI_false;
}

RTI_bool RtiFedInteractionClass::parameterIsInherited(std::string_view name) const {
    return memberIsInherited(name) ? RTI_true : RTI_false;
}

RtiFedParameter *RtiFedInteractionClass::findParameter(std::string_view name) const {
    return _members.find(name);
}

RtiFedParameter *RtiFedInteractionClass::find(RtiParameterHandle handle) const {
    return _members.find(handle);
}

RtiFedParameter *RtiFedInteractionClass::getParameter(unsigned long index) const {
    if (RtiFedParameter *parameter = _members.at(index))
        return parameter;
    rtiFedRaise<RTI::RTIinternalError>("\"RtiFedInteractionClass\", line 333: ");
}

unsigned long RtiFedInteractionClass::getNumberOfParameters() const {
    return static_cast<unsigned long>(_members.size());
}

unsigned long RtiFedInteractionClass::getChecksum() const {
    return sharedChecksum() ^ checksumOf(getDefaultTransport()) ^ checksumOf(getDefaultOrdering()) ^
           checksumOf(getDefaultSpace());
}

RTI_bool RtiFedInteractionClass::save(RtiBuffer &buffer) {
    saveShared(buffer);
    saveHandles(imageHandles(), *this, buffer);
    return RTI_true;
}

void RtiFedInteractionClass::restore(RtiBuffer &buffer) {
    RtiFedImageReader reader(buffer);
    restoreWhole(reader, level());
}

void RtiFedInteractionClass::restoreAfterName(RtiFedImageReader &reader) {
    restoreShared(reader);
    restoreHandles(imageHandles(), *this, reader);
}

void RtiFedInteractionClass::dump(std::ostream &os) {
    dumpFields(_fields, *this, os);
}

void RtiFedInteractionClass::diff(RtiBuffer &buffer, std::ostream &os) {
    diffFields(_fields, *this, buffer, os);
}
