#include "fed/RtiFedObjectClass.hh"

#include <utility>

using Node = RtiFedObjectClass;

const RtiFedField<Node> RtiFedObjectClass::_fields[] = {
    {"_theHandle", [](const Node &c) { return fieldText(c.getHandle()); }},
    {"_parentObjectClassHandle", [](const Node &c) { return fieldText(c.getParentClassHandle()); }},
    {"size _subClassHandleToPtrMap", [](const Node &c) { return fieldText(c.numSubclasses()); }},
    {"size _attributeNameMap", [](const Node &c) { return fieldText(c._members.numNames()); }},
    {"size _attributeHandleMap", [](const Node &c) { return fieldText(c._members.numHandles()); }},
    {"size _attributeVector", [](const Node &c) { return fieldText(c._members.size()); }},
    {"size _childrenClasses", [](const Node &c) { return fieldText(c._childrenClasses.size()); }},
    {"size _allChildrenClasses", [](const Node &c) { return fieldText(c._allChildrenClasses.size()); }}};

/// The handles in the order of the image, where they follow all lists.
constexpr auto RtiFedObjectClass::imageHandles() {
    constexpr auto handles = std::make_tuple(&Node::_theHandle, &Node::_parentHandle);
    static_assert(kNumSharedValues + 1 + std::tuple_size_v<decltype(handles)> == _numImageValues);
    return handles;
}

RtiFedObjectClass::RtiFedObjectClass(RtiObjectClassHandle handle, std::string name, RtiFedObjectClass *parent)
    : RtiFedClassNode(handle, std::move(name), parent) {}

RtiFedObjectClass::RtiFedObjectClass(RtiBuffer &buffer) {
    RtiFedObjectClass::restore(buffer);
}

RtiFedObjectClass::RtiFedObjectClass(RtiObjectClassHandle handle, RtiFedLetters name, RtiFedObjectClass *parent)
    : RtiFedClassNode(handle, name, parent) {}

RtiFedObjectClass *RtiFedObjectClass::addObjectClass(RtiObjectClassHandle handle, std::string name) {
    return adopt(std::make_unique<RtiFedObjectClass>(handle, std::move(name), this));
}

RtiFedAttribute *RtiFedObjectClass::addAttribute(RtiAttributeHandle handle, std::string name,
                                                 RtiTransportationHandle transport, RtiOrderingHandle ordering,
                                                 RtiSpaceHandle space) {
    return addAttribute(handle, RtiFedName(name), transport, ordering, space);
}

RtiFedAttribute *RtiFedObjectClass::addAttribute(const RtiAttributeHandle &handle, const RtiFedName &name,
                                                 const RtiTransportationHandle &transport,
                                                 const RtiOrderingHandle &ordering, const RtiSpaceHandle &space) {
    if (memberExists(name))
        rtiFedRaise<RTI::ErrorReadingFED>("\"RtiFedObjectClass\", line 474:  Duplicate attribute ", name.text(),
                                          " in object class ", getName());
    if (memberIsInherited(name))
        rtiFedRaise<RTI::ErrorReadingFED>("\"RtiFedObjectClass\", line 485:  Duplicate attribute ", name.text(),
                                          " in object class hierarchy at class ", getName());
    dropMemberIndex(); // equivalent: only speed; what the index does not know is found by a walk
    return _members.addNew(handle, name, transport, ordering, space);
}

void RtiFedObjectClass::addChildClassToAll(RtiObjectClassHandle descendant) {
    for (RtiFedObjectClass *node = this; node; node = node->_parent)
        node->_allChildrenClasses.insert(descendant);
}

void RtiFedObjectClass::announceSubclass(RtiObjectClassHandle subclass) {
    addChildClass(subclass);
    addChildClassToAll(subclass);
}

void RtiFedObjectClass::reserveForSubclass(RtiObjectClassHandle subclass) {
    RtiFedClassNode::reserveForSubclass(subclass);
    for (RtiFedObjectClass *node = this; node; node = node->_parent)
        node->_allChildrenClasses.reserveFor(subclass);
}

void RtiFedObjectClass::setAvailableAttributes(std::unique_ptr<RtiAttributeHandleSet> available) {
    dropAvailableRuns();
    _availableAttributes.set(std::move(available));
}

void RtiFedObjectClass::setAvailableFedAttributes(std::unique_ptr<std::set<RtiFedAttribute *>> available) {
    _availableFedAttributes.set(std::move(available));
}

