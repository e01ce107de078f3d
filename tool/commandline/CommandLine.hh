#pragma once

#include "tool/commands/Commands.hh"
#include "tool/console/Console.hh"

#include <CLI/App.hpp>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// The command line of the program: all commands with their options and help texts, from which the manual pages and
/// completions are made as well.
class CommandLine {
public:
    explicit CommandLine(const Console &console);
    CommandLine(const CommandLine &) = delete;
    CommandLine &operator=(const CommandLine &) = delete;

    /// Runs the command that the arguments name, once. Help goes to the console's `out`, usage errors to its `err`.
    /// Exceptions of a command pass through.
    Status run(int argc, char **argv);

    /// All commands with their options.
    CLI::App &app();

private:
    struct Command;

    void addCommands(std::string_view first);
    CLI::App *addCommand(const char *name, const char *purpose, const std::string &details,
                         std::function<Status()> run);
    void addCheck();
    void addControl(CLI::App *command);
    void addExplain();
    void addList();
    void addCalls();
    void addChecksum();
    void addSave();
    void addTree();
    void checkTreeOptions() const;
    void addFind();
    void addHtml();
    void addMerge();
    void addExtract();
    void addConstants();
    void addJson();
    void addExport();
    void addDiff();
    void addFmt();
    void addLsp();
    void addNew();
    void addFix();
    void addImport();
    void addHelp();

    Status help() const;

    Console _console;
    CLI::App _app;
    Status _status = done;
    // The arguments of the commands; each command uses its own.
    std::string _fileName, _otherName, _helpOn;
    ChecksumOptions _checksum;
    TreeOptions _tree;
    FindOptions _find;
    HtmlOptions _html;
    JsonOptions _json;
    ExportOptions _export;
    DiffOptions _diff;
    FmtOptions _fmt;
    NewOptions _new;
    MergeOptions _merge;
    ExtractOptions _extract;
    ConstantsOptions _constants;
    FixOptions _fix;
    ImportOptions _import;
    CheckOptions _check;
    ExplainOptions _explain;
};
