// Fixes of texts that are broken in a known way. tests/data/fix.txt has whole sessions.

#include "fuzz/Fix.hh"
#include "tests/Support.hh"

#include <functional>
#include <random>
#include <regex>

namespace {

using Index = SyntaxTree::Index;
using Edit = std::function<void(SyntaxEdits &)>;
using Accept = std::function<bool(Index)>;

/// A text to break at random places. What cannot be broken in some way gives an empty text.
class Breakable {
public:
    Breakable(const std::string &text, unsigned seed) : _parser(text), _tree(_parser), _random(seed) {}

    std::string text() const { return std::string(_tree.text()); }
    const SyntaxTree &tree() const { return _tree; }
    const SyntaxTree::Clause &at(Index clause) const { return _tree.clauses()[clause]; }
    std::string textOf(Index clause) const {
        return text().substr(_tree.span(clause).begin, _tree.span(clause).length);
    }
    std::string word(Index clause, std::size_t n) const {
        const std::vector<Index> words = clause == SyntaxTree::kNone ? std::vector<Index>() : _tree.words(clause);
        return n < words.size() ? std::string(_tree.bytes(words[n])) : std::string();
    }
    bool isMember(Index clause) const { return word(clause, 0) == "attribute" || word(clause, 0) == "parameter"; }

    Index any(const Accept &accepts) {
        std::vector<Index> found;
        for (Index clause = 0; clause < _tree.clauses().size(); ++clause)
            if (accepts(clause))
                found.push_back(clause);
        return found.empty() ? SyntaxTree::kNone : found[_random() % found.size()];
    }
    Index any(std::size_t n, const std::string &name) {
        return any([&](Index each) { return word(each, n) == name; });
    }

