// Texts of generated federations, some of them wrong: the parts of the program agree with the library.

#include "fuzz/Fix.hh"
#include "tests/Support.hh"
#include "tests/model/SpoiledFederation.hh"
#include "tool/commands/Commands.hh"
#include "tool/language/Document.hh"

#include <nlohmann/json.hpp>

namespace {

/// Returns what the library builds of a text, or null if it refuses it.
std::unique_ptr<RtiFedDatabase> loadedOrNull(const std::string &text) {
    try {
        return load(text);
    } catch (const RTI::Exception &) {
        return nullptr;
    }
}

nlohmann::json jsonOf(const std::string &text) {
    const TemporaryFile file(text);
    std::ostringstream out, err;
    json({file.path()}, Console{out, err});
    return nlohmann::json::parse(out.str());
}

} // namespace

TEST(Generated, PartsOfTheProgramAgreeWithTheLibrary) {
    const ErrorLines errors;
    const auto minimal = load(example("minimal.fed"));
    std::size_t numLoaded = 0;
    for (std::size_t seed = 0; seed < rounds(16); ++seed) {
        SCOPED_TRACE(seed);
        Random random(seed);
        const std::string text = toFed(spoiledFederation(*minimal, random));
        const auto database = loadedOrNull(text);
        numLoaded += database ? 1 : 0;
        EXPECT_EQ(faultOfTree(text), "");
        EXPECT_EQ(faultOfFormat(text), "");
        EXPECT_EQ(faultOfFixes(text, {seed % 2 == 0}), "");
        EXPECT_EQ(Document("a.fed", text, Settings()).checker().findsNoError(), database != nullptr);
        const nlohmann::json model = jsonOf(text);
        EXPECT_EQ(model["loads"], database != nullptr);
        if (!database)
            continue;
        ASSERT_EQ(model["objectClasses"].size(), database->numObjectClasses());
        ASSERT_EQ(model["interactionClasses"].size(), database->numInteractionClasses());
        for (const auto &node : model["objectClasses"]) {
            const RtiObjectClassHandle handle = node["handle"].get<unsigned long>();
            EXPECT_EQ(node["name"], database->getObjectClassName(handle));
            for (const auto &attribute : node["attributes"])
                EXPECT_EQ(attribute["handle"],
                          database->getAttributeHandle(attribute["name"].get<std::string>(), handle)._value);
        }
        for (const auto &node : model["interactionClasses"]) {
            const RtiInteractionClassHandle handle = node["handle"].get<unsigned long>();
            EXPECT_EQ(node["name"], database->getInteractionClassName(handle));
            for (const auto &parameter : node["parameters"])
                EXPECT_EQ(parameter["handle"],
                          database->getParameterHandle(parameter["name"].get<std::string>(), handle)._value);
        }
    }
    EXPECT_GE(numLoaded, rounds(3));
}
