#include "tool/check/Rule.hh"
#include "tool/check/Suggestion.hh"
#include "tool/commands/Commands.hh"

#include <sstream>

namespace {

constexpr std::size_t kUsualWidth = 80;

void listRules(std::ostream &out) {
    std::size_t width = 0;
    for (const Rule &rule : allRules())
        width = std::max(width, std::string(rule.id).size());
    for (const Rule &rule : allRules()) {
        const std::string id = rule.id, severity = nameOf(rule.severity);
        out << id << std::string(width + 2 - id.size(), ' ') << severity << std::string(9 - severity.size(), ' ')
            << rule.title << '\n';
    }
}

void printExample(const char *heading, const char *text, std::ostream &out) {
    out << '\n' << heading << ":\n";
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        out << "    " << line << '\n';
}

void print(const Rule &rule, const Console &console) {
    const std::size_t width = console.width > 0 ? std::min(console.width, kUsualWidth) : kUsualWidth;
    console.out << rule.id << " (" << nameOf(rule.severity) << ")\n"
                << wrapped(rule.title, width) << '\n'
                << wrapped(rule.why, width) << '\n'
                << wrapped(rule.mend, width);
    if (!rule.hasExample())
        return;
    printExample("Wrong", rule.wrong, console.out);
    printExample("Right", rule.right, console.out);
}

} // namespace

Status explain(const ExplainOptions &options, const Console &console) {
    if (options.markdown) {
        console.out << rulesAsMarkdown();
        return done;
    }
    if (options.rule.empty()) {
        listRules(console.out);
        return done;
    }
    std::vector<std::string> ids;
    for (const Rule &rule : allRules()) {
        if (rule.id == options.rule) {
            print(rule, console);
            return done;
        }
        ids.emplace_back(rule.id);
    }
    throw CannotWork("unknown rule \"" + options.rule + '"' + didYouMean(suggestionFor(options.rule, ids)));
}
