#include "benchmarks/Loads.hh"

#include <absl/container/flat_hash_map.h>
#include <pugixml.hpp>

#include <cstdint>
#include <stdexcept>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using Handle = std::uint32_t; // the position of a record, from 1; 0 for none
using Names = absl::flat_hash_map<std::string, Handle>;

struct Nothing {};

struct Delivery {
    Handle transportation, ordering, space;
};

struct Space {
    std::string name;
    std::vector<std::string> dimensions;
    Names dimensionHandles;
};

template <class ClassDelivery, class MemberDelivery>
struct Tree {
    struct Class : ClassDelivery {
        std::string name;
        Handle parent;
        Handle firstMember; // the handles of the others follow
        Names memberHandles;
    };
    struct Member : MemberDelivery {
        std::string name;
        Handle declaredIn;
    };

    bool hasMember(Handle handle, const std::string &name) const {
        for (; handle != 0; handle = classes[handle - 1].parent)
            if (classes[handle - 1].memberHandles.contains(name))
                return true;
        return false;
    }
    /// Calls `visit` for a class and its descendants, which follow it.
    template <class Visit>
    void forEachDerived(const std::string &name, Visit visit) {
        const Handle first = classHandles.at(name);
        visit(classes[first - 1]);
        for (Handle handle = first + 1; handle <= classes.size() && classes[handle - 1].parent >= first; ++handle)
            visit(classes[handle - 1]);
    }

    std::vector<Class> classes;
    std::vector<Member> members;
    Names classHandles;
};

template <class Records>
Handle lastHandle(const Records &records) {
    return static_cast<Handle>(records.size());
}

void enter(Names &names, const std::string &name, Handle handle) {
    if (!names.try_emplace(name, handle).second)
        throw std::runtime_error("duplicate name " + name);
}

class HashedModel : public Model {
public:
    explicit HashedModel(const std::string &fileName) {
        pugi::xml_document document;
        const pugi::xml_parse_result result = document.load_file(fileName.c_str());
        if (!result)
            throw std::runtime_error(fileName + ": " + result.description());
        const pugi::xml_node fed = document.child("fed");
        for (const pugi::xml_node &element : fed.child("spaces").children("space"))
            readSpace(element);
        for (const pugi::xml_node &element : fed.child("objects").children("class"))
            readClass(_objects, element, 0, "attribute");
        for (const pugi::xml_node &element : fed.child("interactions").children("class"))
            readClass(_interactions, element, 0, "parameter");
        setMomDefaultSpace();
    }

    void list(Listing &listing) const override {
        for (const Space &space : _spaces) {
            listing.declare("space", space.name, {_spaceHandles.at(space.name)});
            for (const std::string &dimension : space.dimensions)
                listing.declare("dimension", dimension, {space.dimensionHandles.at(dimension)});
        }
        for (const auto &node : _objects.classes) {
            listing.declare("class", node.name, {_objects.classHandles.at(node.name), node.parent});
            for (Handle i = 0; i < node.memberHandles.size(); ++i) {
                const auto &member = _objects.members[node.firstMember - 1 + i];
                listing.declare("attribute", member.name,
                                {node.memberHandles.at(member.name), member.transportation, member.ordering,
                                 member.space, member.declaredIn});
            }
        }
        for (const auto &node : _interactions.classes) {
            listing.declare("interaction", node.name,
                            {_interactions.classHandles.at(node.name), node.parent, node.transportation, node.ordering,
                             node.space});
            for (Handle i = 0; i < node.memberHandles.size(); ++i) {
                const std::string &name = _interactions.members[node.firstMember - 1 + i].name;
                listing.declare("parameter", name, {node.memberHandles.at(name)});
            }
        }
    }

private:
    void readSpace(const pugi::xml_node &element) {
        Space &space = addSpace(element.attribute("name").value());
        for (const pugi::xml_node &child : element.children("dimension")) {
            space.dimensions.emplace_back(child.attribute("name").value());
            enter(space.dimensionHandles, space.dimensions.back(), lastHandle(space.dimensions) - 1);
        }
    }

    template <class ClassDelivery, class MemberDelivery>
    void readClass(Tree<ClassDelivery, MemberDelivery> &tree, const pugi::xml_node &element, Handle parent,
                   const char *memberTag) {
        using Class = typename Tree<ClassDelivery, MemberDelivery>::Class;
        using Member = typename Tree<ClassDelivery, MemberDelivery>::Member;
        const Handle handle = lastHandle(tree.classes) + 1;
        pugi::xml_attribute last;
        std::string name = parent ? tree.classes[parent - 1].name + '.' : std::string();
        name += element.attribute("name", last).value();
        enter(tree.classHandles, name, handle);
        Class &added = tree.classes.emplace_back(Class{
            readDelivery<ClassDelivery>(element, last), std::move(name), parent, lastHandle(tree.members) + 1, {}});
        for (const pugi::xml_node &child : element.children(memberTag)) {
            last = pugi::xml_attribute();
            std::string memberName = child.attribute("name", last).value();
            if (tree.hasMember(parent, memberName))
                throw std::runtime_error(memberName + " is inherited");
            enter(added.memberHandles, memberName, lastHandle(tree.members) + 1);
            tree.members.push_back(Member{readDelivery<MemberDelivery>(child, last), std::move(memberName), handle});
        }
        for (const pugi::xml_node &child : element.children("class"))
            readClass(tree, child, handle, memberTag);
    }

    /// Searches from `last`, the attribute read last, since attributes are mostly read in their order.
    template <class Kind>
    Kind readDelivery(const pugi::xml_node &element, pugi::xml_attribute &last) const {
        if constexpr (std::is_same_v<Kind, Nothing>) {
            return {};
        } else {
            const auto oneOf = [&](const char *attribute, std::string_view second, std::string_view first) -> Handle {
                const std::string_view value = element.attribute(attribute, last).value();
                if (value != second && value != first)
                    throw std::runtime_error("unknown " + std::string(attribute));
                return value == second ? 2 : 1;
            };
            const Handle transportation = oneOf("transportation", "reliable", "best_effort");
            const Handle ordering = oneOf("ordering", "timestamp", "receive");
            const pugi::xml_attribute space = element.attribute("space", last);
            return {transportation, ordering, space ? _spaceHandles.at(space.value()) : 0};
        }
    }

    Space &addSpace(std::string name) {
        enter(_spaceHandles, name, lastHandle(_spaces) + 1);
        return _spaces.emplace_back(Space{std::move(name), {}, {}});
    }

    void setMomDefaultSpace() {
        addSpace("HLAMomDefaultSpace");
        const auto settle = [space = lastHandle(_spaces)](Delivery &delivery) {
            if (delivery.space == 0)
                delivery.space = space;
        };
        _objects.forEachDerived("ObjectRoot.Manager", [&](const auto &node) {
            for (Handle i = 0; i < node.memberHandles.size(); ++i)
                settle(_objects.members[node.firstMember - 1 + i]);
        });
        _interactions.forEachDerived("InteractionRoot.Manager", settle);
    }

    std::vector<Space> _spaces;
    Names _spaceHandles;
    Tree<Nothing, Delivery> _objects;
    Tree<Delivery, Nothing> _interactions;
};

} // namespace

std::unique_ptr<Model> loadIntoHashMaps(const std::string &xmlFile) {
    return std::make_unique<HashedModel>(xmlFile);
}
