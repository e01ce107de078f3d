#include "tool/control/HabitFindings.hh"

#include "fed/storage/RtiFedName.hh"
#include "infrastructure/RtiFedLimits.hh"
#include "tool/model/ClassTrees.hh"
#include "tool/model/Names.hh"

#include <algorithm>
#include <unordered_map>

namespace {

/// Checks one text.
class HabitCheck {
public:
    HabitCheck(const Checker &text, const Settings &settings)
        : _text(text), _database(text.database()), _settings(settings) {}

    std::vector<Finding> run() {
        for (const RtiSpaceHandle &handle : _database.getRoutingSpaceHandleSet())
            checkName(NameKind::space, *_database.find(handle), "space");
        checkTree<Objects>(NameKind::attribute);
        checkTree<Interactions>(NameKind::parameter);
        return std::move(_findings);
    }

private:
    /// What is fixed for a class, each by the innermost subtree that fixes it; null if nothing does.
    struct Fixed {
        const Subtree *prefix = nullptr, *transportation = nullptr, *ordering = nullptr;
        bool exempt = false;
    };

    bool isOn(RuleId rule) const { return _settings.level(ruleOf(rule)) != Level::off; }

    /// Each class is visited after its superclass, so that what holds for the superclass is known.
    template <class Tree>
    void checkTree(NameKind memberKind) {
        std::unordered_map<const typename Tree::Node *, Fixed> fixed;
        std::unordered_map<const typename Tree::Node *, std::vector<const Subtree *>> roots;
        for (const Subtree &subtree : _settings.subtrees)
            if (const auto *node = Tree::find(_database, subtree.className))
                roots[node].push_back(&subtree);
        for (const auto &handle : Tree::handles(_database)) {
            const auto &node = *_database.find(handle);
            const auto *parent = node.getParentClass();
            Fixed here = parent ? fixed[parent] : Fixed{};
            if (const auto root = roots.find(&node); root != roots.end())
                for (const Subtree *subtree : root->second)
                    fix(here, *subtree);
            const bool isRoot = !parent && RtiFedName::equal(node.getName(), Tree::kind.root);
            here.exempt = here.exempt || isOfRti(lastComponent(node.getName()), parent, Tree::kind.root);
            fixed[&node] = here;
            if (!here.exempt)
                checkClass(node, isRoot, here, memberKind, Tree::kind);
        }
    }

    /// Whether a class begins a subtree of fixed names: the MOM or the class for the RTI itself.
    template <class Node>
    static bool isOfRti(std::string_view name, const Node *parent, const char *root) {
        return (!parent || RtiFedName::equal(parent->getName(), root)) &&
               (RtiFedName::equal(name, "Manager") || RtiFedName::equal(name, "RTIprivate"));
    }

    static void fix(Fixed &fixed, const Subtree &subtree) {
        if (subtree.prefix)
            fixed.prefix = &subtree;
        if (subtree.transportation)
            fixed.transportation = &subtree;
        if (subtree.ordering)
            fixed.ordering = &subtree;
    }

    template <class Node>
    void checkClass(const Node &node, bool isRoot, const Fixed &fixed, NameKind memberKind, const TreeKind &kind) {
        if (!isRoot) {
            checkName(NameKind::objectOrInteractionClass, node, kind.className);
            checkPrefix(node, fixed, kind.className);
            checkDelivery(node, fixed, kind.className);
        }
        for (const auto &member : node.members()) {
            if (isRoot && RtiFedName::equal(member.getName(), "privilegeToDelete"))
                continue;
            checkName(memberKind, member, kind.memberName);
            checkDelivery(member, fixed, kind.memberName);
        }
    }

    template <class Record>
    void checkName(NameKind kind, const Record &record, const std::string &noun) {
        const auto &pattern = _settings.patterns[static_cast<std::size_t>(kind)];
        const std::string_view name = lastComponentOf(record);
        const auto place = _text.declarations().span(&record);
        // equivalent: what a rule finds that is off is removed later
        if (!pattern || !place || _settings.level(ruleOf(kind)) == Level::off || pattern->value.matches(name))
            return;
        report(ruleOf(kind), *place,
               "the name of the " + noun + " " + inQuotes(name) + " does not match " + inQuotes(pattern->value.text()),
               ' ' + inQuotes(name));
    }

