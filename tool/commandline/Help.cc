#include "tool/commandline/Help.hh"

#include "tool/commandline/CommandTexts.hh"
#include "tool/console/Line.hh"
#include "tool/console/Text.hh"

#include <algorithm>

namespace {

constexpr std::size_t kWidest = 100;     // longer lines are hard to read
constexpr std::size_t kNarrowest = 30;   // in a narrower terminal, the terminal breaks lines
constexpr std::size_t kWidestNames = 28; // of options and commands, before their purposes; equivalent: none is so wide

/// A name and its purpose.
using Row = std::pair<std::string, std::string>;

/// Writes help in lines of a width.
class HelpWriter {
public:
    explicit HelpWriter(std::size_t width) : _width(std::clamp(width, kNarrowest, kWidest)) {}

    /// Writes words in lines from this column on, after what the first line already has.
    HelpWriter &fill(const std::string &words, std::size_t indentation = 0) {
        for (const std::string &word : split(words, ' ')) {
            if (word.empty())
                continue;
            // equivalent: no word is as wide as a line
            if (_column > indentation && _column + 1 + columns(word) > _width)
                breakLine();
            // equivalent: one way or the other, none are needed at the indentation
            const std::size_t blanks = _column < indentation ? indentation - _column : _column > indentation ? 1 : 0;
            put(std::string(blanks, ' ') + word);
        }
        return breakLine();
    }

    HelpWriter &usage(const std::string &synopsis) {
        put("Usage:");
        return fill(synopsis, 4);
    }

    /// Writes the rows under a heading, the purposes in one column.
    HelpWriter &rows(const std::string &heading, const std::vector<Row> &rows) {
        if (rows.empty())
            return *this;
        breakLine().put(heading + ':');
        breakLine();
        for (const auto &[name, purpose] : rows) {
            put("  " + name);
            if (_column + 2 > _purposes)
                breakLine();
            fill(purpose, _purposes);
        }
        return *this;
    }

    /// Makes the column of the purposes fit these rows.
    void makeRoomFor(const std::vector<Row> &rows) {
        for (const Row &row : rows)
            _purposes = std::max(_purposes, std::min({columns(row.first) + 4, kWidestNames, _width * 2 / 5}));
    }

    /// Writes paragraphs, tables and examples.
    HelpWriter &details(const std::string &text) {
        std::string paragraph;
        const auto endParagraph = [&] {
            if (!paragraph.empty())
                fill(paragraph);
            paragraph.clear();
        };
        for (const std::string &line : split(text, '\n')) {
            if (!line.empty() && line[0] != ' ') {
                paragraph += line + ' ';
                continue;
            }
            endParagraph();
            if (const auto row = tableRow(line)) {
                put("  " + row->name);
                fill(row->meaning, line.size() - row->meaning.size());
            } else {
                put(line); // an example, to be copied
                breakLine();
            }
        }
        endParagraph();
        return *this;
    }

    HelpWriter &breakLine() {
        _text += '\n';
        _column = 0;
        return *this;
    }

    const std::string &text() const { return _text; }

private:
    void put(const std::string &text) {
        _text += text;
        _column += columns(text);
    }

    std::size_t _width, _purposes = 0, _column = 0; // equivalent: each help has purposes
    std::string _text;
};

std::vector<Row> rowsOf(const std::vector<OptionTexts> &options) {
    std::vector<Row> rows;
    rows.reserve(options.size()); // equivalent: only memory
    for (const OptionTexts &option : options)
        rows.emplace_back(joined(option.names) + (option.argument.empty() ? "" : ' ' + option.argument),
                          option.purpose);
    return rows;
}

std::string usageOf(const CommandTexts &command, bool ofProgram) {
    std::string usage = command.name + " [OPTION]...";
    for (const OptionTexts &operand : command.operands) {
        const std::string name = operand.names.front() + (operand.repeated ? "..." : "");
        usage += operand.required ? ' ' + name : " [" + name + ']';
    }
    return usage + (ofProgram ? " COMMAND [ARGUMENT]..." : "");
}

} // namespace

std::string helpText(const CLI::App &app, std::size_t width) {
    const CLI::App *program = app.get_parent();
    const CommandTexts texts =
        program ? commandTexts(app, program->get_name() + ' ' + app.get_name()) : commandTexts(app, app.get_name());
    std::vector<std::pair<std::string, std::vector<Row>>> tables{{"Operands", rowsOf(texts.operands)},
                                                                 {"Options", rowsOf(texts.options)}};
    if (program) {
        tables.emplace_back("Options of all commands",
                            rowsOf(commonOptions(commandTexts(*program, program->get_name()))));
    } else {
        std::vector<Row> &commands = tables.emplace_back("Commands", std::vector<Row>()).second;
        for (const CLI::App *command : app.get_subcommands([](const CLI::App *) { return true; }))
            commands.emplace_back(command->get_name(), command->get_description());
    }
    HelpWriter help(width);
    for (const auto &[heading, rows] : tables)
        help.makeRoomFor(rows);
    help.fill(texts.purpose).usage(usageOf(texts, !program));
    for (const auto &[heading, rows] : tables)
        help.rows(heading, rows);
    if (!texts.details.empty())
        help.breakLine().details(texts.details);
    return help.text();
}
