#include "tool/check/Warnings.hh"

#include "fed/storage/RtiFedName.hh"
#include "infrastructure/RtiFedLimits.hh"
#include "infrastructure/RtiStringUtility.hh"
#include "tool/check/NameScan.hh"
#include "tool/check/Suggestion.hh"
#include "tool/model/ClassTrees.hh"
#include "tool/model/Names.hh"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <unordered_map>

namespace {

/// The place where a name is declared. Sorting brings the names that differ in letter case only together; the order is
/// by hash, which is faster than by text.
struct Place {
    RtiFedName name;
    RtiFedSpan span;

    bool operator<(const Place &other) const {
        if (name.hash() != other.name.hash())       // equivalent: any order that brings the same names together
            return name.hash() < other.name.hash(); // equivalent: they differ
        // unreached: no two names with the same hash are known
        return !RtiFedName::equal(name.text(), other.name.text()) &&
               RtiStringUtility::toupper(name.text()) < RtiStringUtility::toupper(other.name.text());
    }
};

/// The spellings of one name in a text.
///
/// The idea: the spelling of most places is the usual one, the earliest of equally many; each other spelling is
/// reported once, at its first place. A name may have very many spellings, and each place is compared with all of them,
/// so that only the first sixteen are kept.
class Spellings {
public:
    struct Spelling {
        std::string_view name;
        RtiFedSpan first; ///< Its first place.
        std::size_t count;
    };

    void add(const Place &place) {
        const auto known = std::find_if(_spellings.begin(), _spellings.end(), [&place](const Spelling &spelling) {
            return spelling.name == place.name.text();
        });
        if (known == _spellings.end()) {
            if (_spellings.size() < kMost)                                // equivalent: a guess at what is enough
                _spellings.push_back({place.name.text(), place.span, 1}); // equivalent: any number for all
            return;
        }
        ++known->count;
        if (place.span.begin < known->first.begin) // equivalent: no two places are the same
            known->first = place.span;
    }

    /// Calls `visit` with each unusual spelling and the usual one.
    template <class Visit>
    void forEachUnusual(Visit visit) const {
        const auto isLess = [](const Spelling &a, const Spelling &b) {
            // equivalent: the numbers, or else the places differ
            return a.count != b.count ? a.count < b.count : a.first.begin > b.first.begin;
        };
        const auto usual = std::max_element(_spellings.begin(), _spellings.end(), isLess);
        for (const Spelling &spelling : _spellings)
            if (&spelling != &*usual)
                visit(spelling, *usual);
    }

private:
    static constexpr std::size_t kMost = 16; // spellings. equivalent: likewise a guess

    std::vector<Spelling> _spellings;
};

/// Makes the warnings of one text.
class Warner {
public:
    explicit Warner(const Checker &text)
        : _text(text), _database(text.database()), _names(text.scanNames()),
          _allNamesKnown(!text.finds(RuleId::unknownSpace) && !text.finds(RuleId::shiftedWords) &&
                         !text.finds(RuleId::swappedWords)) {}

    std::vector<Finding> run() {
        for (const RtiSpaceHandle &handle : _database.getRoutingSpaceHandleSet())
            warnOfSpace(*_database.find(handle));
        warnOfSpaceReferences();
        warnOfRoot<Objects>();
        warnOfRoot<Interactions>();
        warnOfPrivilege();
        warnOfNames<Objects>();
        warnOfNames<Interactions>();
        std::stable_sort(_findings.begin(), _findings.end(),
                         [](const Finding &a, const Finding &b) { return a.span->begin < b.span->begin; });
        return std::move(_findings);
    }

private:
    Finding &warn(RuleId rule, RtiFedSpan span, std::string text) {
        Finding finding{&ruleOf(rule), span, std::move(text)};
        // unreached: more warnings than a test can wait for in each run
        if (_findings.size() < kMaxErrors)
            return _findings.emplace_back(std::move(finding));
        return _surplus.emplace(std::move(finding)); // unreached: likewise
    }

    RtiFedSpan placeOf(Declarations::Record record) const { return *_text.declarations().span(record); }