RtiAttributeHandleSet *
RtiFedObjectClass::publishAvailableAttributes(std::unique_ptr<RtiAttributeHandleSet> available) const {
    return _availableAttributes.publish(std::move(available));
}

std::set<RtiFedAttribute *> *
RtiFedObjectClass::publishAvailableFedAttributes(std::unique_ptr<std::set<RtiFedAttribute *>> available) const {
    return _availableFedAttributes.publish(std::move(available));
}

RtiAttributeHandle RtiFedObjectClass::getAttributeHandle(std::string_view name) const {
    const RtiFedAttribute *attribute = _members.find(name);
    return attribute ? attribute->getHandle() : RtiAttributeHandle(0);
}

RtiAttributeHandle RtiFedObjectClass::getAttributeHandleRecursive(std::string_view name) const {
    const RtiFedName hashed(name);
    for (const RtiFedObjectClass *node = this; node; node = node->_parent)
        if (const RtiFedAttribute *attribute = node->_members.find(hashed))
            return attribute->getHandle();
    return 0;
}

RTI_bool RtiFedObjectClass::attributeExists(std::string_view name) const {
    return memberExists(name) ? RTI_true : RTI_false;
}

RTI_bool RtiFedObjectClass::attributeIsInherited(std::string_view name) const {
    return memberIsInherited(name) ? RTI_true : RTI_false;
}

std::string RtiFedObjectClass::getAttributeName(RtiAttributeHandle handle) const {
    const RtiFedAttribute *attribute = _members.find(handle);
    return attribute ? attribute->getName() : std::string();
}

RtiFedAttribute *RtiFedObjectClass::find(RtiAttributeHandle handle) const {
    if (RtiFedAttribute *attribute = _members.find(handle))
        return attribute;
    rtiFedRaise<RTI::RTIinternalError>("\"RtiFedObjectClass\", line 390: ");
}

RtiFedAttribute *RtiFedObjectClass::findRecurse(RtiAttributeHandle handle) const {
    for (const RtiFedObjectClass *node = this; node; node = node->_parent)
        if (RtiFedAttribute *attribute = node->_members.find(handle))
            return attribute;
    return nullptr;
}

RtiFedAttribute *RtiFedObjectClass::getAttribute(unsigned long index) const {
    if (RtiFedAttribute *attribute = _members.at(index))
        return attribute;
    rtiFedRaise<RTI::RTIinternalError>("\"RtiFedObjectClass\", line 299: ");
}

unsigned long RtiFedObjectClass::getNumberOfAttributes() const {
    return static_cast<unsigned long>(_members.size());
}

RtiFedObjectClass *RtiFedObjectClass::getSubclass(unsigned long index) {
    if (index >= numSubclasses())
        rtiFedRaise<RTI::RTIinternalError>("\"RtiFedObjectClass\", line 283: ");
    // The index is a handle, not a position, and a miss leaves an empty entry: callers rely on both.
    return subclassOrEmpty(index);
}

unsigned long RtiFedObjectClass::getNumberOfSubclasses() const {
    return numSubclasses();
}

RTI_bool RtiFedObjectClass::hasDerrivedClass(RtiObjectClassHandle handle) const {
    return _allChildrenClasses.contains(handle) ? RTI_true : RTI_false;
}

unsigned long RtiFedObjectClass::getChecksum() const {
    return sharedChecksum();
}

RTI_bool RtiFedObjectClass::save(RtiBuffer &buffer) {
    saveShared(buffer);
    _allChildrenClasses.save(buffer);
    saveHandles(imageHandles(), *this, buffer);
    return RTI_true;
}

void RtiFedObjectClass::restore(RtiBuffer &buffer) {
    RtiFedImageReader reader(buffer);
    restoreWhole(reader, level());
}

void RtiFedObjectClass::restoreAfterName(RtiFedImageReader &reader) {
    setAvailableAttributes(nullptr); // first: the sets refer to attributes that the restore frees
    _availableFedAttributes.set(nullptr);
    restoreShared(reader);
    _allChildrenClasses.restore(reader);
    restoreHandles(imageHandles(), *this, reader);
}

void RtiFedObjectClass::dump(std::ostream &os) {
    dumpFields(_fields, *this, os);
}

void RtiFedObjectClass::diff(RtiBuffer &buffer, std::ostream &os) {
    diffFields(_fields, *this, buffer, os);
}
