// Merging FED texts, and extracting classes. tests/data/merge.txt has cases.

#include "fuzz/Modules.hh"
#include "tests/Support.hh"
#include "tests/tool/FormattedText.hh"
#include "tool/commands/Commands.hh"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <random>

namespace {

/// The merged text, after notes if these are wanted; or the conflicts.
std::string merged(const std::vector<std::string> &texts, bool firstMom = false, bool withNotes = false) {
    std::list<Module> modules;
    Merge merge(firstMom);
    for (const std::string &text : texts) {
        modules.emplace_back(std::string(1, static_cast<char>('a' + modules.size())),
                             std::make_unique<const Checker>(text));
        EXPECT_EQ(modules.back().original().parser().numErrors(), 0U) << text;
        merge.add(modules.back());
    }
    merge.checkInheritance();
    std::string conflicts, notes;
    for (const Merge::Message &conflict : merge.conflicts())
        conflicts += conflict.place + ": " + conflict.text + '\n';
    for (const Merge::Message &note : merge.notes())
        notes += note.place + ": note: " + note.text + '\n';
    return (withNotes ? notes : "") + (conflicts.empty() ? merge.text() : conflicts);
}

std::string extractedFrom(const std::string &text, const ExtractedClasses &classes) {
    return extracted(Module("a", std::make_unique<const Checker>(text)), classes);
}

Outline outlineOf(const std::string &text) {
    return outlineOf(Checker(text));
}

/// The meaning of all differences between two texts, both of which must load.
Comparison::Verdict difference(const std::string &before, const std::string &after) {
    const Outline old = outlineOf(before), now = outlineOf(after);
    EXPECT_TRUE(old.loads && now.loads) << after;
    return Comparison(old, now, false).verdict();
}

/// All classes of a model, each to extract alone.
std::vector<ExtractedClasses> singleClasses(const Outline &model) {
    std::vector<ExtractedClasses> classes;
    for (const TreeKind *tree : kTreeKinds)
        for (const Outline::Class &node : model.classes(*tree)) {
            ExtractedClasses &one = classes.emplace_back();
            (tree == &kObjectTree ? one.objects : one.interactions).insert(RtiStringUtility::toupper(node.name));
        }
    return classes;
}

std::string manyComments(const std::string &text, const std::string &mark, std::mt19937 &random) {
    const RtiFedParser parser(text);
    const SyntaxTree tree(parser);
    std::string result;
    int number = 0;
    for (SyntaxTree::Index token = 0; token < tree.numTokens(); ++token) {
        result += tree.bytes(token);
        if (tree.kind(token) != SyntaxTree::Kind::comment && random() % 20 == 0)
            result += (random() % 2 == 0 ? " ; " : "\n\n;; ") + mark + std::to_string(++number) + "\n";
    }
    return result;
}

std::vector<std::string> commentsIn(const std::string &text) {
    const RtiFedParser parser(text);
    return Contents(SyntaxTree(parser)).comments;
}

} // namespace

TEST(Merge, JoinsOrReportsConflicts) {
    forEachCase("merge.txt", [](const std::string &text) {
        std::vector<std::string> modules;
        const bool firstMom = text.find("first MOM") != std::string::npos;
        const std::regex separator("\\+\\+\\+\\+\n");
        for (std::sregex_token_iterator part(text.begin(), text.end(), separator, -1), end; part != end; ++part)
            modules.push_back(part->str().rfind("(FED", 0) == 0
                                  ? part->str()
                                  : "(FED (Federation F) (FEDversion v)\n" + part->str() + ")");
        const std::string result = merged(modules, firstMom);
        for (const std::string &module : modules)
            if (result.rfind("(FED", 0) == 0) {
                EXPECT_EQ(merged({result, module}, firstMom), result) << "merged again, the result changes";
            }
        return merged(modules, firstMom, true);
    });
}

TEST(Merge, OfAFileWithItselfOrNothingNewIsTheFormattedFile) {
    for (const char *const name : {"minimal.fed", "harbour.fed", "tolerances.fed"}) {
        const std::string text = example(name);
        EXPECT_EQ(merged({text}), formattedText(text));
        EXPECT_EQ(merged({text, text, text}), formattedText(text));
        const std::string part = extractedFrom(text, {});
        EXPECT_EQ(merged({text, part}), formattedText(text));
        EXPECT_LE(difference(text, merged({part, text})), Comparison::Verdict::renumbered);
    }
}

