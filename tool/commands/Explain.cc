#include "tool/check/Suggestion.hh"
#include "tool/commands/Commands.hh"
#include "tool/report/RuleText.hh"

namespace {

constexpr std::size_t kUsualWidth = 80;

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
    std::vector<std::string> ids;
    for (const Rule &rule : allRules()) {
        if (rule.id == options.rule) {
            writeRule(rule, width, console.out);
            return done;
        }
        ids.emplace_back(rule.id);
    }
    throw CannotWork("unknown rule \"" + options.rule + '"' + didYouMean(suggestionFor(options.rule, ids)));
}
