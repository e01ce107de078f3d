#include "infrastructure/RtiStringUtility.hh"
#include "tests/Support.hh"
#include "tests/tool/RandomModel.hh"
#include "tool/check/ReadOutline.hh"
#include "tool/commands/Commands.hh"
#include "tool/comparison/Comparison.hh"

#include <nlohmann/json.hpp>

#include <map>
#include <utility>
#include <vector>

namespace {

using Verdict = Comparison::Verdict;

/// All that a federate can ask for by name, in upper case: the properties that it then gets, and the handle.
using Facts = std::map<std::string, std::pair<std::string, long>>;

Facts factsOf(const RtiFedDatabase &db) {
    Facts facts;
    const auto enter = [&facts](const std::string &name, const std::string &properties, auto handle) {
        facts[RtiStringUtility::toupper(name)] = {RtiStringUtility::toupper(properties), static_cast<long>(handle)};
    };
    const auto properties = [&db](const auto &transportation, const auto &ordering, const auto &space) {
        return db.getTransportationName(transportation) + db.getOrderingName(ordering) +
               (space == 0 ? "" : db.getRoutingSpaceName(space));
    };
    for (const auto &handle : db.getObjectClassHandleSet()) {
        const std::string name = db.getObjectClassName(handle);
        enter(name, "", handle._value);
        for (const RtiFedAttribute *a : *db.getAvailableFedAttributes(handle, 0))
            enter(name + "|" + a->getName(), properties(a->getTransport(), a->getOrdering(), a->getSpace()),
                  a->getHandle()._value);
    }
    for (const auto &handle : db.getInteractionClassHandleSet()) {
        const RtiFedInteractionClass &i = *db.find(handle);
        enter(i.getName(), properties(i.getDefaultTransport(), i.getDefaultOrdering(), i.getDefaultSpace()),
              handle._value);
        for (const auto &parameter : db.getAvailableInteractionClassHandles(handle))
            enter(i.getName() + "|" + db.getParameterName(parameter, handle), "", parameter._value);
    }
    for (const auto &handle : db.getRoutingSpaceHandleSet()) {
        const RtiFedSpace &space = *db.find(handle);
        enter("space " + space.getName(), "", handle._value);
        for (unsigned long i = 0; i < space.getNumberOfDimensions(); ++i)
            enter("space " + space.getName() + "|" + space.getDimension(i)->getName(), std::to_string(i), 0);
    }
    return facts;
}

/// Whether `there` has all of `facts`, with the same properties, and the same handles if they count.
bool hasAll(const Facts &there, const Facts &facts, bool handlesCount) {
    return std::all_of(facts.begin(), facts.end(), [&](const auto &fact) {
        const auto found = there.find(fact.first);
        return found != there.end() && found->second.first == fact.second.first &&
               (!handlesCount || found->second.second == fact.second.second);
    });
}

/// The image, but for the file name at its end.
std::string imageBeforeName(const RtiFedDatabase &db) {
    const std::string image = bytesOf(db);
    return image.substr(0, image.rfind("/tmp/"));
}

Verdict expectedVerdict(const std::string &before, const std::string &after) {
    const auto dbBefore = load(before), dbAfter = load(after);
    const Facts factsBefore = factsOf(*dbBefore), factsAfter = factsOf(*dbAfter);
    if (!hasAll(factsAfter, factsBefore, false))
        return Verdict::incompatible;
    if (factsAfter.size() > factsBefore.size())
        return Verdict::additions;
    if (!hasAll(factsAfter, factsBefore, true))
        return Verdict::renumbered;
    if (imageBeforeName(*dbBefore) != imageBeforeName(*dbAfter))
        return Verdict::relabelled;
    return before == after ? Verdict::identical : Verdict::same;
}

Verdict verdictOf(const std::string &before, const std::string &after) {
    return Comparison(readOutline({"old", before}), readOutline({"new", after}), before == after).verdict();
}

} // namespace

TEST(Diff, JudgesAsTheLibraryAnswers) {
    std::map<Verdict, int> met;
    for (unsigned seed = 0; seed < rounds(240) || (met.size() < 6 && seed < 60); ++seed) {
        SCOPED_TRACE(seed);
        RandomModel model(seed);
        const std::string before = model.text();
        for (unsigned edits = seed % 4; edits > 0; --edits)
            model.edit();
        const std::string after = model.text();
        ASSERT_EQ(readOutline({"old", before}).checksum, load(before)->getChecksum());
        const std::string imageBefore = bytesOf(*load(before)), imageAfter = bytesOf(*load(after));
        for (const auto &[old, now] : {std::pair(before, after), std::pair(after, before)}) {
            const Verdict expected = expectedVerdict(old, now);
            ASSERT_EQ(verdictOf(old, now), expected) << old << now;
            ++met[expected];
        }
        ASSERT_EQ(verdictOf(before, imageBefore), Verdict::same);
        ASSERT_EQ(std::max(verdictOf(imageBefore, imageAfter), Verdict::same),
                  std::max(verdictOf(before, after), Verdict::same));
    }
    EXPECT_EQ(met.size(), 6u) << "a verdict was never met";
}

/// In diff.txt, each case begins with its option. The old and the new model follow, separated by "->": whole texts, or
/// spaces, object classes and interaction classes, separated by "|", which are added to the MOM.
TEST(Diff, ReportsWhatChanged) {
    forEachCase("diff.txt", [](const std::string &text) {
        const auto options = text.find('\n'), arrow = text.find("\n->\n");
        const auto fileText = [](const std::string &model) {
            const auto first = model.find('|'), second = model.rfind('|');
            return first == std::string::npos ? model
                                              : withMom(model.substr(first + 1, second - first - 1),
                                                        model.substr(second + 1), model.substr(0, first));
        };
        const TemporaryFile before(fileText(text.substr(options + 1, arrow - options - 1)));
        const TemporaryFile after(fileText(text.substr(arrow + 4)));
        const std::string option = text.substr(0, options);
        const DiffOptions asked{before.path(), after.path(), option == "--all", false, option == "json"};
        std::ostringstream written;
        const Status status = diff(asked, Console{written, written});
        std::string shown = written.str();
        for (const auto &[path, name] : {std::pair(before.path(), "old.fed"), std::pair(after.path(), "new.fed")})
            while (shown.find(path) != std::string::npos)
                shown = replaced(shown, path, name);
        return shown + "status " + std::to_string(status) + "\n";
    });
}

TEST(Diff, HasTheWordsOfItsSchema) {
    const auto schema = nlohmann::json::parse(readFile(RTIFED_DOCS "/diff.schema.json"));
    const auto names = [](auto last) {
        auto list = nlohmann::json::array();
        for (int i = 0; i <= static_cast<int>(last); ++i)
            list.push_back(Comparison::nameOf(static_cast<decltype(last)>(i)));
        return list;
    };
    EXPECT_EQ(schema["properties"]["verdict"]["enum"], names(Verdict::incompatible));
    EXPECT_EQ(schema["$defs"]["change"]["properties"]["kind"]["enum"], names(Comparison::Change::Kind::unclear));
    EXPECT_EQ(schema["$defs"]["change"]["properties"]["rename"]["properties"]["likelihood"]["enum"],
              names(Comparison::Change::Likelihood::probable));
    EXPECT_EQ(schema["$defs"]["subject"]["enum"], names(Comparison::Element::Kind::parameter));
}
