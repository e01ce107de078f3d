#include "tool/Outline.hh"

#include "fed/RtiFedDatabase.hh"
#include "tool/Checker.hh"
#include "tool/Model.hh"

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

    /// `known` returns a name, or throws if there is none.
    template <class Known, class Handle>
    std::string nameOr(Known known, const void *record, std::size_t argument, const Handle &handle) const {
        try {
            return known();
        } catch (const RTI::Exception &) {
            return unknown(record, argument, handle);
        }
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
        return {nameOr([&] { return _database.getTransportationName(transportation); }, record, 1, transportation),
                nameOr([&] { return _database.getOrderingName(ordering); }, record, 2, ordering),
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
    void readClasses(const std::set<Handle> &handles, std::vector<Outline::Class> &classes) const {
        std::unordered_map<unsigned long, std::size_t> index;
        for (const Handle &handle : handles) {
            const auto &node = *_database.find(handle);
            Outline::Class shown;
            shown.name = node.getName();
            shown.handle = handle._value;
            shown.properties = properties(node);
            shown.place = place(&node);
            const auto parent = index.find(node.getParentClassHandle()._value);
            if (parent != index.end()) {
                shown.parent = parent->second;
                classes[parent->second].children.push_back(classes.size());
            }
            for (const auto &member : node.members())
                shown.members.push_back(
                    {member.getName(), member.getHandle()._value, properties(member), place(&member)});
            index.emplace(shown.handle, classes.size());
            classes.push_back(std::move(shown));
        }
    }

    const RtiFedDatabase &_database;
    const Checker *_text;
    Outline &_outline;
};

} // namespace

Outline::Outline(const Input &input) {
    if (input.isImage()) {
        OutlineReader(*restoreImage(input.contents), nullptr, *this).read();
        loads = true;
    } else {
        const Checker text(input.contents);
        OutlineReader(text.database(), &text, *this).read();
        loads = text.findsNoError();
    }
}