TEST(Merge, OfTheExtractsOfAllClassesIsTheModel) {
    for (const char *const name : {"minimal.fed", "harbour.fed", "tolerances.fed"})
        EXPECT_EQ(faultOfExtracts(example(name), std::string::npos), "");
}

/// Small modules with few names and many comments, so that many of them have the same classes and some conflict.
class RandomModules {
public:
    explicit RandomModules(unsigned seed) : _random(seed) {}

    std::string make() {
        _objects = true;
        const std::string objects = classes(0);
        _objects = false;
        const std::string interactions = classes(0), spaces = "(space S (dimension d)) " + comment() + "(space T)";
        return withMom(objects, interactions, chance(2) ? spaces : "(space T) (space S)");
    }

private:
    bool chance(unsigned of) { return _random() % of == 0; }
    std::string name(char letter) { return std::string(1, static_cast<char>(letter + (chance(2) ? 0 : 'a' - 'A'))); }
    std::string comment() {
        const std::string text = ";; " + std::to_string(_random() % 40) + '\n';
        return !chance(3) ? "" : chance(2) ? '\n' + text : text;
    }
    /// Mostly the same for the same name.
    std::string delivery(const std::string &name) {
        const bool usual = (RtiStringUtility::toupper(name)[0] & 1) != 0;
        const bool isOdd = chance(6);
        return (usual != isOdd ? " reliable" : " RTI_BEST_EFFORT") + std::string(usual ? " receive S" : " timestamp");
    }
    /// Appends one part at a time, since compilers evaluate the operands of + in different orders.
    std::string classes(int depth) {
        std::string text;
        for (const char letter : {'A', 'B', 'X'}) {
            if (depth == 3 || chance(2))
                continue;
            const std::string own = name(letter);
            text += comment();
            text += "(class " + own;
            text += _objects ? "" : delivery(own);
            text += ' ' + comment();
            for (const char letterOfMember : {'A', 'B'}) {
                if (chance(2))
                    continue;
                const std::string member = name(letterOfMember) + std::to_string(depth);
                text += _objects ? "(attribute " + member + delivery(member) : "(parameter " + member;
                text += ')' + comment();
            }
            text += classes(depth + 1);
            text += comment();
            text += ')' + comment();
        }
        return text;
    }

    std::mt19937 _random;
    bool _objects = true;
};

TEST(Merge, OfRandomModulesLoadsWithAllThatTheyDeclare) {
    RandomModules random(11);
    std::size_t numMerged = 0;
    for (std::size_t i = 0; i < rounds(100); ++i) {
        std::vector<std::string> texts;
        while (texts.size() < 2)
            if (std::string text = random.make(); Checker(text).findsNoError())
                texts.push_back(std::move(text));
        ASSERT_EQ(faultOfMerge(texts), "") << texts[0] << "----\n" << texts[1];
        std::size_t conflicts = 0;
        mergedText(texts, conflicts);
        numMerged += conflicts == 0 ? 1 : 0;
    }
    EXPECT_GE(numMerged, rounds(30));
    EXPECT_LT(numMerged, rounds(100));
}

/// Also if a class and its superclass have a member of one name, so that the file does not load.
TEST(Merge, OfAFileAndAPartOfItHasNoConflict) {
    RandomModules random(7);
    std::mt19937 choice(7);
    for (int numMerged = 0; numMerged < 40;) {
        const std::string text = std::regex_replace(random.make(), std::regex("(attribute [A-Yabxy])[12]"), "$010");
        bool isGood = true;
        Checker(text).forEachFinding([&isGood](const Finding &finding) {
            isGood = isGood && finding.rule == &ruleOf(RuleId::inheritedMember);
            return isGood;
        });
        if (!isGood)
            continue;
        ++numMerged;
        const std::vector<ExtractedClasses> classes = singleClasses(outlineOf(text));
        const std::string part = extractedFrom(text, classes[choice() % classes.size()]);
        std::size_t conflicts = 0, inOtherOrder = 0;
        mergedText({text, part}, conflicts);
        mergedText({part, text}, inOtherOrder);
        ASSERT_EQ(conflicts + inOtherOrder, 0U) << text << "----\n" << part;
    }
}

