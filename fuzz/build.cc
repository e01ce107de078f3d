// A sequence of building calls, two bytes each, beside a plain model that is compared after every call.

#include "fuzz/Fuzz.hh"
#include "infrastructure/RtiStringUtility.hh"

#include <map>

namespace {

struct Model {
    std::map<std::string, std::string> classes;                          // the spelling, by name in upper case
    std::map<std::string, std::map<std::string, unsigned long>> members; // the handle, by class and name in upper case
    unsigned long lastMember = 0;
};

std::string upper(const std::string &name) {
    return RtiStringUtility::toupper(name);
}

/// The class that declares a member for a class, that itself or one above; empty if none does.
std::string declaring(const Model &model, std::string name, const std::string &member) {
    for (;;) {
        const auto found = model.members.find(name);
        if (found != model.members.end() && found->second.count(member))
            return name;
        const std::size_t dot = name.rfind('.');
        if (dot == std::string::npos)
            return {};
        name.resize(dot);
    }
}

void compare(const RtiFedDatabase &database, const Model &model) {
    FUZZ_CHECK(database.getObjectClassHandleSet().size() == model.classes.size());
    for (const auto &[name, spelling] : model.classes) {
        const RtiObjectClassHandle handle = database.getObjectClassHandle(name);
        FUZZ_CHECK(database.getObjectClassName(handle) == spelling);
        for (const char *member : {"A", "B", "ALONGNAMEOFSEVENTEEN"}) {
            const std::string owner = declaring(model, name, member);
            try {
                const RtiAttributeHandle found = database.getAttributeHandle(member, handle);
                FUZZ_CHECK(!owner.empty() && found == model.members.at(owner).at(member));
                FUZZ_CHECK(upper(database.getAttributeName(found, handle)) == member);
            } catch (const RTI::NameNotFound &) {
                FUZZ_CHECK(owner.empty());
            }
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    constexpr const char *kClasses[] = {"", "x", "X", "Root", "rOOt", "y", "Another_Long_Component", "z"};
    constexpr const char *kMembers[] = {"a", "A", "b", "aLongNameOfSeventeen"};
    RtiFedDatabase database(RtiFedDatabaseConstructorArg("fuzz.fed", RTI_false));
    Model model;
    std::string current; // as last spelt
    for (std::size_t i = 0; i + 1 < size && i < 64; i += 2) {
        const std::string component = kClasses[data[i + 1] % 8], member = kMembers[data[i + 1] % 4];
        const bool below = data[i] % 4 == 1, sibling = data[i] % 4 == 0;
        if (sibling || below) {
            const std::string name = below && !current.empty() ? current + "." + component : component;
            const bool sound = !component.empty() && !model.classes.count(upper(name));
            if (component.empty() || upper(component).find("OBJECTROOT") != std::string::npos)
                continue;
            try {
                database.addObjectClass(name);
                FUZZ_CHECK(sound);
                model.classes[upper(name)] = name;
            } catch (const RTI::Exception &) {
                FUZZ_CHECK(!sound);
            }
            current = name;
        } else if (!current.empty()) {
            RtiFedObjectClass *node = database.find(database.getObjectClassHandle(current));
            const bool sound = declaring(model, upper(current), upper(member)).empty();
            ++model.lastMember; // which a refused call uses up
            try {
                database.addObjectClassAttribute(node, member, 1, 1, 0);
                FUZZ_CHECK(sound);
                model.members[upper(current)][upper(member)] = model.lastMember;
            } catch (const RTI::Exception &) {
                FUZZ_CHECK(!sound);
            }
        }
        compare(database, model);
    }
    checkThatItReturns(database);
    return 0;
}