    void warnOfSpace(const RtiFedSpace &space) {
        if (space.getHandle()._value > _names.numSpaces()) // that of the MOM, which the database adds
            return;
        warnOfBlank(space.getName(), &space);
        const RtiFedSpace *found = _database.find(_database.getRoutingSpaceHandle(space.getName()));
        if (found != &space)
            return warnOfHidden(RuleId::repeatedSpace, "space", space, *found);
        if (_allNamesKnown && !isUsed(space))
            warn(RuleId::unusedSpace, placeOf(&space),
                 "the space " + inQuotes(space.getName()) + " is unused: no attribute or interaction class names it");
        if (space.getNumberOfDimensions() == 0)
            warn(RuleId::spaceWithoutDimensions, placeOf(&space),
                 "the space " + inQuotes(space.getName()) + " has no dimensions");
        std::unordered_map<std::string, const RtiFedDimension *> first;
        for (unsigned long i = 0; i < space.getNumberOfDimensions(); ++i) {
            const RtiFedDimension &dimension = *space.getDimension(i);
            warnOfBlank(dimension.getName(), &dimension);
            const auto [known, isNew] = first.emplace(RtiStringUtility::toupper(dimension.getName()), &dimension);
            if (!isNew)
                warnOfHidden(RuleId::hiddenDimension, "dimension", dimension, *known->second);
        }
    }

    /// Whether a record has the space. In a text without errors each use is one of a record; what the text does not
    /// say about the MOM, the database adds.
    bool isUsed(const RtiFedSpace &space) {
        if (_text.findsNoError() && _names.isUsed(space.getName()))
            return true;
        if (!_usedSpaces) {
            _usedSpaces.emplace();
            forEachWithSpace([this](Declarations::Record, RtiSpaceHandle used) { _usedSpaces->insert(used); });
        }
        return _usedSpaces->count(space.getHandle()) > 0;
    }

    void warnOfBlank(std::string_view name, Declarations::Record record) {
        if (const std::string blank = RtiFedParser::blankLookalikeIn(name); !blank.empty())
            warn(RuleId::blankInName, placeOf(record), "the name " + inQuotes(name) + " contains " + blank);
    }

    template <class Record>
    void warnOfHidden(RuleId rule, const std::string &noun, const Record &record, const Record &found) {
        warn(rule, placeOf(&record),
             "duplicate " + noun + " " + inQuotes(record.getName()) + ": it can be found by its handle only")
            .notes.push_back({placeOf(&found), "the first one, which the name finds, is here"});
    }

    /// Calls `visit` with the record and the space of each attribute and interaction class.
    template <class Visit>
    void forEachWithSpace(Visit visit) const {
        for (const RtiObjectClassHandle &handle : _database.getObjectClassHandleSet())
            for (const RtiFedAttribute &attribute : _database.find(handle)->members())
                visit(&attribute, attribute.getSpace());
        for (const RtiInteractionClassHandle &handle : _database.getInteractionClassHandleSet())
            visit(_database.find(handle), _database.find(handle)->getDefaultSpace());
    }

    /// Warns of each spelling by which attributes and interaction classes name a space that is declared in another
    /// letter case. Spellings of duplicate spaces were reported already.
    void warnOfSpaceReferences() {
        if (!_names.spaceSpellingsVary())
            return; // equivalent: only speed
        std::set<std::string> declared;
        for (const RtiSpaceHandle &handle : _database.getRoutingSpaceHandleSet())
            declared.insert(_database.find(handle)->getName());
        std::map<std::string, std::pair<std::vector<RtiFedSpan>, const RtiFedSpace *>> unusual; // by spelling
        forEachWithSpace([&](Declarations::Record record, RtiSpaceHandle handle) {
            const RtiFedSpace *space = _database.find(handle);
            const auto place = space ? _text.declarations().span(record, Declarations::space) : std::nullopt;
            if (!place || !_text.declarations().span(space))
                return;
            const std::string written = _text.declarations().written(record, Declarations::space);
            if (declared.count(written) > 0)
                return;
            auto &[places, named] = unusual[written];
            places.push_back(*place);
            named = space;
        });
        for (auto &[written, reference] : unusual)
            warnOfCase("space", written, std::move(reference.first), reference.second->getName(),
                       *_text.declarations().span(reference.second), "declared");
    }

    /// Warns at the first of the places of a spelling; the fix is for all of them.
    void warnOfCase(const std::string &noun, std::string_view spelling, std::vector<RtiFedSpan> places,
                    std::string_view usual, RtiFedSpan usualPlace, const std::string &verb) {
        // equivalent: no two places are the same
        std::sort(places.begin(), places.end(), [](RtiFedSpan a, RtiFedSpan b) { return a.begin < b.begin; });
        Finding &finding = warn(RuleId::letterCase, places.front(),
                                "the " + noun + " " + inQuotes(spelling) + " is " + verb + " as " + inQuotes(usual));
        finding.notes.push_back({usualPlace, inQuotes(usual) + " is declared here"});
        for (const RtiFedSpan place : places)
            finding.fix.edits.push_back({place, asWord(usual)});
        finding.fix.text = "spell " + inQuotes(spelling) + " as " + inQuotes(usual) +
                           (places.size() > 1 ? " at " + std::to_string(places.size()) + " places" : "");
    }