TEST(Merge, OfManyCommentsThatBeginAlikeTakesLittleTime) {
    const auto withComments = [](const std::string &name) {
        std::string text = "(FED (Federation F) (FEDversion v)\n";
        for (int i = 0; i < 20000; ++i)
            text += ";; ----\n;; " + name + std::to_string(i) + "\n\n";
        return text + "(spaces))";
    };
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(commentsIn(merged({withComments("a"), withComments("b")})).size(), 80000U);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(3)); // 5 s if it is quadratic
}

TEST(Merge, OfTwoExtractsIsTheExtractOfAllTheirClasses) {
    const std::string text = example("harbour.fed");
    const std::vector<ExtractedClasses> classes = singleClasses(outlineOf(text));
    std::mt19937 random(5);
    for (int i = 0; i < 12; ++i) {
        ExtractedClasses first, second, both;
        first.subclasses = second.subclasses = both.subclasses = i % 2 == 0;
        for (int n = 0; n < 8; ++n) {
            ExtractedClasses one = classes[random() % classes.size()];
            both.objects.insert(one.objects.begin(), one.objects.end());
            both.interactions.insert(one.interactions.begin(), one.interactions.end());
            (n % 2 == 0 ? first : second).objects.merge(one.objects);
            (n % 2 == 0 ? first : second).interactions.merge(one.interactions);
        }
        const std::string result = merged({extractedFrom(text, first), extractedFrom(text, second)});
        EXPECT_LE(difference(extractedFrom(text, both), result), Comparison::Verdict::renumbered);
    }
}

TEST(Merge, KeepsEachCommentOfAllFiles) {
    std::mt19937 random(3);
    for (int i = 0; i < 10; ++i) {
        const std::string first = manyComments(example(i % 2 == 0 ? "minimal.fed" : "harbour.fed"), "one#", random);
        const std::string second = manyComments(example("harbour.fed"), "two#", random);
        std::vector<std::string> expected = commentsIn(first), kept = commentsIn(merged({first, second}, true));
        const std::vector<std::string> more = commentsIn(second);
        expected.insert(expected.end(), more.begin(), more.end());
        std::sort(kept.begin(), kept.end());
        for (const std::string &comment : expected)
            EXPECT_TRUE(std::binary_search(kept.begin(), kept.end(), comment)) << comment;
        const auto isOfFirst = [](const std::string &comment) { return comment.find("one#") != std::string::npos; };
        EXPECT_EQ(std::count_if(kept.begin(), kept.end(), isOfFirst),
                  std::count_if(expected.begin(), expected.end(), isOfFirst));
    }
}

TEST(Merge, KeepsLineEndsAndByteOrderMarkOfTheFirst) {
    const std::string text = "\xEF\xBB\xBF;; one\r\n(FED (Federation F) (FEDversion v)\r\n)\r\n";
    EXPECT_EQ(merged({text, "\xEF\xBB\xBF;; two\n(FED (Federation F) (FEDversion v) (spaces\n(space S)\n))"}),
              "\xEF\xBB\xBF;; one\r\n;; two\r\n(FED\r\n  (Federation F)\r\n  (FEDversion v)\r\n  (spaces\r\n    (space "
              "S)\r\n  )\r\n)\r\n");
}

