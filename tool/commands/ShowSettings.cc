#include "tool/check/Checker.hh"
#include "tool/commands/Commands.hh"
#include "tool/console/Line.hh"
#include "tool/control/Suppressions.hh"

namespace {

std::string habitOf(const Settings &settings, const Rule &rule) {
    std::size_t kind = 0; // the next one
    for (const auto &pattern : settings.patterns)
        if (&ruleOf(static_cast<NameKind>(kind++)) == &rule && pattern)
            return "  " + inQuotes(pattern->value.text(), kTextLimit) +
                   (pattern->origin == settings.levels[rule.index].origin ? "" : " (" + pattern->origin + ')');
    return {};
}

/// Shows each rule with its level and where that was set.
void showRules(const Settings &settings, const Console &console) {
    std::size_t width = 0; // equivalent: each rule is wider
    for (const Rule &rule : allRules())
        width = std::max(width, std::string(rule.id).size());
    for (const Rule &rule : allRules()) {
        const auto &[level, origin] = settings.levels[rule.index];
        const bool isDefault = origin == Settings::kDefault;
        Line line;
        line.add("  ").add(rule.id, isDefault ? Line::plain : Line::strong).pad(width + 4).add(nameOf(level));
        line.pad(width + 13).add(shown(origin, kTextLimit), isDefault ? Line::faint : Line::plain);
        line.add(habitOf(settings, rule)).print(console);
    }
}

void showSubtrees(const Settings &settings, const Console &console) {
    for (const Subtree &subtree : settings.subtrees)
        console.out << "  subtree " << inQuotes(subtree.className)
                    << (subtree.prefix ? ", prefix " + inQuotes(*subtree.prefix) : "")
                    << (subtree.transportation ? std::string(", transportation ") + subtree.transportation->shortForm
                                               : "")
                    << (subtree.ordering ? std::string(", ordering ") + subtree.ordering->shortForm : "") << " ("
                    << subtree.origin << ")\n";
}

void showComments(const Input &input, const Console &console) {
    const RtiFedParser text(input.contents);
    Suppressions(text).forEach([&](RtiFedSpan span, const std::string &allowed) {
        console.out << "  " << textOf(input.name, text.positionAt(span.begin)) << ": " << shown(allowed, kTextLimit)
                    << '\n';
    });
}

} // namespace

Status showSettings(const CheckOptions &options, const Console &console) {
    Configurations configurations(options.configuration);
    bool first = true;
    const auto showFile = [&](const Input &input) {
        const Settings settings = configurations.settingsFor(input.name);
        console.out << (first ? "" : "\n") << input.name << '\n';
        first = false;
        for (const std::string &source : settings.sources)
            console.out << "  " << source << '\n';
        if (settings.sources.empty())
            console.out << "  no configuration\n";
        showRules(settings, console);
        showSubtrees(settings, console);
        if (!input.isImage())
            showComments(input, console);
        return true;
    };
    return forEachFile(withoutFolders(options.files), console, showFile,
                       [](const std::string &, const std::string &) {});
}
