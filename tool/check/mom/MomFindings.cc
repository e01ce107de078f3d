#include "tool/check/mom/MomFindings.hh"

#include "tool/check/mom/MomMatch.hh"

#include <algorithm>
#include <deque>

namespace {

/// What is missing at one place: in one class or, if nothing of a tree is there, in its root.
struct Gap {
    RtiFedSpan place;
    std::vector<std::string> details = {};
    std::size_t count = 0;
    bool wholeTree = false;
    std::vector<RtiFedParser::Note> notes = {};
};

template <class Tree>
constexpr const char *kSection = "objects";
template <>
constexpr const char *kSection<Interactions> = "interactions";

/// Finds what one tree lacks, and what is misspelt or in the wrong place.
template <class Tree>
class MomCheck {
public:
    explicit MomCheck(const Checker &text) : _text(text), _match(text.database()) {
        reportRoot();
        for (const Match &match : _match.all())
            if (match.required)
                check(match);
        const auto isMissing = [](const Match &match) { return !match.required || match.how == How::missing; };
        if (!_gaps.empty())
            _gaps.front().wholeTree = std::all_of(_match.all().begin(), _match.all().end(), isMissing);
    }

    std::vector<Finding> findings;

    /// In the order of the classes that the MOM requires.
    std::deque<Gap> takeGaps() { return std::move(_gaps); }

private:
    using Match = typename MomMatch<Tree>::Match;
    using How = typename MomMatch<Tree>::How;

    void report(RuleId rule, RtiFedSpan place, std::string text) {
        findings.push_back({&ruleOf(rule), place, std::move(text)});
    }

    void reportRoot() {
        const Match &root = _match.root();
        if (root.how != How::misspelt)
            return;
        const RtiFedSpan place = placeOf(root.node);
        report(RuleId::misspeltRoot, place,
               std::string("the root of the ") + Tree::kind.className + "es is " + inQuotes(root.node->getName()) +
                   ", expected " + inQuotes(root.name));
        findings.back().fix = {{{place, root.name}}, true};
    }

    void check(const Match &match) {
        if (match.how == How::missing)
            return addMissingClass(match);
        if (match.how == How::misspelt)
            reportMisspelt(*match.node, match.name, Tree::kind.className);
        else if (match.how == How::elsewhere)
            reportMisplaced(match);
        for (const auto &[member, meant] : match.misspeltMembers)
            reportMisspelt(*member, meant, Tree::kind.memberName);
        addMissingMembers(match);
    }

    template <class Record>
    void reportMisspelt(const Record &record, const std::string &meant, const std::string &noun) {
        const RtiFedSpan place = placeOf(&record);
        report(RuleId::momIncomplete, place,
               "the Management Object Model (MOM) has no " + noun + " " + inQuotes(lastComponent(record.getName())) +
                   didYouMean(meant));
        // If it is not sure, the record may be the federation's own: what is missing is added then.
        if (bestOf(lastComponent(record.getName()), {meant}).isSure)
            findings.back().fix = {{{place, meant}}, true};
    }

    void reportMisplaced(const Match &match) {
        const RtiFedSpan place = placeOf(match.node);
        const auto *const parent = match.node->getParentClass();
        const Match *const owner = match.existingOwner();
        const std::string note =
            inQuotes(match.name) + " is declared here, expected it in " + inQuotes(fullName(*match.owner));
        // If the superclass is missing around it, that is the mistake.
        if (owner != match.owner && owner && parent == owner->node)
            return gapAt(owner).notes.push_back({place, note});
        const std::string name = inQuotes(match.name);
        report(RuleId::momMisplaced, place,
               std::string("the ") + Tree::kind.className + " " + name + " of the MOM is " +
                   (parent ? "in " + inQuotes(parent->getName()) : "outside its root") + ", expected it in " +
                   inQuotes(fullName(*match.owner)));
        findings.back().setParticular(name);
        if (owner)
            findings.back().notes.push_back(
                {placeOf(owner->node), "it belongs in " + inQuotes(fullName(*match.owner))});
    }

    static std::string fullName(const Match &match) {
        return Tree::kind.root + (match.required ? '.' + match.required->className : std::string());
    }

