#include "tool/control/Settings.hh"

#include "fed/storage/RtiFedName.hh"

#include <algorithm>

const char *nameOf(Level level) {
    return level == Level::off ? "off" : nameOf(level == Level::error ? Severity::error : Severity::warning);
}

const Rule &ruleOf(NameKind kind) {
    return ruleOf(static_cast<RuleId>(static_cast<std::size_t>(RuleId::className) + static_cast<std::size_t>(kind)));
}

Settings::Settings() : _fixed(allRules().size()) {
    for (const Rule &rule : allRules())
        levels.push_back({rule.isHabit()                       ? Level::off
                          : rule.severity == Severity::warning ? Level::warning
                                                               : Level::error,
                          kDefault});
}

void Settings::setLevel(const Rule &rule, Level level, std::string origin) {
    levels[rule.index] = {level, std::move(origin)};
    _fixed[rule.index] = true;
}

void Settings::setPattern(NameKind kind, Setting<Pattern> pattern) {
    switchOn(ruleOf(kind), pattern.origin);
    patterns[static_cast<std::size_t>(kind)] = std::move(pattern);
}

void Settings::setSubtree(Subtree subtree) {
    if (subtree.prefix)
        switchOn(ruleOf(RuleId::namePrefix), subtree.origin);
    if (subtree.transportation)
        switchOn(ruleOf(RuleId::fixedTransportation), subtree.origin);
    if (subtree.ordering)
        switchOn(ruleOf(RuleId::fixedOrdering), subtree.origin);
    const auto earlier = std::find_if(subtrees.begin(), subtrees.end(), [&](const Subtree &other) {
        return RtiFedName::equal(other.className, subtree.className);
    });
    if (earlier == subtrees.end()) {
        subtrees.push_back(std::move(subtree));
        return;
    }
    if (!subtree.prefix)
        subtree.prefix = earlier->prefix;
    if (!subtree.transportation)
        subtree.transportation = earlier->transportation;
    if (!subtree.ordering)
        subtree.ordering = earlier->ordering;
    *earlier = std::move(subtree);
}

void Settings::switchOn(const Rule &rule, const std::string &origin) {
    if (!_fixed[rule.index])
        levels[rule.index] = {Level::warning, origin};
}

std::optional<Level> findLevel(std::string_view name) {
    for (const Level level : {Level::off, Level::warning, Level::error})
        if (name == nameOf(level))
            return level;
    return {};
}
