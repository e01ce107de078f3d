#include "infrastructure/RtiStringUtility.hh"
#include "tests/Support.hh"
#include "tool/check/Checker.hh"
#include "tool/check/Warnings.hh"
#include "tool/model/ClassTrees.hh"
#include "tool/model/DeliveryWords.hh"
#include "tool/model/Names.hh"

#include <map>
#include <random>
#include <set>

namespace {

/// Fails unless the words at the places of a tree's records are those that the database has.
template <class Tree, class Check>
void expectWords(const Checker &text, Check check) {
    const Declarations &declared = text.declarations();
    for (const auto &handle : Tree::handles(text.database())) {
        const auto &node = *text.database().find(handle);
        EXPECT_EQ(declared.written(&node, Declarations::name), lastComponent(node.getName()));
        check(node);
        for (const auto &member : node.members())
            EXPECT_EQ(declared.written(&member, Declarations::name), member.getName());
    }
}

} // namespace

TEST(Declarations, ArePlacesOfTheWordsOfEachRecord) {
    for (const char *name : {"minimal.fed", "harbour.fed", "tolerances.fed"}) {
        // Without errors, all are collected at once; with one, one by one.
        for (const std::string &fed : {example(name), replaced(example(name), "(class Manager", "(class Foreman"),
                                       replaced(example(name), "(class Manager", "(class \"\") (class Manager")}) {
            const Checker text(fed);
            expectWords<Objects>(text, [&](const RtiFedObjectClass &node) {
                for (const RtiFedAttribute &attribute : node.members()) {
                    const auto word = [&](auto argument) { return text.declarations().written(&attribute, argument); };
                    EXPECT_EQ(meaningOf(word(Declarations::ordering)),
                              RtiStringUtility::toupper(shortForm(kOrderings, attribute.getOrdering()._value)));
                    if (const std::string space = word(Declarations::space); !space.empty()) {
                        EXPECT_EQ(text.database().getRoutingSpaceHandle(space), attribute.getSpace());
                    }
                }
            });
            expectWords<Interactions>(text, [](const RtiFedInteractionClass &) {});
            for (const RtiSpaceHandle &handle : text.database().getRoutingSpaceHandleSet()) {
                const RtiFedSpace &space = *text.database().find(handle);
                EXPECT_TRUE(text.declarations().span(&space) || space.getName() == RtiFedDatabase::_momDefaultSpace);
                for (unsigned long i = 0; i < space.getNumberOfDimensions(); ++i)
                    EXPECT_EQ(text.declarations().written(space.getDimension(i), Declarations::name),
                              space.getDimension(i)->getName());
            }
        }
    }
}

TEST(Warnings, FindEachNameThatIsSpeltInSeveralWays) {
    std::mt19937 random(3); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same texts in each run
    for (int round = 0; round < 20; ++round) {
        std::map<std::string, std::set<std::string>> spellings; // by upper case
        std::string classes;
        for (int i = 0; i < 120; ++i) {
            std::string name = "Name" + std::to_string(random() % 300);
            if (random() % 40 == 0)
                name[random() % 4] ^= ' ';
            spellings[RtiStringUtility::toupper(name)].insert(name);
            classes += "(class C" + std::to_string(i) + " (attribute " + name + " reliable receive))";
        }
        std::size_t expected = 0;
        for (const auto &[upper, of] : spellings)
            expected += of.size() - 1;
        const Checker text(withMom(classes));
        ASSERT_TRUE(text.findsNoError());
        std::size_t found = 0;
        for (const Finding &warning : warningsOf(text))
            found += warning.rule == &ruleOf(RuleId::letterCase) ? 1 : 0;
        EXPECT_EQ(found, expected);
    }
}