    /// With other words n of a clause; `change` gets the old one.
    std::string withWord(Index clause, std::size_t n, const std::function<std::string(std::string)> &change) const {
        return edited(clause,
                      [&](SyntaxEdits &edits) { edits.replaceToken(_tree.words(clause)[n], change(word(clause, n))); });
    }
    std::string without(Index clause) const {
        return edited(clause, [clause](SyntaxEdits &edits) { edits.removeClause(clause); });
    }
    std::string edited(Index clause, const Edit &edit) const {
        if (clause == SyntaxTree::kNone)
            return "";
        SyntaxEdits edits(_tree);
        edit(edits);
        return edits.text();
    }

private:
    const RtiFedParser _parser;
    const SyntaxTree _tree;
    std::mt19937 _random;
};

/// A way to break a text, and the rule whose fix repairs it.
struct Break {
    const char *rule;
    bool isUnsafe; ///< Whether the fix is.
    std::function<std::string(Breakable &)> make;
};

std::string misspelt(std::string word) {
    return word.erase(word.size() / 2, 1);
}

/// Misspells word n of a clause that has it, if it is longer than three letters.
Break misspell(const char *rule, std::size_t n, const std::function<bool(const Breakable &, Index)> &accepts) {
    return {rule, false, [n, accepts](Breakable &text) {
                return text.withWord(
                    text.any([&](Index each) { return text.word(each, n).size() > 4 && accepts(text, each); }), n,
                    misspelt);
            }};
}

bool isAny(const Breakable &, Index) {
    return true;
}

bool hasDelivery(const Breakable &text, Index clause) {
    return !text.word(clause, 3).empty();
}

bool isInMom(const Breakable &text, Index clause) {
    for (clause = text.at(clause).parent; clause != SyntaxTree::kNone; clause = text.at(clause).parent)
        if (text.word(clause, 1) == "Manager")
            return true;
    return false;
}

const Break kBreaks[] = {
    misspell("unexpected-clause", 0, isAny),
    misspell("unknown-transportation", 2, hasDelivery),
    misspell("unknown-ordering", 3, hasDelivery),
    misspell("unknown-space", 4, isAny),
    misspell("mom-incomplete", 1, isInMom),
    {"mom-incomplete", false, // the last one in its class, where it is added
     [](Breakable &text) {
         return text.without(text.any([&](Index each) {
             return isInMom(text, each) && text.at(text.at(each).parent).end == text.at(each).end &&
                    text.textOf(each).find("Supervision") == std::string::npos;
         }));
     }},
    {"misspelt-root", false,
     [](Breakable &text) {
         const Index root = text.any([&](Index each) { return text.word(each, 1).find("Root") != std::string::npos; });
         return text.withWord(root, 1, [](const std::string &name) { return "HLA" + name; });
     }},
    {"swapped-words", false,
     [](Breakable &text) {
         const Index attribute = text.any(0, "attribute");
         return text.edited(attribute, [&](SyntaxEdits &edits) {
             for (const std::size_t n : {2U, 3U})
                 edits.replaceToken(text.tree().words(attribute)[n], text.word(attribute, 5 - n));
         });
     }},
    {"shifted-words", false,
     [](Breakable &text) {
         return text.withWord(text.any(2, "best_effort"), 2, [](const std::string &) { return "best effort"; });
     }},
    {"repeated-member", false,
     [](Breakable &text) {
         const Index member = text.any([&](Index each) { return text.isMember(each); });
         return text.edited(member, [&](SyntaxEdits &edits) { edits.insertAfter(member, text.textOf(member)); });
     }},
    {"inherited-member", false,
     [](Breakable &text) {
         const Index below = text.any([&](Index each) {
             return text.word(each, 0) == "class" && text.tree().hasClauses(each) &&
                    text.isMember(text.at(each).parent + 1);
         });
         return text.edited(
             below, [&](SyntaxEdits &edits) { edits.insertFirst(below, text.textOf(text.at(below).parent + 1)); });
     }},
    {"missing-clause", false, [](Breakable &text) { return text.without(text.any(0, "FEDversion")); }},
    {"repeated-clause", false,
     [](Breakable &text) {
         const Index version = text.any(0, "FEDversion");
         return text.edited(version, [&](SyntaxEdits &edits) { edits.insertAfter(version, text.textOf(version)); });
     }},
    {"foreign-comment", false,
     [](Breakable &text) { // all of them, as an author would
         const std::string broken = std::regex_replace(text.text(), std::regex(" ; "), " // ");
         return broken == text.text() ? "" : broken;
     }},
    {"foreign-blank", false,
     [](Breakable &text) {
         const Index clause = text.any(0, "class");
         return text.edited(
             clause, [&](SyntaxEdits &edits) { edits.replaceToken(text.tree().words(clause)[0] + 1, "\u00A0"); });
     }},
    {"unused-suppression", false,
     [](Breakable &text) {
         const Index clause = text.any(0, "class");
         if (clause == SyntaxTree::kNone)
             return std::string();
         const std::size_t begin = text.tree().span(clause).begin, line = text.text().rfind('\n', begin) + 1;
         return text.text().insert(line, text.text().substr(line, begin - line) +
                                             ";; rtifed: allow unknown-ordering because\n");
     }},
    {"unclosed-clause", true, [](Breakable &text) { return text.text().substr(0, text.text().size() - 2); }},
    {"unclosed-clause", true,
     [](Breakable &text) {
         const Index leaf = text.any([&](Index each) { return text.isMember(each); });
         return text.edited(leaf, [&](SyntaxEdits &edits) { edits.removeToken(text.at(leaf).close); });
     }},
    {"text-behind-end", true, [](Breakable &text) { return text.text() + ")\n"; }},
    {"unused-space", true,
     [](Breakable &text) {
         const Index spaces = text.any(0, "spaces");
         return text.edited(
             spaces, [spaces](SyntaxEdits &edits) { edits.insertInto(spaces, "(space Unused\n  (dimension x)\n)"); });
     }},
    {"no-privilege-to-delete", true, [](Breakable &text) { return text.without(text.any(1, "privilegeToDelete")); }},
    {"no-rtiprivate", true, [](Breakable &text) { return text.without(text.any(1, "RTIprivate")); }},
    {"letter-case", true,
     [](Breakable &text) {
         const Index user = text.any([&](Index each) { return !text.word(each, 4).empty(); });
         return text.withWord(user, 4, [](const std::string &name) { return RtiStringUtility::toupper(name); });
     }},
};

} // namespace