    template <class Tree>
    void warnOfRoot() {
        const auto *root = Tree::find(_database, Tree::kind.root);
        if (!root || Tree::find(_database, std::string(Tree::kind.root) + ".RTIprivate"))
            return;
        Finding &finding = warn(RuleId::noRtiPrivate, placeOf(root),
                                std::string("\"") + Tree::kind.root + "\" has no class \"RTIprivate\"");
        for (const auto &handle : root->getChildrenClasses())
            if (noteIfNear(finding, *_database.find(handle), "RTIprivate"))
                return;
    }

    void warnOfPrivilege() {
        const auto *root = Objects::find(_database, Objects::kind.root);
        if (!root || root->attributeExists("privilegeToDelete"))
            return;
        Finding &finding =
            warn(RuleId::noPrivilegeToDelete, placeOf(root), "\"ObjectRoot\" has no attribute \"privilegeToDelete\"");
        for (const RtiFedAttribute &attribute : root->members())
            if (noteIfNear(finding, attribute, "privilegeToDelete")) {
                // Under its name in later standards, it is the same; but in a file that loads, programs may know it.
                const std::string name = RtiStringUtility::toupper(attribute.getName());
                const bool isNewerName = name == "HLAPRIVILEGETODELETEOBJECT" || name == "PRIVILEGETODELETEOBJECT" ||
                                         name == "HLAPRIVILEGETODELETE";
                finding.fix.isSafe = isNewerName && !_text.findsNoError();
                return;
            }
    }

    template <class Record>
    bool noteIfNear(Finding &finding, const Record &record, const std::string &missing) const {
        return !noteSimilar(finding, placeOf(&record), std::string(lastComponent(record.getName())), {missing}).empty();
    }

    template <class Tree>
    void warnOfNames() {
        constexpr bool ofObjects = Tree::kind.membersHaveProperties;
        constexpr auto classKind = ofObjects ? NameScan::objectClass : NameScan::interactionClass;
        constexpr auto memberKind = ofObjects ? NameScan::attribute : NameScan::parameter;
        if (!_names.anyUnusual(classKind) && !_names.anyUnusual(memberKind))
            return; // equivalent: only speed
        std::vector<Place> classes, members;
        for (const auto &handle : Tree::handles(_database)) {
            const auto &node = *_database.find(handle);
            add(classes, classKind, &node, lastComponent(node.nameText()));
            for (const auto &member : node.members())
                add(members, memberKind, &member, member.nameText());
        }
        warnOfSpellings(classes, Tree::kind.className);
        warnOfSpellings(members, Tree::kind.memberName);
    }

    /// Adds the place of a name that may be spelt in several ways.
    void add(std::vector<Place> &places, NameScan::Kind kind, Declarations::Record record, std::string_view name) {
        if (_names.mayContainBlanks())
            warnOfBlank(name, record);
        if (const RtiFedName hashed(name); _names.mayVary(kind, hashed))
            places.push_back({hashed, placeOf(record)});
    }

    void warnOfSpellings(std::vector<Place> &places, const std::string &noun) {
        std::sort(places.begin(), places.end());
        for (auto begin = places.begin(); begin != places.end();) {
            const auto end = std::find_if(begin, places.end(), [begin](const Place &place) { return *begin < place; });
            Spellings spellings;
            for (auto place = begin; place != end; ++place)
                spellings.add(*place);
            spellings.forEachUnusual([&, this](const Spellings::Spelling &unusual, const Spellings::Spelling &usual) {
                std::vector<RtiFedSpan> spans;
                for (auto place = begin; place != end; ++place)
                    if (place->name.text() == unusual.name)
                        spans.push_back(place->span);
                warnOfCase(noun, unusual.name, std::move(spans), usual.name, usual.first, "spelt elsewhere");
            });
            begin = end;
        }
    }

    const Checker &_text;
    const RtiFedDatabase &_database;
    const NameScan _names;
    const bool _allNamesKnown; // else a word that was not understood may be the name of a space
    std::optional<std::set<RtiSpaceHandle>> _usedSpaces; // filled on demand
    std::vector<Finding> _findings;
    std::optional<Finding> _surplus; // the last one that is not kept
};

} // namespace

std::vector<Finding> warningsOf(const Checker &text) {
    return text.parser().numErrors() > 0 ? std::vector<Finding>() : Warner(text).run();
}
