#pragma once

#include "tool/check/Rule.hh"
#include "tool/control/Pattern.hh"
#include "tool/model/DeliveryWords.hh"

#include <array>
#include <optional>
#include <string>
#include <vector>

/// What becomes of the findings of a rule.
enum class Level : unsigned char { off, warning, error };

const char *nameOf(Level level);

/// A value, and where it was set: `.rtifed.toml:3:15`, `--rule`, or `default`.
template <class Value>
struct Setting {
    Value value;
    std::string origin;
};

/// The names that a project may have a pattern for; the rules about them are in the same order, from RuleId::className
/// on.
enum class NameKind : unsigned char { objectOrInteractionClass, attribute, parameter, space };
inline constexpr std::array<const char *, 4> kNameKeys = {"class", "attribute", "parameter", "space"};

const Rule &ruleOf(NameKind kind);

/// What a project fixes for a class and all classes below it.
struct Subtree {
    std::string className; ///< With or without its root.
    std::string origin;
    std::optional<std::string> prefix = {};
    const DeliveryWord *transportation = nullptr; ///< Null if it is not fixed, as the ordering.
    const DeliveryWord *ordering = nullptr;
};

/// What holds for one file.
struct Settings {
    static constexpr const char *kDefault = "default"; ///< The origin of what is not set.

    Settings(); ///< The defaults.

    Level level(const Rule &rule) const { return levels[rule.index].value; }

    /// Sets the level of a rule for a reason that counts more than those so far.
    void setLevel(const Rule &rule, Level level, std::string origin);

    /// Sets the pattern of names, which switches its rule on, unless the configuration sets its level.
    void setPattern(NameKind kind, Setting<Pattern> pattern);

    /// Fixes properties of a subtree, which switches their rules on, unless the configuration sets their levels. Those
    /// of the same class that were fixed before and are not fixed again remain.
    void setSubtree(Subtree subtree);

    std::vector<Setting<Level>> levels; ///< By the index of the rule.
    std::array<std::optional<Setting<Pattern>>, kNameKeys.size()> patterns;
    std::vector<Subtree> subtrees;
    std::vector<std::string> sources; ///< The configuration and its sections that hold for the file, for people.

private:
    void switchOn(const Rule &rule, const std::string &origin);

    std::vector<bool> _fixed; // whether the level was set, by the index of the rule
};

/// Returns the level of this name, or nothing.
std::optional<Level> findLevel(std::string_view name);
