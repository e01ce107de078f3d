#include "tool/check/Suggestion.hh"
#include "tool/console/InputFile.hh"
#include "tool/console/Text.hh"
#include "tool/control/Configuration.hh"
#include "tool/control/TomlReader.hh"

#include <algorithm>
#include <set>

namespace {

constexpr std::size_t kLongestConfiguration = 1 << 18; // bytes of a configuration
constexpr std::size_t kMostSettings = 10000;           // sections, patterns and subtrees

/// Reads a TOML document into a configuration, and collects its faults: unknown keys, values of a wrong type, and what
/// makes no sense.
class ConfigurationReader : private TomlReader {
public:
    ConfigurationReader(std::string name, const std::string &text) : TomlReader(std::move(name), text) {}

    Configuration read() {
        Configuration configuration;
        const toml::table document = parse();
        forEachKey(document, {"rules", "naming", "subtree", "files"},
                   [&](const std::string &key, const toml::node &value) {
                       if (key != "files")
                           return readPartOf(key, value, configuration.all);
                       forEachTable(value, [&](const toml::table &section) {
                           configuration.sections.push_back(readSection(section));
                       });
                   });
        checkHabits();
        throwIfFaulty();
        return configuration;
    }

private:
    /// Calls `visit` with each table of an array of tables.
    template <class Visit>
    void forEachTable(const toml::node &node, Visit visit) {
        const toml::array *array = node.as_array();
        if (!array)
            return expected("an array of tables", node);
        for (const toml::node &element : *array) {
            if (const toml::table *table = element.as_table())
                visit(*table);
            else
                expected("a table", element);
            if (++_numTables > kMostSettings)
                return fault(element.source().begin,
                             "expected at most " + std::to_string(kMostSettings) + " sections, found more");
        }
    }

    void readPartOf(const std::string &key, const toml::node &value, Configuration::Part &part) {
        if (key == "rules")
            readRules(value, part);
        else if (key == "naming")
            readNaming(value, part);
        else
            forEachTable(value, [&](const toml::table &subtree) { readSubtree(subtree, part); });
    }

    void readRules(const toml::node &node, Configuration::Part &part) {
        const toml::table *rules = node.as_table();
        if (!rules)
            return expected("a table", node);
        for (const auto &[key, value] : *rules) {
            const Rule *rule = findRule(key.str());
            if (!rule)
                fault(key.source().begin, unknownRule(key.str()));
            const auto level = readChoice(value, {"off", "warning", "error"});
            if (rule && rule->isHabit() && level != "off")
                _wantedHabits.emplace_back(rule, value.source().begin);
            if (rule && level) // equivalent: but for sanitizers, since a configuration with a fault is not used
                part.levels.push_back({rule, {*findLevel(*level), originOf(value)}});
        }
    }

    void readNaming(const toml::node &node, Configuration::Part &part) {
        forEachKey(node, {kNameKeys.begin(), kNameKeys.end()}, [&](const std::string &key, const toml::node &value) {
            const auto kind =
                static_cast<NameKind>(std::find(kNameKeys.begin(), kNameKeys.end(), key) - kNameKeys.begin());
            _givenHabits.insert(&ruleOf(kind));
            if (const auto expression = readString(value))
                part.patterns.push_back({kind, {usable(Pattern::ofName(*expression), value), originOf(value)}});
        });
    }

    void readSubtree(const toml::table &table, Configuration::Part &part) {
        Subtree subtree{{}, originOf(table)};
        forEachKey(table, {"class", "prefix", "transportation", "ordering"},
                   [&](const std::string &key, const toml::node &value) {
                       if (key == "class")
                           subtree.className = readString(value).value_or("");
                       else if (key == "prefix")
                           subtree.prefix = readString(value);
                       else if (key == "transportation")
                           subtree.transportation = readWord(value, kTransportations);
                       else
                           subtree.ordering = readWord(value, kOrderings);
                   });
        bool fixes = false;
        for (const auto &[key, rule] :
             {std::pair("prefix", RuleId::namePrefix), std::pair("transportation", RuleId::fixedTransportation),
              std::pair("ordering", RuleId::fixedOrdering)})
            if (table.contains(key)) {
                _givenHabits.insert(&ruleOf(rule));
                fixes = true;
            }
        if (!table.contains("class"))
            fault(table.source().begin, "expected the key \"class\", the class whose subtree is meant");
        if (!fixes)
            fault(table.source().begin, "expected a prefix, a transportation or an ordering that is fixed");
        part.subtrees.push_back(std::move(subtree));
    }

    Configuration::Section readSection(const toml::table &table) {
        Configuration::Section section{{}, originOf(table), {}};
        forEachKey(table, {"paths", "rules", "naming", "subtree"},
                   [&](const std::string &key, const toml::node &value) {
                       if (key == "paths")
                           section.paths = readPaths(value);
                       else
                           readPartOf(key, value, section.part);
                   });
        if (!table.contains("paths"))
            fault(table.source().begin, "expected the key \"paths\", the files that the section is for");
        return section;
    }

    std::vector<Pattern> readPaths(const toml::node &node) {
        const toml::array *array = node.as_array();
        if (!array)
            return expected("an array of paths", node), std::vector<Pattern>();
        std::vector<Pattern> paths;
        for (const toml::node &element : *array)
            if (const auto path = readString(element))
                paths.push_back(usable(Pattern::ofPath(*path), element));
        if (array->empty())
            fault(node.source().begin, "expected at least one path");
        return paths;
    }

    const DeliveryWord *readWord(const toml::node &value, const DeliveryWords &words) {
        const auto word = readChoice(value, {words[0].shortForm, words[1].shortForm});
        return word ? &words[*word == words[0].shortForm ? 0 : 1] : nullptr;
    }

    Pattern usable(Pattern pattern, const toml::node &value) {
        if (!pattern.fault().empty())
            fault(value.source().begin,
                  "the pattern " + inQuotes(pattern.text()) + " cannot be used: " + shown(pattern.fault(), kTextLimit));
        return pattern;
    }

    /// A rule about a habit finds nothing if the configuration does not say what the habit is.
    void checkHabits() {
        for (const auto &[rule, place] : _wantedHabits)
            if (_givenHabits.count(rule) == 0)
                fault(place,
                      "the rule " + inQuotes(rule->id) + " finds nothing: " +
                          (rule->index < ruleOf(RuleId::namePrefix).index ? "[naming] has no pattern for it"
                                                                          : "no [[subtree]] fixes anything for it"));
    }

    std::size_t _numTables = 0;
    std::vector<std::pair<const Rule *, Place>> _wantedHabits; // rules that are switched on, and where
    std::set<const Rule *> _givenHabits;                       // rules whose habits are given
};

} // namespace

Configuration readConfiguration(const std::filesystem::path &path, const std::string &name) {
    Configuration configuration =
        ConfigurationReader(name, readSmallFile(path.string(), name, kLongestConfiguration)).read();
    configuration.name = name;
    configuration.folder = path.parent_path();
    return configuration;
}
