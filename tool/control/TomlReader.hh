#pragma once

#include "tool/check/Suggestion.hh"
#include "tool/console/Text.hh"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// A wrong text, such as "[[{", can violate an assertion of toml++, although the code after it reports the error. An
// assertion would end the program then, or with NDEBUG let Clang take it for true, so none is compiled.
#pragma push_macro("NDEBUG")
#undef NDEBUG
#define TOML_ASSERT(expression) static_cast<void>(0)
#include <toml++/toml.h>
#pragma pop_macro("NDEBUG")

/// The base of classes that read a TOML document of a person, and collect all its faults: unknown keys, values of a
/// wrong type and others.
class TomlReader {
protected:
    using Place = toml::source_position;

    /// `name` is that of the document in messages. The text must outlive this object.
    TomlReader(std::string name, const std::string &text)
        : _name(std::move(name)), _text(text), _lines(split(text, '\n')) {}

    /// Throws CannotWork if the text is not TOML.
    toml::table parse() const;

    /// Throws CannotWork with all faults, one a line, but only the first ones of very many.
    void throwIfFaulty();

    void fault(const Place &place, std::string text) { _faults.emplace_back(place, std::move(text)); }
    void expected(const std::string &what, const toml::node &found);
    /// Whether a further fault would be shown, so that it is worth the time to make a suggestion for it.
    bool showsFurtherFault() const;

    /// Calls `visit` with each known key of a table and its value, and reports the others.
    template <class Visit>
    void forEachKey(const toml::node &node, const std::vector<std::string> &known, Visit visit);

    /// Returns a text that is not empty, or one of the choices; reports anything else.
    std::optional<std::string> readString(const toml::node &value);
    std::optional<std::string> readChoice(const toml::node &value, const std::vector<std::string> &choices);

    /// FILE:LINE:COLUMN, with the column in bytes as everywhere; the document counts characters.
    std::string originOf(const Place &place) const;
    std::string originOf(const toml::node &node) const { return originOf(node.source().begin); }

private:
    void checkDots() const;
    void unknownKey(const Place &place, const std::string &name, const std::vector<std::string> &known);

    const std::string _name;
    const std::string &_text;
    const std::vector<std::string> _lines;
    std::vector<std::pair<Place, std::string>> _faults;
};

template <class Visit>
void TomlReader::forEachKey(const toml::node &node, const std::vector<std::string> &known, Visit visit) {
    const toml::table *table = node.as_table();
    if (!table)
        return expected("a table", node);
    for (const auto &[key, value] : *table) {
        const std::string name(key.str());
        if (std::find(known.begin(), known.end(), name) != known.end())
            visit(name, value);
        else
            unknownKey(key.source().begin, name, known);
    }
}
