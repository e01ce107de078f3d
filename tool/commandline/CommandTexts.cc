#include "tool/commandline/CommandTexts.hh"

#include "tool/console/Text.hh"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace {

std::vector<std::string> valuesOf(const CLI::Option &option) {
    const std::string type = option.get_type_name(); // such as `TEXT:{text,json}`
    const std::size_t begin = type.find(":{") + 2, end = type.rfind('}');
    return end == std::string::npos ? std::vector<std::string>() : split(type.substr(begin, end - begin), ',');
}

/// The options that this one needs or excludes, such as ` (with --check)`.
std::string conditionsOf(const CLI::Option &option) {
    std::vector<std::string> conditions;
    for (const CLI::Option *other : option.get_needs())
        conditions.push_back("with " + other->get_name());
    for (const CLI::Option *other : option.get_excludes())
        conditions.push_back("not with " + other->get_name());
    std::sort(conditions.begin(), conditions.end()); // the library orders them by address
    return conditions.empty() ? "" : " (" + joined(conditions) + ")";
}

OptionTexts textsOf(const CLI::Option &option) {
    OptionTexts texts;
    if (option.get_positional()) {
        texts.names = {option.get_single_name()};
    } else {
        for (const std::string &name : option.get_snames())
            texts.names.push_back("-" + name);
        for (const std::string &name : option.get_lnames())
            texts.names.push_back("--" + name);
        if (option.get_expected_min() > 0)
            texts.argument = option.get_option_text();
    }
    texts.values = valuesOf(option);
    texts.purpose = option.get_description() + conditionsOf(option);
    std::replace(texts.purpose.begin(), texts.purpose.end(), '\n', ' ');
    texts.required = option.get_required();
    texts.repeated = option.get_expected_max() > 1;
    return texts;
}

} // namespace

bool OptionTexts::isFile() const {
    for (const char *file : {"FILE", "FED", "IMAGE", "OLD", "NEW"})
        if (names.front() == file || argument == file)
            return true;
    return false;
}

CommandTexts commandTexts(const CLI::App &app, const std::string &name) {
    CommandTexts texts{name, app.get_description(), app.get_footer(), {}, {}};
    for (const CLI::Option *option : app.get_options()) {
        if (option->get_group().empty()) // which hides it
            continue;
        OptionTexts shown = textsOf(*option);
        (shown.isOperand() ? texts.operands : texts.options).push_back(std::move(shown));
    }
    return texts;
}

std::optional<TableRow> tableRow(const std::string &line) {
    const std::size_t gap = line.find("  ", 2);
    if (!beginsWith(line, "  ") || beginsWith(line, "  rtifed ") || gap == std::string::npos)
        return {};
    return TableRow{line.substr(2, gap - 2), line.substr(line.find_first_not_of(' ', gap))};
}

std::vector<OptionTexts> commonOptions(const CommandTexts &program) {
    std::vector<OptionTexts> common;
    for (const OptionTexts &option : program.options)
        if (!option.argument.empty()) // the others print something instead of running a command
            common.push_back(option);
    return common;
}

ProgramTexts programTexts(const CLI::App &app) {
    ProgramTexts all{commandTexts(app, "rtifed"), {}};
    for (const CLI::App *command : app.get_subcommands([](const CLI::App *) { return true; }))
        all.commands.push_back(commandTexts(*command, command->get_name()));
    return all;
}
