#include "tool/model/Outline.hh"

#include "fed/RtiFedDatabase.hh"
#include "tool/check/Checker.hh"
#include "tool/model/Model.hh"

#include <unordered_map>

namespace {

/// Reads a database into an outline. `text` is what it was built from, null if that was an image.
class OutlineReader {
public:
    OutlineReader(const RtiFedDatabase &database, const Checker *text, Outline &outline)
        : _database(database), _text(text), _outline(outline) {}

    void read() {
        _outline.federation = _database.getFederateName();
        _outline.version = _database.getFederateVersion();
        readSpaces();
        readClasses(_database.getObjectClassHandleSet(), _outline.objects);
        readClasses(_database.getInteractionClassHandleSet(), _outline.interactions);
    }

private:
    std::optional<RtiFedPosition> place(const void *record) const {
        return _text ? _text->place(record) : std::nullopt;
    }
    std::vector<RtiFedPosition> laterPlaces(const void *record) const {
        return _text ? _text->laterPlaces(record) : std::vector<RtiFedPosition>();
    }

    /// What stands as this argument in the text, or the handle that an image has in its place.
    template <class Handle>
    std::string unknown(const void *record, std::size_t argument, const Handle &handle) const {
        if (_text)
            return _text->written(record, argument);
        return handle == 0 ? std::string() : '#' + std::to_string(handle._value);
    }

    Outline::Properties properties(const void *record, RtiTransportationHandle transportation,
                                   RtiOrderingHandle ordering, RtiSpaceHandle space) const {
        const RtiFedSpace *known = _database.find(space);
        return {transportation == 2   ? "reliable"
                : transportation == 1 ? "best_effort"
                                      : unknown(record, 1, transportation),
                ordering == 2   ? "timestamp"
                : ordering == 1 ? "receive"
                                : unknown(record, 2, ordering),
                known ? known->getName() : unknown(record, 3, space)};
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
            Outline::Space &shown = _outline.spaces.emplace_back();
            shown.name = space->getName();
            shown.handle = handle._value;
            shown.place = place(space);
            for (unsigned long i = 0; i < space->getNumberOfDimensions(); ++i) {
                const RtiFedDimension *dimension = space->getDimension(i);
                shown.dimensions.push_back({dimension->getName(), dimension->getHandle()._value, {}, place(dimension)});
            }
        }
    }

    template <class Handle>
    void readClasses(const std::set<Handle> &handles, Outline::Classes &classes) const {
        std::unordered_map<const void *, std::size_t> index;
        classes.reserve(handles.size());
        for (const Handle &handle : handles)
            readClass(*_database.find(handle), classes, index);
        for (std::size_t i = classes.size(); i-- > 0;)
            if (classes[i].parent != Outline::kNone)
                classes[classes[i].parent].numBelow += 1 + classes[i].numBelow;
    }

    /// Reads a class behind its parent, whose handle may be the greater one in an image; returns its index.
    template <class Node>
    std::size_t readClass(const Node &node, Outline::Classes &classes,
                          std::unordered_map<const void *, std::size_t> &index) const {
        const auto known = index.find(&node);
        if (known != index.end())
            return known->second;
        const std::size_t parent =
            node.getParentClass() ? readClass(*node.getParentClass(), classes, index) : Outline::kNone;
        const std::size_t added = classes.size();
        Outline::Class &shown = classes.emplace_back();
        shown.name = node.getName();
        shown.handle = node.getHandle()._value;
        shown.properties = properties(node);
        shown.place = place(&node);
        shown.parent = parent;
        for (const auto &member : node.members())
            shown.members.push_back({member.getName(), member.getHandle()._value, properties(member), place(&member),
                                     laterPlaces(&member)});
        if (parent != Outline::kNone)
            classes[parent].children.push_back(added);
        index.emplace(&node, added);
        return added;
    }

    const RtiFedDatabase &_database;
    const Checker *_text;
    Outline &_outline;
};

} // namespace

Outline::Outline(const Input &input) {
    if (input.isImage()) {
        const auto database = restoreImage(input.contents);
        OutlineReader(*database, nullptr, *this).read();
        loads = true;
        checksum = database->getChecksum();
    } else {
        const Checker text(input.contents);
        OutlineReader(text.database(), &text, *this).read();
        loads = text.findsNoError();
        checksum = loads ? text.database().getChecksum() : 0;
        complete = loads || text.keepsAll();
    }
}

std::unique_ptr<Outline> outlineToShow(const Input &input, std::ostream &complaints) {
    try {
        auto outline = std::make_unique<Outline>(input);
        if (!outline->loads)
            complaints << input.name
                       << ": the library refuses this file, rtifed check says why; shown is what can be understood\n";
        return outline;
    } catch (const RTI::Exception &refused) {
        complaints << input.name << ": error: " << RtiFedParser::printable(refused._reason, 300) << '\n';
        return nullptr;
    }
}
