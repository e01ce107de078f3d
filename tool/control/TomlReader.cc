#include "tool/control/TomlReader.hh"

#include "tool/console/Console.hh"
#include "tool/console/Line.hh"

namespace {

constexpr std::ptrdiff_t kMostDots = 200; // in one line
constexpr std::size_t kMostFaults = 20;   // that are shown

const char *nameOf(toml::node_type type) {
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

std::string alternatives(const std::vector<std::string> &words) {
    std::vector<std::string> quoted;
    quoted.reserve(words.size());
    for (const std::string &word : words)
        quoted.push_back(inQuotes(word));
    const std::string last = quoted.back();
    quoted.pop_back();
    return joined(quoted) + " or " + last;
}

} // namespace

toml::table TomlReader::parse() const {
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

/// Each dot of a key nests a table, and the tables are freed recursively: keys with very many dots would exhaust the
/// stack. No dots are counted as those of keys, since in broken text it is not known where strings begin.
void TomlReader::checkDots() const {
    std::size_t number = 1;
    for (const std::string &line : _lines) {
        if (std::count(line.begin(), line.end(), '.') > kMostDots)
            throw CannotWork(_name + ":" + std::to_string(number) + ":1: expected at most " +
                             std::to_string(kMostDots) + " dots in a line, found more");
        ++number;
    }
}

void TomlReader::throwIfFaulty() {
    if (_faults.empty())
        return;
    std::stable_sort(_faults.begin(), _faults.end(), [](const auto &a, const auto &b) { return a.first < b.first; });
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < std::min(_faults.size(), kMostFaults); ++i)
        lines.push_back(originOf(_faults[i].first) + ": " + _faults[i].second);
    if (_faults.size() > lines.size())
        lines.push_back(_name + ": " + counted(_faults.size() - lines.size(), "more fault"));
    throw CannotWork(joined(lines, "\nrtifed: "));
}

void TomlReader::expected(const std::string &what, const toml::node &found) {
    fault(found.source().begin, "expected " + what + ", found " + nameOf(found.type()));
}

bool TomlReader::showsFurtherFault() const {
    return _faults.size() < kMostFaults;
}

void TomlReader::unknownKey(const Place &place, const std::string &name, const std::vector<std::string> &known) {
    const std::string meant = suggestionFor(name, known);
    fault(place,
          "unknown key " + inQuotes(name) + (meant.empty() ? ", expected " + alternatives(known) : didYouMean(meant)));
}

std::optional<std::string> TomlReader::readString(const toml::node &value) {
    auto text = value.value_exact<std::string>();
    if (!text)
        expected("a string", value);
    else if (text->empty())
        fault(value.source().begin, "expected a text, found an empty string");
    return text;
}

std::optional<std::string> TomlReader::readChoice(const toml::node &value, const std::vector<std::string> &choices) {
    auto word = readString(value);
    if (!word || std::find(choices.begin(), choices.end(), *word) != choices.end())
        return word;
    fault(value.source().begin, "expected " + alternatives(choices) + ", found " + inQuotes(*word) +
                                    didYouMean(suggestionFor(*word, choices)));
    return {};
}

std::string TomlReader::originOf(const Place &place) const {
    std::size_t column = 0;
    if (place.line > 0 && place.line <= _lines.size()) { // unreached: a place that the text does not have, or none
        const std::string &line = _lines[place.line - 1];
        column = firstColumns(line, place.column - 1).size();
    }
    return _name + ":" + std::to_string(place.line) + ":" + std::to_string(column + 1);
}