TEST(Extract, KeepsWhatTheClassesNeed) {
    const std::string text =
        withMom("(class A (attribute a reliable receive S) (class B (attribute b reliable receive T) (class C)) (class "
                "Manager (attribute m reliable receive U)))(class D (attribute d reliable receive V))",
                "(class A reliable receive W (parameter p))", "(space S)(space T)(space U)(space V)(space W)(space X)");
    const std::string nothing = extractedFrom(text, {});
    EXPECT_EQ(difference(replaced(example("minimal.fed"), "(spaces", "(spaces (space X)"), nothing),
              Comparison::Verdict::same);
    const std::string b = extractedFrom(text, {{"OBJECTROOT.A.B"}, {}, false});
    EXPECT_EQ(
        difference(withMom("(class A (attribute a reliable receive S) (class B (attribute b reliable receive T)))", "",
                           "(space S)(space T)(space X)"),
                   b),
        Comparison::Verdict::same);
    const std::string all = extractedFrom(text, {{"OBJECTROOT"}, {"INTERACTIONROOT"}, true});
    EXPECT_EQ(all, formattedText(text));
    EXPECT_NE(extractedFrom(text, {{"OBJECTROOT.A.B"}, {}, true}).find("(class C)"), std::string::npos);
}

TEST(ModuleCommands, WriteAFileWholeOrNotAtAll) {
    const TemporaryFile one(withMom("(class A (attribute a reliable receive))"));
    const TemporaryFile other(withMom("(class A (attribute a reliable timestamp))"));
    const TemporaryFile open("(FED (Federation F)"), output("before");
    std::ostringstream out, err;
    const Console console{out, err};
    EXPECT_EQ(merge({{one.path(), other.path()}, output.path()}, console), wrong);
    EXPECT_NE(err.str().find(other.path() + ":"), std::string::npos) << err.str();
    EXPECT_EQ(merge({{one.path(), open.path()}, output.path()}, console), wrong);
    EXPECT_EQ(merge({{one.path(), "/nowhere"}, output.path()}, console), cannotWork);
    EXPECT_EQ(extract({one.path(), {"A", "nothing"}, output.path()}, console), wrong);
    EXPECT_EQ(extract({open.path(), {"A"}, output.path()}, console), wrong);
    EXPECT_EQ(readFile(output.path()), "before");
    err.str("");
    EXPECT_EQ(extract({one.path(), {"objectroot.a"}, output.path()}, console), done);
    EXPECT_EQ(err.str() + out.str(), "");
    EXPECT_EQ(readFile(output.path()), formattedText(readFile(one.path())));
    EXPECT_EQ(merge({{output.path(), one.path()}}, console), done);
    EXPECT_EQ(out.str(), readFile(output.path()));
    const std::string same = ": the merged model, compared with this one: same, no handle moved\n";
    EXPECT_EQ(err.str(), output.path() + same + one.path() + same);
    const TemporaryFile broken(replaced(formattedText(readFile(one.path())), "(class RTIprivate)",
                                        "(class RTIprivate) (attribute x reliable none)"));
    err.str("");
    EXPECT_EQ(merge({{broken.path()}}, console), wrong);
    EXPECT_NE(err.str().find(": same, as far as it can be understood\nrtifed: the result: the library"),
              std::string::npos)
        << err.str();
    EXPECT_EQ(err.str().find("see rtifed check"), std::string::npos) << err.str();
}

TEST(ModuleCommands, ReplaceTheirResultInAFolderAndNothingElse) {
    const std::string folder = ::testing::TempDir() + "merged-folder", all = folder + "/all.fed";
    std::filesystem::create_directory(folder);
    std::ostringstream out, err;
    const auto mergeFolder = [&](const std::string &classes) {
        std::ofstream(folder + "/b.fed") << withMom(classes);
        return merge({{folder}, folder + "/../merged-folder/all.fed"}, Console{out, err});
    };
    const std::string with = "(class A (attribute a reliable receive)) ;; kept", more = with + "\n(class B)";
    EXPECT_EQ(mergeFolder(with), done) << err.str();
    EXPECT_EQ(mergeFolder(more), done) << err.str();
    EXPECT_EQ(readFile(all), formattedText(withMom(more)));
    for (const char *const other : {"(class A (attribute a reliable receive)) ;; kept", "(class A) ;; kept\n(class B)",
                                    "(class A (attribute a reliable receive)) (class B)",
                                    "(class A (attribute a best_effort receive)) ;; kept\n(class B)"})
        EXPECT_THROW(mergeFolder(other), CannotWork) << other;
    std::ofstream(all) << "no model";
    EXPECT_THROW(mergeFolder(more), CannotWork);
    EXPECT_EQ(readFile(all), "no model");
    std::filesystem::remove_all(folder);
}
