#include "tool/check/Suggestion.hh"
#include "tool/console/Console.hh"
#include "tool/console/InputFile.hh"
#include "tool/console/Line.hh"
#include "tool/console/Text.hh"
#include "tool/control/Configuration.hh"

#include <algorithm>
#include <set>
#include <toml++/toml.h>

namespace {

constexpr std::size_t kLongest = 1 << 18;    // bytes of a configuration
constexpr std::ptrdiff_t kMostDots = 200;    // in one line
constexpr std::size_t kMostFaults = 20;      // that are shown
constexpr std::size_t kMostSettings = 10000; // sections, patterns and subtrees

using Place = toml::source_position;

/// Reads a TOML document into a configuration, and collects its faults: unknown keys, values of a wrong type, and what
/// makes no sense.
class ConfigurationReader {
public:
    ConfigurationReader(std::string name, const std::string &text) : _name(std::move(name)), _text(text) {}

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
        if (!_faults.empty())
            throw CannotWork(describeFaults());
        return configuration;
    }

private:
    toml::table parse() {
        checkDots();
        try {
            return toml::parse(_text);
        } catch (const toml::parse_error &error) {
            constexpr std::string_view kPrefix = "Error while parsing ";
            std::string_view reason = error.description();
            reason.remove_prefix(reason.substr(0, kPrefix.size()) == kPrefix ? kPrefix.size() : 0);
            throw CannotWork(originOf(error.source().begin) + ": this is not TOML: " + shown(reason, kTextLimit));
        }
    }

    /// Each dot of a key nests a table, and the tables are freed recursively: keys with very many dots would exhaust
    /// the stack. No dots are counted as those of keys, since in broken text it is not known where strings begin.
    void checkDots() const {
        std::size_t number = 1;
        for (const std::string &line : _lines) {
            if (std::count(line.begin(), line.end(), '.') > kMostDots)
                throw CannotWork(_name + ":" + std::to_string(number) + ":1: expected at most " +
                                 std::to_string(kMostDots) + " dots in a line, found more");
            ++number;
        }
    }

    /// Calls `visit` with each known key of a table and its value, and reports the others.
    template <class Visit>
    void forEachKey(const toml::node &node, const std::vector<std::string> &known, Visit visit) {
        const toml::table *table = node.as_table();
        if (!table)
            return expected("a table", node);
        for (const auto &[key, value] : *table) {
            const std::string name(key.str());
            if (std::find(known.begin(), known.end(), name) != known.end()) {
                visit(name, value);
                continue;
            }
            const std::string meant = suggestionFor(name, known);
            fault(key.source().begin, "unknown key " + inQuotes(name) +
                                          (meant.empty() ? ", expected " + alternatives(known) : didYouMean(meant)));
        }
    }

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
            if (rule && level)
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

    std::optional<std::string> readChoice(const toml::node &value, const std::vector<std::string> &choices) {
        auto word = readString(value);
        if (!word || std::find(choices.begin(), choices.end(), *word) != choices.end())
            return word;
        fault(value.source().begin, "expected " + alternatives(choices) + ", found " + inQuotes(*word) +
                                        didYouMean(suggestionFor(*word, choices)));
        return {};
    }

    std::optional<std::string> readString(const toml::node &value) {
        auto text = value.value_exact<std::string>();
        if (!text)
            expected("a string", value);
        else if (text->empty())
            fault(value.source().begin, "expected a text, found an empty string");
        return text;
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

    void expected(const std::string &what, const toml::node &found) {
        fault(found.source().begin, "expected " + what + ", found " + nameOf(found.type()));
    }

    static const char *nameOf(toml::node_type type) {
        switch (type) {
        case toml::node_type::table:
            return "a table";
        case toml::node_type::array:
            return "an array";
        case toml::node_type::string:
            return "a string";
        case toml::node_type::boolean:
            return "a boolean";
        case toml::node_type::integer:
        case toml::node_type::floating_point:
            return "a number";
        default:
            return "a date or time";
        }
    }

    static std::string alternatives(const std::vector<std::string> &words) {
        std::vector<std::string> quoted;
        quoted.reserve(words.size());
        for (const std::string &word : words)
            quoted.push_back(inQuotes(word));
        const std::string last = quoted.back();
        quoted.pop_back();
        return joined(quoted) + " or " + last;
    }

    void fault(const Place &place, const std::string &text) {
        _faults.emplace_back(place, originOf(place) + ": " + text);
    }

    std::string describeFaults() {
        std::stable_sort(_faults.begin(), _faults.end(),
                         [](const auto &a, const auto &b) { return a.first < b.first; });
        std::vector<std::string> lines;
        for (std::size_t i = 0; i < std::min(_faults.size(), kMostFaults); ++i)
            lines.push_back(_faults[i].second);
        if (_faults.size() > lines.size())
            lines.push_back(_name + ": " + counted(_faults.size() - lines.size(), "more fault"));
        return joined(lines, "\nrtifed: ");
    }

    std::string originOf(const toml::node &node) const { return originOf(node.source().begin); }

    /// FILE:LINE:COLUMN, with the column in bytes as everywhere; the document counts characters.
    std::string originOf(const Place &place) const {
        std::size_t column = 0;
        if (place.line > 0 && place.line <= _lines.size()) {
            const std::string &line = _lines[place.line - 1];
            column = firstColumns(line, place.column - 1).size();
        }
        return _name + ":" + std::to_string(place.line) + ":" + std::to_string(column + 1);
    }

    const std::string _name;
    const std::string &_text;
    const std::vector<std::string> _lines = split(_text, '\n');
    std::size_t _numTables = 0;
    std::vector<std::pair<const Rule *, Place>> _wantedHabits; // rules that are switched on, and where
    std::set<const Rule *> _givenHabits;                       // rules whose habits are given
    std::vector<std::pair<Place, std::string>> _faults;
};

} // namespace

Configuration readConfiguration(const std::filesystem::path &path, const std::string &name) {
    Configuration configuration = ConfigurationReader(name, readSmallFile(path.string(), name, kLongest)).read();
    configuration.name = name;
    configuration.folder = path.parent_path();
    return configuration;
}
