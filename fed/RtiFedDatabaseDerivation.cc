// The queries of RtiFedDatabase that answer with sets: all handles of a kind, derived classes, available members.

#include "fed/RtiFedDatabase.hh"

#include <memory>
#include <utility>

namespace {

/// Whether `available` contains all of `asked`. Call it with 0 as the last argument, which prefers the operation of our
/// own set; that of a host need not have one.
template <class Set>
auto containsAll(const Set &available, const Set &asked, int) -> decltype(available.containsAll(asked)) {
    return available.containsAll(asked);
}
// equivalent in this function: it is compiled only for a host's set, as the test `host` does
template <class Set>
bool containsAll(const Set &available, const Set &asked, long) {
    for (unsigned long i = 0; i < asked.size(); ++i)
        if (!available.isMember(asked.getHandle(i)))
            return false;
    return true;
}

/// Whether `holds` is true of the first and the last handle of each run of `set`. Called like containsAll. Of a host's
/// set, each handle is a run.
template <class Set, class Holds>
auto allRuns(const Set &set, Holds holds, int) -> decltype(set.allRuns(holds)) {
    return set.allRuns(holds);
}
// equivalent in this function: as above
template <class Set, class Holds>
bool allRuns(const Set &set, Holds holds, long) {
    bool all = true;
    for (unsigned long i = 0; i < set.size(); ++i) {
        const unsigned long handle = set.getHandle(i)._value;
        all = holds(handle, handle) && all;
    }
    return all;
}

} // namespace

std::set<RtiObjectClassHandle> RtiFedDatabase::getObjectClassHandleSet() const {
    return _objectClasses.handles();
}

std::set<RtiAttributeHandle> RtiFedDatabase::getAttributeHandleSet() const {
    std::set<RtiAttributeHandle> attributes;
    _objectClasses.forEach([&attributes](const RtiFedObjectClass &objectClass) {
        for (const RtiFedAttribute &attribute : objectClass.members())
            attributes.insert(attributes.end(), attribute.getHandle());
    });
    return attributes;
}

std::set<RtiInteractionClassHandle> RtiFedDatabase::getInteractionClassHandleSet() const {
    return _interactionClasses.handles();
}

std::set<RtiSpaceHandle> RtiFedDatabase::getRoutingSpaceHandleSet() const {
    std::set<RtiSpaceHandle> spaces;
    _spaceHandleMap.forEach([&spaces](const RtiSpaceHandle &handle, const auto &) { spaces.insert(handle); });
    return spaces;
}

RtiObjectClassHandle RtiFedDatabase::getRealObjectClassHandle(RtiObjectClassHandle,
                                                              RtiAttributeHandle attribute) const {
    const unsigned long *declaring = _attributeObjectClassMap.find(attribute);
    return declaring ? *declaring : 0;
}

void RtiFedDatabase::getDerivedObjectClassHandleSet(RtiObjectClassHandle objectClass,
                                                    std::set<RtiObjectClassHandle> &derived) const {
    _objectClasses.forEachDerived(find(objectClass),
                                  [&derived](const RtiFedObjectClass &node) { derived.insert(node.getHandle()); });
}

void RtiFedDatabase::getDerivedInteractionClassHandleSet(RtiInteractionClassHandle interactionClass,
                                                         std::set<RtiInteractionClassHandle> &derived) const {
    _interactionClasses.forEachDerived(
        find(interactionClass), [&derived](const RtiFedInteractionClass &node) { derived.insert(node.getHandle()); });
}

void RtiFedDatabase::getChildlessDerivedObjectClassHandleSet(RtiObjectClassHandle objectClass,
                                                             std::set<RtiObjectClassHandle> &derived) const {
    const RtiFedObjectClass *node = find(objectClass);
    if (!node)
        return;
    if (node->children().size() == 0)
        derived.insert(objectClass);
    // Not only the leaves, despite the name: callers rely on getting the inner classes too.
    _objectClasses.forEachDerived(node, [&](const RtiFedObjectClass &descendant) {
        if (&descendant != node)
            derived.insert(descendant.getHandle());
    });
}