    template <class Node>
    void checkPrefix(const Node &node, const Fixed &fixed, const std::string &noun) {
        const std::string_view name = lastComponent(node.getName());
        if (!fixed.prefix || !isOn(RuleId::namePrefix))
            return;
        const std::string &prefix = *fixed.prefix->prefix;
        if (name.substr(0, prefix.size()) != prefix)
            report(ruleOf(RuleId::namePrefix), *_text.declarations().span(&node),
                   "the name of the " + noun + " " + inQuotes(name) + " does not begin with " + inQuotes(prefix) +
                       ", the prefix in the subtree of " + inQuotes(fixed.prefix->className),
                   ' ' + inQuotes(name));
    }

    void checkDelivery(const RtiFedAttribute &attribute, const Fixed &fixed, const std::string &noun) {
        checkDelivery(attribute, attribute.getTransport(), attribute.getOrdering(), fixed, noun);
    }
    void checkDelivery(const RtiFedInteractionClass &node, const Fixed &fixed, const std::string &noun) {
        checkDelivery(node, node.getDefaultTransport(), node.getDefaultOrdering(), fixed, noun);
    }
    void checkDelivery(const RtiFedObjectClass &, const Fixed &, const std::string &) {}
    void checkDelivery(const RtiFedParameter &, const Fixed &, const std::string &) {}

    template <class Record>
    void checkDelivery(const Record &record, RtiTransportationHandle transportation, RtiOrderingHandle ordering,
                       const Fixed &fixed, const std::string &noun) {
        const std::string owner = " of the " + noun + " " + inQuotes(lastComponentOf(record));
        if (fixed.transportation)
            checkWord(RuleId::fixedTransportation, &record, Declarations::transportation, transportation,
                      *fixed.transportation->transportation, *fixed.transportation, "transportation", owner);
        if (fixed.ordering)
            checkWord(RuleId::fixedOrdering, &record, Declarations::ordering, ordering, *fixed.ordering->ordering,
                      *fixed.ordering, "ordering", owner);
    }

    /// An unknown word, whose handle is 0, was reported as such.
    template <class Handle>
    void checkWord(RuleId rule, Declarations::Record record, Declarations::Argument argument, const Handle &found,
                   const DeliveryWord &wanted, const Subtree &subtree, const std::string &noun,
                   const std::string &owner) {
        const auto handle = static_cast<unsigned long>(found._value);
        if (!isOn(rule) || handle == 0 || handle == wanted.handle)
            return;
        const RtiFedSpan place = *_text.declarations().span(record, argument); // the text has no syntax errors
        report(ruleOf(rule), place,
               "the " + noun + owner + " is fixed to " + wanted.shortForm + " in the subtree of " +
                   inQuotes(subtree.className),
               owner, {{place, wanted.shortForm}});
    }

    template <class Record>
    static std::string_view lastComponentOf(const Record &record) {
        return record.getName();
    }
    static std::string_view lastComponentOf(const RtiFedObjectClass &node) { return lastComponent(node.getName()); }
    static std::string_view lastComponentOf(const RtiFedInteractionClass &node) {
        return lastComponent(node.getName());
    }

    void report(const Rule &rule, RtiFedSpan place, std::string text, const std::string &particular,
                std::vector<Replacement> fix = {}) {
        Finding finding{&rule, place, std::move(text)};
        finding.setParticular(particular);
        finding.fix.edits = std::move(fix);
        // unreached: more findings than a test can wait for in each run
        if (_findings.size() < kMaxErrors)
            _findings.push_back(std::move(finding));
    }

    const Checker &_text;
    const RtiFedDatabase &_database;
    const Settings &_settings;
    std::vector<Finding> _findings;
};

} // namespace

std::vector<Finding> habitFindings(const Checker &text, const Settings &settings) {
    const auto &patterns = settings.patterns;
    const bool hasHabits = !settings.subtrees.empty() || std::any_of(patterns.begin(), patterns.end(),
                                                                     [](const auto &set) { return set.has_value(); });
    return !hasHabits || text.parser().numErrors() > 0 ? std::vector<Finding>() : HabitCheck(text, settings).run();
}
