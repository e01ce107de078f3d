#include "tool/model/Outline.hh"

#include "fed/RtiFedDatabase.hh"
#include "fed/storage/RtiFedHandleMap.hh"
#include "tool/model/Declarations.hh"
#include "tool/model/DeliveryWords.hh"

namespace {

/// Reads a database into an outline.
class OutlineReader {
public:
    OutlineReader(const RtiFedDatabase &database, const Declarations *declarations, Outline &outline)
        : _database(database), _declarations(declarations), _outline(outline) {}

    void read() {
        _outline.federation = _database.getFederateName();
        _outline.version = _database.getFederateVersion();
        readSpaces();
        readClasses(_database.getObjectClassHandleSet(), _outline.objects);
        readClasses(_database.getInteractionClassHandleSet(), _outline.interactions);
    }

private:
    std::optional<RtiFedPosition> place(Declarations::Record record) const {
        return _declarations ? _declarations->place(record) : std::nullopt;
    }
    std::vector<RtiFedPosition> laterPlaces(Declarations::Record record) const {
        return _declarations ? _declarations->laterPlaces(record) : std::vector<RtiFedPosition>();
    }

    /// An argument that the library does not know, as it is written, or the handle that an image has instead.
    template <class Handle>
    std::string unknown(Declarations::Record record, Declarations::Argument argument, const Handle &handle) const {
        if (_declarations)
            return _declarations->written(record, argument);
        return handle == 0 ? std::string() : '#' + std::to_string(handle._value);
    }

    template <class Handle>
    std::string word(const DeliveryWords &words, Declarations::Record record, Declarations::Argument argument,
                     const Handle &handle) const {
        const char *known = shortForm(words, static_cast<unsigned long>(handle._value));
        return known ? known : unknown(record, argument, handle);
    }

    Outline::Properties properties(Declarations::Record record, RtiTransportationHandle transportation,
                                   RtiOrderingHandle ordering, RtiSpaceHandle space) const {
        const RtiFedSpace *known = _database.find(space);
        return {word(kTransportations, record, Declarations::transportation, transportation),
                word(kOrderings, record, Declarations::ordering, ordering),
                known ? std::string(known->nameText()) : unknown(record, Declarations::space, space)};
    }

    Outline::Properties properties(const RtiFedObjectClass &) const { return {}; }
    Outline::Properties properties(const RtiFedInteractionClass &node) const {
        return properties(&node, node.getDefaultTransport(), node.getDefaultOrdering(), node.getDefaultSpace());
    }
    Outline::Properties properties(const RtiFedAttribute &attribute) const {
        return properties(&attribute, attribute.getTransport(), attribute.getOrdering(), attribute.getSpace());
    }
    Outline::Properties properties(const RtiFedParameter &) const { return {}; }

    void readSpaces() {
        for (const RtiSpaceHandle &handle : _database.getRoutingSpaceHandleSet()) {
            const RtiFedSpace *space = _database.find(handle);
            Outline::Space &shown = _outline.spaces.emplace_back(
                Outline::Space{std::string(space->nameText()), handle._value, place(space), {}});
            for (unsigned long i = 0; i < space->getNumberOfDimensions(); ++i) {
                const RtiFedDimension *dimension = space->getDimension(i);
                shown.dimensions.push_back(
                    {std::string(dimension->nameText()), dimension->getHandle()._value, {}, place(dimension)});
            }
        }
    }

    template <class Handle>
    void readClasses(const std::set<Handle> &handles, Outline::Classes &classes) const {
        RtiFedHandleMap<Handle, std::size_t> index;
        classes.reserve(handles.size()); // equivalent: only speed
        for (const Handle &handle : handles)
            readClass(*_database.find(handle), classes, index);
        for (std::size_t i = classes.size(); i-- > 0;)
            if (classes[i].parent != Outline::kNone)
                classes[classes[i].parent].numDescendants += 1 + classes[i].numDescendants;
    }

    /// Reads a class after its superclass, whose handle may be the greater one in an image; returns its index.
    template <class Node>
    std::size_t readClass(const Node &node, Outline::Classes &classes,
                          RtiFedHandleMap<typename Node::Handle, std::size_t> &index) const {
        if (const std::size_t *known = index.find(node.getHandle()))
            return *known;
        const std::size_t parent =
            node.getParentClass() ? readClass(*node.getParentClass(), classes, index) : Outline::kNone;
        const std::size_t added = classes.size();
        Outline::Class &shown = classes.emplace_back(Outline::Class{
            std::string(node.nameText()), node.getHandle()._value, properties(node), place(&node), parent, {}, 0, {}});
        shown.members.reserve(node.members().size()); // equivalent: only speed
        for (const auto &member : node.members())
            shown.members.push_back({std::string(member.nameText()), member.getHandle()._value, properties(member),
                                     place(&member), laterPlaces(&member)});
        if (parent != Outline::kNone)
            classes[parent].children.push_back(added);
        index.insert(node.getHandle(), added);
        return added;
    }

    const RtiFedDatabase &_database;
    const Declarations *_declarations; // null for an image
    Outline &_outline;
};

} // namespace

Outline::Outline(const RtiFedDatabase &database, const Declarations *declarations, bool isAccepted)
    : loads(isAccepted), checksum(loads ? database.getChecksum() : 0) {
    OutlineReader(database, declarations, *this).read();
}

std::vector<std::size_t> rootsOf(const Outline::Classes &classes) {
    std::vector<std::size_t> roots;
    for (std::size_t i = 0; i < classes.size(); ++i)
        if (classes[i].parent == Outline::kNone)
            roots.push_back(i);
    return roots;
}
