#include "tool/docs/ManPage.hh"

#include "infrastructure/RtiStringUtility.hh"
#include "tool/console/Text.hh"

#include <algorithm>
#include <map>

namespace {

constexpr const char *kExitStatus = "Exit status:";

std::string upperCase(const std::string &text) {
    return RtiStringUtility::toupper(text);
}

/// Escapes a text so that roff shows it unchanged.
std::string escaped(const std::string &text) {
    static const std::map<char, const char *> escapes = {{'\\', "\\e"},  {'-', "\\-"},   {'\'', "\\(aq"},
                                                         {'`', "\\(ga"}, {'^', "\\(ha"}, {'~', "\\(ti"}};
    std::string roff;
    for (const char c : text) {
        const auto escape = escapes.find(c);
        roff += escape == escapes.end() ? std::string(1, c) : escape->second;
    }
    return roff;
}

/// Returns a line of text. A line that begins like a request needs an escape.
std::string line(const std::string &text) {
    // unreached: no line of now begins so, or is empty
    return (text.empty() || text[0] != '.' ? "" : "\\&") + escaped(text) + "\n";
}

/// Whether a line is the heading of a section: at most two words and a colon, such as `Exit status:`. Lines that are
/// indented have two blanks.
bool isHeading(const std::string &line) {
    return !line.empty() && line.back() == ':' && std::count(line.begin(), line.end(), ' ') < 2;
}

/// Converts paragraphs, tables, and sections with headings. Examples keep their line ends.
std::string prose(const std::string &text) {
    const std::vector<std::string> lines = split(text, '\n');
    const auto asItIs = [&lines](std::size_t i) {
        return i < lines.size() && beginsWith(lines[i], "  ") && !tableRow(lines[i]);
    };
    std::string roff;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (asItIs(i)) {
            for (roff += ".PP\n.nf\n"; asItIs(i); ++i)
                roff += line(lines[i].substr(2));
            roff += ".fi\n";
            --i;
        } else if (const auto row = tableRow(lines[i])) {
            roff += ".TP\n" + line(row->name) + line(row->meaning);
        } else if (lines[i].empty()) {
            roff += i + 1 == lines.size() ? "" : ".PP\n";
        } else if (isHeading(lines[i])) {
            roff += ".SH " + upperCase(lines[i].substr(0, lines[i].size() - 1)) + '\n';
        } else {
            roff += line(lines[i]);
        }
    }
    return roff;
}

/// The offset of the first heading in the details; their size if they have none.
std::size_t firstSection(const std::string &details) {
    std::size_t at = 0;
    for (const std::string &line : split(details, '\n')) {
        if (isHeading(line))
            return at;
        at += line.size() + 1;
    }
    return details.size();
}

std::string bold(const std::string &word) {
    return "\\fB" + escaped(word) + "\\fR";
}

std::string italic(const std::string &word) {
    return "\\fI" + escaped(word) + "\\fR";
}

std::string synopsis(const CommandTexts &command, const ProgramTexts &all) {
    std::string roff = bold(all.program.name);
    if (&command == &all.program)
        return roff + " [" + italic("OPTION") + "]... " + italic("COMMAND") + " [" + italic("ARGUMENT") + "]...\n";
    roff += ' ' + bold(command.name) + " [" + italic("OPTION") + "]...";
    for (const OptionTexts &operand : command.operands) {
        const std::string name = italic(operand.names.front()) + (operand.repeated ? "..." : "");
        roff += operand.required ? ' ' + name : " [" + name + ']';
    }
    return roff + '\n';
}

std::string entry(const OptionTexts &option) {
    std::string roff = ".TP\n";
    for (const std::string &name : option.names)
        roff += (&name == &option.names.front() ? "" : ", ") + (option.isOperand() ? italic(name) : bold(name));
    if (!option.argument.empty())
        roff += ' ' + italic(option.argument);
    roff += '\n' + line(option.purpose + ".");
    return roff;
}

} // namespace

std::string pageName(const CommandTexts &command, const ProgramTexts &all) {
    return &command == &all.program ? command.name : all.program.name + "-" + command.name;
}

std::string manPage(const CommandTexts &command, const ProgramTexts &all) {
    const CommandTexts &program = all.program;
    const bool ofProgram = &command == &program;
    std::string roff = ".TH " + escaped(upperCase(pageName(command, all))) +
                       " 1 \"\" \"rtifed " RTIFED_VERSION "\" \"User Commands\"\n";
    roff += ".SH NAME\n" + escaped(pageName(command, all)) + " \\- " + escaped(command.purpose) + '\n';
    roff += ".SH SYNOPSIS\n" + synopsis(command, all);
    roff += ".SH DESCRIPTION\n" + line(command.purpose + ".") + ".PP\n";
    const std::size_t sections = firstSection(command.details);
    roff += prose(command.details.substr(0, sections));
    if (ofProgram) {
        roff += ".SH COMMANDS\n";
        for (const CommandTexts &one : all.commands)
            roff += ".TP\n" + bold(one.name) + '\n' + line(one.purpose + ". See " + pageName(one, all) + "(1).");
    }
    if (!command.operands.empty())
        roff += ".SH OPERANDS\n";
    for (const OptionTexts &operand : command.operands)
        roff += entry(operand);
    roff += ".SH OPTIONS\n";
    for (const OptionTexts &option : command.options)
        roff += entry(option);
    if (!ofProgram)
        for (const OptionTexts &option : commonOptions(program))
            roff += entry(option);
    roff += prose(command.details.substr(sections));
    if (command.details.find(kExitStatus) == std::string::npos) {
        const std::size_t begin = program.details.find(kExitStatus);
        roff += prose(program.details.substr(begin, program.details.find("\n\n", begin) - begin));
    }
    roff += ".SH SEE ALSO\n";
    std::vector<std::string> others;
    if (!ofProgram)
        others.push_back(bold(program.name) + "(1)");
    for (const CommandTexts &one : all.commands)
        if (&one != &command)
            others.push_back(bold(pageName(one, all)) + "(1)");
    return roff + joined(others) + '\n';
}
