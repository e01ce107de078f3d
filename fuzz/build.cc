// A sequence of building calls, two bytes each, made on both class trees and on a simple model, which is compared after
// every call.

#include "fuzz/Model.hh"

namespace {

constexpr const char *kComponents[] = {"x", "X", "Root", "rOOt", "y", "Another_Long_Component", "z", "\xE4{"};
constexpr const char *kMembers[] = {"a", "A", "b", "aLongNameOfSeventeen"};

bool isRefusedClass(RtiFedDatabase &database, const std::string &name) {
    const bool refused = isRefused([&] { database.addObjectClass(name); });
    FUZZ_CHECK(refused == isRefused([&] { database.addInteractionClass(name, 1, 1, 0); }));
    return refused;
}

bool isRefusedMember(RtiFedDatabase &database, const std::string &className, const std::string &member) {
    RtiFedObjectClass *object = database.find(database.getObjectClassHandle(className));
    RtiFedInteractionClass *interaction = database.find(database.getInteractionClassHandle(className));
    const bool refused = isRefused([&] { database.addObjectClassAttribute(object, member, 1, 1, 0); });
    FUZZ_CHECK(refused == isRefused([&] { interaction->addParameter(database.createParameterHandle(), member); }));
    return refused;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    RtiFedDatabase database(RtiFedDatabaseConstructorArg("fuzz.fed", RTI_false));
    Model model;
    unsigned long lastMember = 0;
    std::string current; // the class, as spelled last
    for (std::size_t i = 0; i + 1 < size && i < 64; i += 2) {
        if (data[i] % 4 < 2 || i == 0) {
            const bool below = data[i] % 4 == 1 && i > 0;
            current = (below ? current + "." : "") + kComponents[data[i + 1] % std::size(kComponents)];
            FUZZ_CHECK(isRefusedClass(database, current) == model.isClass(current));
            model.addClass(current);
        } else {
            const std::string member = kMembers[data[i + 1] % std::size(kMembers)];
            ++lastMember; // a refused call uses up the handle
            const bool isThere = model.memberOf(current, member) != 0;
            FUZZ_CHECK(isRefusedMember(database, current, member) == isThere);
            if (!isThere)
                model.addMember(current, member, lastMember);
        }
        model.compareWith(database, kMembers);
    }
    checkThatItReturns(database);
    return 0;
}
