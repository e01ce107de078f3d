#include "tool/check/Suggestion.hh"
#include "tool/commands/Commands.hh"
#include "tool/console/Text.hh"

#include <algorithm>
#include <functional>

namespace {

constexpr std::size_t kUsualWidth = 80;
constexpr std::size_t kPageWidth = 120;

/// Returns an example in its language: FED, XML or a command.
std::string codeBlock(const std::string &text) {
    const char *language = beginsWith(text, "rtifed ") ? "sh" : beginsWith(text, "<") ? "xml" : "lisp";
    return std::string("```") + language + '\n' + text + "\n```\n";
}

/// Breaks a text into lines of at most `width` bytes, except for longer words.
std::string wrapped(const std::string &text, std::size_t width) {
    std::string lines, line;
    for (const std::string &word : wordsOf(text)) {
        if (!line.empty() && line.size() + 1 + word.size() > width) {
            lines += line + '\n';
            line.clear();
        }
        line += (line.empty() ? "" : " ") + word;
    }
    return lines + line + '\n';
}

void printExample(const char *heading, const char *text, std::ostream &out) {
    out << '\n' << heading << ":\n";
    for (const std::string &line : split(text, '\n'))
        out << "    " << line << '\n';
}

/// Writes what there is to know about a rule, in lines of at most `width` columns.
void writeRule(const Rule &rule, std::size_t width, std::ostream &out) {
    out << rule.id << " (" << nameOf(rule.severity) << (rule.isHabit() ? ", off by default" : "") << ")\n"
        << wrapped(rule.title, width) << '\n'
        << wrapped(rule.why, width) << '\n'
        << wrapped(rule.fix, width);
    if (!rule.hasExample())
        return;
    printExample("Wrong", rule.wrong, out);
    printExample("Right", rule.right, out);
}

/// Writes a line for each rule.
void writeRuleList(std::ostream &out) {
    std::size_t width = 0; // equivalent: each rule has a longer name
    for (const Rule &rule : allRules())
        width = std::max(width, std::string(rule.id).size());
    for (const Rule &rule : allRules()) {
        const std::string id = rule.id, severity = rule.isHabit() ? "off" : nameOf(rule.severity);
        out << id << std::string(width + 2 - id.size(), ' ') << severity << std::string(9 - severity.size(), ' ')
            << rule.title << '\n';
    }
}

/// Returns docs/rules.md, the page about all rules.
std::string rulesAsMarkdown() {
    std::string page =
        "# What `rtifed check` finds\n\n" +
        wrapped(
            "Each finding ends with the name of its rule in brackets. `rtifed explain RULE` prints the same "
            "explanation as this page, which is generated from the same table. [configuration.md](configuration.md) "
            "says how to switch rules off and on.",
            kPageWidth) +
        "\n";
    const auto isError = [](const Rule &rule) { return rule.severity == Severity::error; };
    const auto isHabit = [](const Rule &rule) { return rule.isHabit(); };
    const auto isWarning = [&](const Rule &rule) { return !isError(rule) && !isHabit(rule); };
    const std::pair<const char *, std::function<bool(const Rule &)>> chapters[] = {
        {"Errors: the database refuses the file", isError},
        {"Warnings: the file loads, but probably contains a mistake", isWarning},
        {"Habits of a project: warnings, off unless a configuration switches them on", isHabit}};
    for (const auto &[heading, belongs] : chapters) {
        page += std::string("## ") + heading + "\n\n";
        for (const Rule &rule : allRules())
            if (belongs(rule))
                page += std::string("### ") + rule.id + "\n\n" + wrapped(std::string(rule.title) + ".", kPageWidth) +
                        "\n" + wrapped(rule.why, kPageWidth) + "\n" + wrapped(rule.fix, kPageWidth) + "\n" +
                        (rule.hasExample()
                             ? "Wrong:\n\n" + codeBlock(rule.wrong) + "\nRight:\n\n" + codeBlock(rule.right) + "\n"
                             : "");
    }
    page.pop_back();
    return page;
}

} // namespace

Status explain(const ExplainOptions &options, const Console &console) {
    if (options.markdown) {
        console.out << rulesAsMarkdown();
        return done;
    }
    if (options.rule.empty()) {
        writeRuleList(console.out);
        return done;
    }
    const std::size_t width = console.width > 0 ? std::min(console.width, kUsualWidth) : kUsualWidth;
    const Rule *rule = findRule(options.rule);
    if (!rule)
        throw CannotWork(unknownRule(options.rule));
    writeRule(*rule, width, console.out);
    return done;
}
