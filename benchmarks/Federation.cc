#include "benchmarks/Federation.hh"

#include "benchmarks/Random.hh"
#include "fed/RtiFedDatabase.hh"

#include <algorithm>
#include <cctype>
#include <unordered_set>

namespace {

using Delivery = Federation::Delivery;
using Member = Federation::Member;
using Class = Federation::Class;

constexpr const char *kWords[] = {
    "Acoustic", "Air",      "Altitude", "Ammunition", "Antenna", "Area",     "Azimuth",  "Battery", "Beam",   "Bridge",
    "Cargo",    "Code",     "Command",  "Contact",    "Control", "Current",  "Damage",   "Decoy",   "Depth",  "Draught",
    "Engine",   "Entity",   "Event",    "Fire",       "Force",   "Fuel",     "Ground",   "Heading", "Hull",   "Index",
    "Jammer",   "Latitude", "Launch",   "Level",      "Link",    "Marking",  "Mass",     "Mission", "Mode",   "Motion",
    "Network",  "Node",     "Orbit",    "Order",      "Phase",   "Platform", "Position", "Power",   "Query",  "Radar",
    "Range",    "Rate",     "Sensor",   "Signal",     "Sonar",   "Speed",    "State",    "Surface", "Target", "Team",
    "Track",    "Unit",     "Vehicle",  "Weapon"};

std::string lower(std::string text) {
    for (char &c : text)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

std::string makeName(Random &random, std::size_t length) {
    std::string name;
    while (name.size() < length)
        name += kWords[random.below(std::size(kWords))];
    return name.substr(0, length);
}

Delivery makeDelivery(Random &random, const std::vector<Federation::Space> &spaces) {
    const bool inSpace = random.below(3) == 0, isReliable = random.below(2) == 0, isTimed = random.below(2) == 0;
    return {isReliable ? "reliable" : "best_effort", isTimed ? "timestamp" : "receive",
            inSpace ? spaces[random.below(spaces.size())].name : ""};
}

/// The path of names from the root to the class declared last.
class Path {
public:
    /// Returns the level of the next class: slightly more often one deeper than back up, sometimes directly below the
    /// root.
    unsigned nextLevel(Random &random) const {
        const auto deepest = static_cast<unsigned>(_levels.size());
        if (deepest < 2 || random.below(64) == 0)
            return 2;
        const bool hasRoom = deepest < 8 && _levels.back().fullName.size() + 1 + kShortest <= kLongestFullName;
        if (hasRoom && (deepest == 2 || random.below(5) < 3))
            return deepest + 1;
        return static_cast<unsigned>(random.between(3, std::max(deepest, 3u)));
    }
    std::string makeClassName(Random &random, unsigned level) {
        std::string name;
        do {
            const std::size_t room = kLongestFullName - fullNameAt(level - 1).size() - 1;
            const std::size_t length = level == 2   ? random.between(7, 11)
                                       : level == 3 ? random.between(11, 15)
                                                    : random.between(kShortest, 6);
            name = makeName(random, std::min(length, room));
        } while (!enter(level, name));
        return name;
    }
    /// Enters a class of this level; false if the name is in use.
    bool enter(unsigned level, const std::string &name) {
        std::string fullName = level == 1 ? name : fullNameAt(level - 1) + "." + name;
        if (!_fullNames.insert(lower(fullName)).second)
            return false;
        _levels.resize(level - 1);
        _levels.push_back({std::move(fullName), {}});
        return true;
    }
    void returnToRoot() { _levels.resize(1); }
    /// Declares a member in the class; false if the class has or inherits one of that name.
    bool declare(const std::string &memberName) {
        const std::string name = lower(memberName);
        for (const Level &level : _levels)
            if (std::find(level.members.begin(), level.members.end(), name) != level.members.end())
                return false;
        _levels.back().members.push_back(name);
        return true;
    }

private:
    static constexpr std::size_t kShortest = 3, kLongestFullName = 60;

    struct Level {
        std::string fullName;
        std::vector<std::string> members;
    };
    const std::string &fullNameAt(unsigned level) const { return _levels[level - 1].fullName; }

    std::vector<Level> _levels;
    std::unordered_set<std::string> _fullNames; // in lower case, as are the members
};

/// Adds classes, and members spread over them, below the existing root.
void grow(std::vector<Class> &classes, Random &random, std::size_t numClasses, std::size_t numMembers,
          const std::vector<Federation::Space> &spaces) {
    Path path;
    for (const Class &c : classes) {
        path.enter(c.level, c.name);
        for (const Member &member : c.members)
            path.declare(member.name);
    }
    path.returnToRoot();
    std::vector<unsigned> membersOf(numClasses);
    for (std::size_t i = 0; i < numMembers; ++i)
        ++membersOf[random.below(numClasses)];
    for (unsigned left : membersOf) {
        const unsigned level = path.nextLevel(random);
        Class added{path.makeClassName(random, level), level, makeDelivery(random, spaces), {}};
        while (left > 0) {
            const std::string name = makeName(random, random.between(6, 22));
            if (path.declare(name)) {
                added.members.push_back({name, makeDelivery(random, spaces)});
                --left;
            }
        }
        classes.push_back(std::move(added));
    }
}

Class classOf(const std::string &fullName) {
    const auto level = static_cast<unsigned>(std::count(fullName.begin(), fullName.end(), '.')) + 1;
    return {fullName.substr(fullName.rfind('.') + 1), level, {}, {}};
}

template <class Transportation, class Ordering>
Delivery deliveryOf(const Transportation &transportation, const Ordering &ordering) {
    return {transportation == 2 ? "reliable" : "best_effort", ordering == 2 ? "timestamp" : "receive", ""};
}

std::size_t numDeclarationsIn(const std::vector<Class> &classes) {
    std::size_t count = classes.size();
    for (const Class &c : classes)
        count += c.members.size();
    return count;
}

std::string indent(const Class &c, unsigned more) {
    return std::string(2 * (c.level + more), ' ');
}

} // namespace

std::size_t Federation::numDeclarations() const {
    std::size_t count = spaces.size() + numDeclarationsIn(objects) + numDeclarationsIn(interactions);
    for (const Space &space : spaces)
        count += space.dimensions.size();
    return count;
}

Federation generateFederation(const RtiFedDatabase &start, std::size_t declarations) {
    Federation federation;
    for (unsigned long handle = 1; handle <= start.numObjectClasses(); ++handle) {
        const RtiFedObjectClass &node = *start.find(RtiObjectClassHandle(handle));
        Class &added = federation.objects.emplace_back(classOf(node.getName()));
        for (unsigned long i = 0; i < node.getNumberOfAttributes(); ++i) {
            const RtiFedAttribute &attribute = *node.getAttribute(i);
            added.members.push_back(
                {attribute.getName(), deliveryOf(attribute.getTransport(), attribute.getOrdering())});
        }
    }
    for (unsigned long handle = 1; handle <= start.numInteractionClasses(); ++handle) {
        const RtiFedInteractionClass &node = *start.find(RtiInteractionClassHandle(handle));
        Class &added = federation.interactions.emplace_back(classOf(node.getName()));
        added.delivery = deliveryOf(node.getDefaultTransport(), node.getDefaultOrdering());
        for (unsigned long i = 0; i < node.getNumberOfParameters(); ++i)
            added.members.push_back({node.getParameter(i)->getName(), {}});
    }

    for (const char *name : {"SeaArea", "AirSpace", "RadioBand", "GroundSector"})
        federation.spaces.push_back({name, {"Longitude", "Latitude", "Height"}});
    Random random(declarations);
    const std::size_t percent = declarations / 100;
    grow(federation.objects, random, 15 * percent, 65 * percent, federation.spaces);
    grow(federation.interactions, random, 5 * percent, 15 * percent, federation.spaces);
    return federation;
}

std::string toFed(const Federation &federation) {
    std::string text = "(FED\n  (Federation Benchmark)\n  (FEDversion v1.3)\n  (spaces\n";
    for (const Federation::Space &space : federation.spaces) {
        text += "    (space " + space.name + "\n";
        for (const std::string &dimension : space.dimensions)
            text += "      (dimension " + dimension + ")\n";
        text += "    )\n";
    }
    const auto words = [](const Delivery &delivery) {
        return " " + delivery.transportation + " " + delivery.ordering +
               (delivery.space.empty() ? "" : " " + delivery.space);
    };
    const auto close = [&text](const Class &c) { text += indent(c, 1) + ")\n"; };
    text += "  )\n  (objects\n";
    forEachLine(
        federation.objects, [&](const Class &c) { text += indent(c, 1) + "(class " + c.name + "\n"; },
        [&](const Class &c, const Member &m) {
            text += indent(c, 2) + "(attribute " + m.name + words(m.delivery) + ")\n";
        },
        close);
    text += "  )\n  (interactions\n";
    forEachLine(
        federation.interactions,
        [&](const Class &c) { text += indent(c, 1) + "(class " + c.name + words(c.delivery) + "\n"; },
        [&](const Class &c, const Member &m) { text += indent(c, 2) + "(parameter " + m.name + ")\n"; }, close);
    return text + "  )\n)\n";
}

std::string toXml(const Federation &federation) {
    std::string text = "<?xml version=\"1.0\"?>\n<fed federation=\"Benchmark\" version=\"v1.3\">\n  <spaces>\n";
    for (const Federation::Space &space : federation.spaces) {
        text += "    <space name=\"" + space.name + "\">\n";
        for (const std::string &dimension : space.dimensions)
            text += "      <dimension name=\"" + dimension + "\"/>\n";
        text += "    </space>\n";
    }
    const auto words = [](const Delivery &delivery) {
        return " transportation=\"" + delivery.transportation + "\" ordering=\"" + delivery.ordering + "\"" +
               (delivery.space.empty() ? "" : " space=\"" + delivery.space + "\"");
    };
    const auto close = [&text](const Class &c) { text += indent(c, 1) + "</class>\n"; };
    text += "  </spaces>\n  <objects>\n";
    forEachLine(
        federation.objects, [&](const Class &c) { text += indent(c, 1) + "<class name=\"" + c.name + "\">\n"; },
        [&](const Class &c, const Member &m) {
            text += indent(c, 2) + "<attribute name=\"" + m.name + "\"" + words(m.delivery) + "/>\n";
        },
        close);
    text += "  </objects>\n  <interactions>\n";
    forEachLine(
        federation.interactions,
        [&](const Class &c) { text += indent(c, 1) + "<class name=\"" + c.name + "\"" + words(c.delivery) + ">\n"; },
        [&](const Class &c, const Member &m) { text += indent(c, 2) + "<parameter name=\"" + m.name + "\"/>\n"; },
        close);
    return text + "  </interactions>\n</fed>\n";
}

std::string toProto(const Federation &federation) {
    std::string text = "syntax = \"proto2\";\n";
    for (const Federation::Space &space : federation.spaces) {
        text += "message " + space.name + " {\n";
        int number = 0;
        for (const std::string &dimension : space.dimensions)
            text += "  optional int32 " + dimension + "_ = " + std::to_string(++number) + ";\n";
        text += "}\n";
    }
    int number = 0;
    const auto open = [&](const Class &c) {
        number = 0;
        text += indent(c, 0) + "message " + c.name + " {\n";
    };
    // The underscore distinguishes a field from a message of the same name.
    const auto member = [&](const Class &c, const Member &m) {
        number += 2;
        text += indent(c, 1) + (m.delivery.transportation == "best_effort" ? "repeated " : "optional ") +
                (m.delivery.space.empty() ? "int32" : "." + m.delivery.space) + " " + m.name +
                "_ = " + std::to_string(number + (m.delivery.ordering == "timestamp" ? 1 : 0)) + ";\n";
    };
    const auto close = [&](const Class &c) { text += indent(c, 0) + "}\n"; };
    forEachLine(federation.objects, open, member, close);
    forEachLine(federation.interactions, open, member, close);
    return text;
}
