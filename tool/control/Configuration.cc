#include "tool/control/Configuration.hh"

#include "tool/console/Text.hh"

#include <algorithm>

namespace {

void apply(const Configuration::Part &part, Settings &settings) {
    for (const auto &[rule, level] : part.levels)
        settings.setLevel(*rule, level.value, level.origin);
    for (const auto &[kind, pattern] : part.patterns)
        settings.setPattern(kind, pattern);
    for (const Subtree &subtree : part.subtrees)
        settings.setSubtree(subtree);
}

} // namespace

void Configuration::applyTo(Settings &settings, const std::filesystem::path &file) const {
    const std::string path = file.lexically_relative(folder).generic_string();
    settings.sources.push_back(name);
    apply(all, settings);
    for (const Section &section : sections) {
        const auto matching = std::find_if(section.paths.begin(), section.paths.end(),
                                           [&path](const Pattern &pattern) { return pattern.matches(path); });
        if (matching == section.paths.end())
            continue;
        settings.sources.push_back(section.origin + ": [[files]], whose path " + inQuotes(matching->text()) +
                                   " matches");
        apply(section.part, settings);
    }
}