    /// Adds a line for a missing class. The classes that are missing with it are only counted.
    void addMissingClass(const Match &match) {
        const Match *const owner = match.existingOwner();
        const bool excused = isExcused(match);
        std::vector<std::string> members = match.required->members;
        removeExcused(members, owner);
        if (excused && members.empty())
            return;
        Gap &gap = gapAt(owner);
        gap.count += members.size() + (excused ? 0 : 1);
        const std::string subject = std::string("the ") + Tree::kind.className + " " + match.required->className;
        const auto &all = _match.all();
        const auto isPart = [&](const Match &part) { return part.owner == &match && part.how == How::missing; };
        if (match.owner->how == How::missing && match.owner->required && !isExcused(*match.owner))
            return;
        if (excused)
            addMembers(gap, members, match);
        else if (std::any_of(all.begin(), all.end(), isPart))
            gap.details.push_back(subject + " with everything in it");
        else
            gap.details.push_back(subject +
                                  (members.empty() ? "" : " with the " + nounFor(members) + " " + joined(members)));
    }

    void addMissingMembers(const Match &match) {
        std::vector<std::string> members = match.missingMembers;
        removeExcused(members, &match);
        if (members.size() <= _text.numLostNames(offsetOf(match.node))) // they may be among those
            return;
        Gap &gap = gapAt(&match);
        gap.count += members.size();
        addMembers(gap, members, match);
    }

    void addMembers(Gap &gap, const std::vector<std::string> &members, const Match &match) {
        gap.details.push_back("the " + nounFor(members) + " " + joined(members) + " of the " + Tree::kind.className +
                              " " + match.required->className);
    }

    static std::string nounFor(const std::vector<std::string> &members) {
        return plural(members.size(), Tree::kind.memberName);
    }

    /// The gap in a class, or in the section of the tree if there is no class.
    Gap &gapAt(const Match *owner) {
        const RtiFedSpan place = owner ? placeOf(owner->node) : _text.parser().section(kSection<Tree>);
        const auto known =
            std::find_if(_gaps.begin(), _gaps.end(), [&](const Gap &gap) { return gap.place.begin == place.begin; });
        return known == _gaps.end() ? _gaps.emplace_back(Gap{place}) : *known;
    }

    bool isExcused(const Match &match) const { return mayBeDeclared(match.existingOwner(), match.name); }

    void removeExcused(std::vector<std::string> &members, const Match *owner) const {
        const auto isDeclared = [&](const std::string &member) { return mayBeDeclared(owner, member); };
        members.erase(std::remove_if(members.begin(), members.end(), isDeclared), members.end());
    }

    /// Whether text in a class or around it was not understood that may declare this name.
    bool mayBeDeclared(const Match *owner, const std::string &name) const {
        for (const auto *node = owner ? owner->node : nullptr; node; node = node->getParentClass())
            if (_text.mayBeDeclaredIn(offsetOf(node), name))
                return true;
        return _text.mayBeDeclaredIn(0, name);
    }

    /// The offset of the name of a class, by which the parser knows it.
    std::uint32_t offsetOf(const typename Tree::Node *node) const { return _text.offsetOfWord(placeOf(node)); }

    /// The place of the name of a class or member, which the text declares: nothing else is in the database.
    RtiFedSpan placeOf(Declarations::Record record) const { return *_text.declarations().span(record); }

    const Checker &_text;
    const MomMatch<Tree> _match;
    std::deque<Gap> _gaps;
};

Finding findingOf(Gap gap) {
    Finding finding{&ruleOf(RuleId::momIncomplete), gap.place,
                    "the Management Object Model (MOM) is incomplete, " + counted(gap.count, "name") +
                        (gap.count == 1 ? " is missing:" : " are missing:")};
    finding.details = std::move(gap.details);
    finding.notes = std::move(gap.notes);
    return finding;
}

/// Joins the gaps of the two trees at one place, and those of two trees that lack everything: that is one mistake.
void join(std::deque<Gap> &gaps, std::deque<Gap> interactions) {
    for (Gap &gap : interactions) {
        const auto same = std::find_if(gaps.begin(), gaps.end(), [&gap](const Gap &other) {
            return other.place.begin == gap.place.begin || (other.wholeTree && gap.wholeTree);
        });
        if (same == gaps.end()) {
            gaps.push_back(std::move(gap));
            continue;
        }
        if (same->place.begin != gap.place.begin)
            same->notes.push_back({gap.place, "the interaction classes are missing here"});
        same->count += gap.count;
        for (std::string &detail : gap.details)
            same->details.push_back(std::move(detail));
    }
}

} // namespace

std::vector<Finding> momFindings(const Checker &text) {
    MomCheck<Objects> objects(text);
    MomCheck<Interactions> interactions(text);
    std::vector<Finding> findings = std::move(objects.findings);
    for (Finding &finding : interactions.findings)
        findings.push_back(std::move(finding));
    std::deque<Gap> gaps = objects.takeGaps();
    join(gaps, interactions.takeGaps());
    for (Gap &gap : gaps)
        findings.push_back(findingOf(std::move(gap)));
    return findings;
}