std::set<RtiParameterHandle>
RtiFedDatabase::getAvailableInteractionClassHandles(RtiInteractionClassHandle interactionClass) const {
    std::set<RtiParameterHandle> parameters;
    _interactionClasses.forEachAncestor(interactionClass, [&parameters](const RtiFedInteractionClass &node) {
        for (const RtiFedParameter &parameter : node.members())
            parameters.insert(parameter.getHandle());
    });
    return parameters;
}

const RtiFedObjectClass &RtiFedDatabase::requireDefined(const RtiFedObjectClass *objectClass) {
    if (objectClass)
        return *objectClass;
    rtiFedRaise<RTI::ObjectClassNotDefined>("\"RtiFedDatabaseDerivation\", line 74: no such object class");
}

template <class Visit>
void RtiFedDatabase::forEachAvailable(const RtiFedObjectClass &objectClass, Visit visit) const {
    for (const RtiFedObjectClass *node = &objectClass; node; node = find(node->getParentClassHandle()))
        for (RtiFedAttribute &attribute : node->members())
            visit(&attribute);
}

std::set<RtiFedAttribute *> *RtiFedDatabase::getAvailableFedAttributes(const RtiFedObjectClass *objectClass,
                                                                       int) const {
    const RtiFedObjectClass &known = requireDefined(objectClass);
    if (auto *ready = known.getAvailableFedAttributes())
        return ready;
    auto available = std::make_unique<std::set<RtiFedAttribute *>>();
    forEachAvailable(known, [&available](RtiFedAttribute *attribute) { available->insert(attribute); });
    return known.publishAvailableFedAttributes(std::move(available));
}

std::set<RtiFedAttribute *> *RtiFedDatabase::getAvailableFedAttributes(const RtiObjectClassHandle &objectClass,
                                                                       int ignored) const {
    return getAvailableFedAttributes(find(objectClass), ignored);
}

RtiAttributeHandleSet *RtiFedDatabase::getAvailableAttributeHandles(const RtiFedObjectClass *objectClass, int) const {
    const RtiFedObjectClass &known = requireDefined(objectClass);
    if (auto *ready = known.getAvailableAttributes())
        return ready;
    std::set<RtiAttributeHandle> ascending; // the fastest order for add
    forEachAvailable(known,
                     [&ascending](const RtiFedAttribute *attribute) { ascending.insert(attribute->getHandle()); });
    auto available = std::make_unique<RtiAttributeHandleSet>(known.getNumberOfAttributes());
    for (const RtiAttributeHandle &attribute : ascending)
        available->add(attribute);
    return known.publishAvailableAttributes(std::move(available));
}

RtiAttributeHandleSet *RtiFedDatabase::getAvailableAttributeHandles(const RtiObjectClassHandle &objectClass,
                                                                    int ignored) const {
    return getAvailableAttributeHandles(find(objectClass), ignored);
}

RTI_bool RtiFedDatabase::verifyAvailableAttributes(const RtiObjectClassHandle &objectClass,
                                                   RtiAttributeHandleSet attributes) const {
    const RtiFedAvailableRuns *indexed = _objectClasses.indexes().available.get();
    const RtiFedAvailableRuns::Runs *runs = indexed ? indexed->find(objectClass._value) : nullptr;
    if (!runs)
        return verifyInSet(objectClass, attributes);
    const auto contained = [runs](unsigned long first, unsigned long last) { return runs->contain(first, last); };
    return allRuns(attributes, contained, 0) ? RTI_true : RTI_false;
}

/// The same by the set of the class, whose runs are entered into the index, if there is one, for the next check.
RTI_bool RtiFedDatabase::verifyInSet(const RtiObjectClassHandle &objectClass,
                                     const RtiAttributeHandleSet &attributes) const {
    const RtiAttributeHandleSet &available = *getAvailableAttributeHandles(objectClass, 0);
    if (const RtiFedAvailableRuns *indexed =
            _objectClasses.indexes().available.checked(_objectClasses.numHandles(), _objectClasses.greatest()._value))
        indexed->enter(objectClass._value, [&available](auto enterRun) {
            const auto enter = [&enterRun](unsigned long first, unsigned long last) {
                enterRun(first, last);
                return true;
            };
            allRuns(available, enter, 0);
        });
    return containsAll(available, attributes, 0) ? RTI_true : RTI_false;
}