TEST(Fix, RepairsWhatIsBrokenInOneWay) {
    for (const Break &each : kBreaks) {
        std::size_t numBroken = 0;
        for (const char *const name : {"harbour.fed", "minimal.fed"})
            for (unsigned seed = 0; seed < rounds(8); ++seed) {
                Breakable text(example(name), seed);
                const std::string broken = each.make(text);
                if (broken.empty())
                    continue;
                ++numBroken;
                EXPECT_EQ(withFixes({name, broken}, {}, {each.isUnsafe}).text.text(), text.text())
                    << each.rule << ' ' << name;
            }
        EXPECT_GE(numBroken, rounds(8)) << each.rule;
    }
}

TEST(Fix, KeepsWhatLoadsAndComesToAnEnd) {
    std::mt19937 random(5);
    for (unsigned seed = 0; seed < rounds(60); ++seed) {
        std::string text = example(seed % 2 ? "harbour.fed" : "tolerances.fed");
        for (int i = 0; i < 4; ++i) {
            EXPECT_EQ(faultOfFixes(text, {seed % 4 < 2}), "");
            Breakable breakable(text, seed);
            const std::string broken = kBreaks[random() % std::size(kBreaks)].make(breakable);
            text = broken.empty() ? text : broken;
        }
    }
}

/// What may mean something else is left to a person, or stays beside what is added.
TEST(Fix, IsSafeOnlyIfItHasOneMeaning) {
    struct Case {
        const char *was, *is, *fixed; ///< `fixed` is empty if nothing safe can be done.
    };
    const auto check = [](const std::string &model, const Case &each) {
        const std::string broken = replaced(model, each.was, each.is);
        const std::string fixed = withFixes({"a.fed", broken}, {}, {}).text.text();
        EXPECT_EQ(fixed, *each.fixed ? replaced(model, each.was, each.fixed) : broken) << each.is;
    };
    const std::string model = withMom("(class Boat (attribute Length reliable timestamp Harbour1)\n"
                                      "  (class Tug (attribute Pull best_effort receive)))",
                                      "", "(space Harbour1 (dimension x)) (space AreaA)");
    const std::string length = "(attribute Length reliable timestamp Harbour1)",
                      pull = "(attribute Pull best_effort receive)";
    for (const Case &each : {Case{"Length reliable", "Length relieable", "Length reliable"},
                             {"Length reliable", "Length Re-liable", "Length reliable"},
                             {"Length reliable", "Length unreliable", ""},
                             {"Pull best_effort receive", "Pull best_effort no_receive", ""},
                             {"timestamp Harbour1", "timestamp Harbour2", ""},
                             {"timestamp Harbour1", "timestamp Harbor1", "timestamp Harbour1"},
                             {"timestamp Harbour1", "timestamp OtherHarbour1", ""},
                             {"timestamp Harbour1", "timestamp AreaB", ""},
                             {"timestamp Harbour1", "timestamp ArreaA", "timestamp AreaA"}})
        check(model, each);
    const std::string roads = withMom(
        "(class A (attribute a reliable receive RoadA) (attribute b reliable receive RoadA))", "", "(space RoadA)");
    check(roads, {"(space RoadA)", "(space RoadB)", ""});
    check(roads, {"(space RoadA)", "(space RaodA)", "(space RoadA)"});
    const auto withTug = [&](const std::string &more) { return replaced(model, pull, pull + more); };
    for (const auto &[more, left] :
         {std::pair<std::string, std::string>{" (attribute LENGTH RTI_RELIABLE timestamp harbour1)", ""},
          {"\n  ;; rtifed: allow letter-case old\n  (attribute LENGTH reliable timestamp Harbour1)", "\n  "},
          {"\n  (attribute LENGTH reliable timestamp Harbour1) ; again\n", "\n  ; again\n"},
          {"\n  ; rtifed: allow letter-case old\n  (attribute LENGTH reliable timestamp Harbour1)\n  (class T)",
           "\n  (class T)"},
          {"\n  ; m\n  (attribute LENGTH reliable timestamp Harbour1)\n  (class T)", "\n  ; m\n\n  (class T)"},
          {" (attribute Length reliable timestamp)", " (attribute Length reliable timestamp)"},
          {" (attribute Length reliable timestamp Harbour1 (sec_level High))",
           " (attribute Length reliable timestamp Harbour1 (sec_level High))"}})
        EXPECT_EQ(withFixes({"a.fed", withTug(more)}, {}, {}).text.text(), withTug(left)) << more;
}

TEST(Fix, AddsToTheMomWhatOnlyResemblesIt) {
    const std::string whole = example("minimal.fed");
    const std::string own = replaced(whole, "FederateType ", "FederateKind ");
    const FixedText fixed = withFixes({"a.fed", own}, {}, {});
    EXPECT_NE(fixed.text.text().find("(attribute FederateKind "), std::string::npos);
    EXPECT_NE(fixed.text.text().find("(attribute FederateType "), std::string::npos);
    EXPECT_TRUE(fixed.left.findings.empty());
    const FixedText federation = withFixes({"-", replaced(whole, "(Federation Minimal)", "")}, {}, {});
    EXPECT_TRUE(federation.made.empty()) << "standard input has no name to take";
    const std::string newer = replaced(replaced(whole, "privilegeToDelete", "HLAprivilegeToDeleteObject"),
                                       "(class RequestUpdatesSent", "(class Other");
    EXPECT_NE(withFixes({"a.fed", newer}, {}, {}).text.text().find("(attribute privilegeToDelete "), std::string::npos);
    const std::string loads = replaced(whole, "privilegeToDelete", "HLAprivilegeToDeleteObject");
    EXPECT_EQ(withFixes({"a.fed", loads}, {}, {}).text.text(), loads) << "programs may know the name";
    const std::string root = "(class InteractionRoot reliable timestamp";
    const std::string inSpace = replaced(example("harbour.fed"), root, root + " RadioTraffic");
    EXPECT_EQ(withFixes({"a.fed", replaced(inSpace, "\n      (class RTIprivate reliable timestamp)", "")}, {}, {true})
                  .text.text(),
              inSpace);
}

/// Misspelt keywords hide what is in them, so that each needs a round of its own.
TEST(Fix, GoesOnAsDeepAsClassesNest) {
    std::string deep, end;
    for (int i = 0; i < 200; ++i) {
        deep += "(clas D" + std::to_string(i) + ' ';
        end += ')';
    }
    const FixedText fixed = withFixes({"a.fed", withMom(deep + end)}, {}, {});
    EXPECT_TRUE(fixed.left.findings.empty());
    EXPECT_EQ(fixed.made.size(), 200U);
}

/// What parentheses are missing is known if all else is in order.
TEST(Fix, ClosesWhatIsWholeButForItsParenthesis) {
    const std::string whole = example("minimal.fed"), named = std::string(kNameLimit, 'n'),
                      open = whole.substr(0, whole.rfind(')'));
    const auto numMade = [](const std::string &text, const std::string &name = "a") {
        return withFixes({name + ".fed", text}, {}, {true}).made.size();
    };
    EXPECT_EQ(numMade(replaced(whole, "(Federation Minimal)", ""), named), 1U);
    EXPECT_EQ(numMade(replaced(whole, "(Federation Minimal)", ""), named + "n"), 0U);
    EXPECT_EQ(numMade(replaced(whole, "(Federation Minimal)", "(Federate F)")), 0U);
    EXPECT_EQ(numMade(open), 1U);
    EXPECT_EQ(numMade(replaced(open, "(FEDversion v1.3)", "(FEDversion v1.3) (zzz)")), 0U);
    EXPECT_EQ(numMade(replaced(open, "(interactions", "(objects)\n  (interactions")), 0U);
    for (const auto &[words, count] : {std::pair("a reliable receive", 1U),
                                       {"a", 0U},
                                       {"a reliable", 0U},
                                       {"a reliable receive S", 1U},
                                       {"a reliable receive S T", 0U}})
        EXPECT_EQ(numMade(withMom("(class A (attribute c reliable receive S) (attribute " + std::string(words) +
                                      "\n(attribute b reliable receive))",
                                  "", "(space S (dimension x))")),
                  count)
            << words;
    EXPECT_EQ(numMade(withMom("", "(class I reliable receive (parameter\n(parameter b))")), 0U);
}
