#pragma once

#include "tool/console/Console.hh"
#include "tool/model/Comparison.hh"
#include "tool/model/Input.hh"
#include "tool/report/FileFindings.hh"
#include "tool/report/Report.hh"

#include <algorithm>
#include <new>
#include <optional>
#include <string>
#include <vector>

/// The commands of the program. Each does its work on what the command line names, writes its result to `console.out`
/// and what keeps it from its work to `console.err`. They throw CannotWork where that ends all of it.

struct TreeOptions {
    std::string fileName;
    std::string className;    ///< The class to show with all below it; empty for the whole model.
    bool inherited = false;   ///< Whether classes are shown with the members that they inherit.
    bool classesOnly = false; ///< Whether no members are shown.
    std::size_t depth = 0;    ///< How many levels of classes are shown, 0 for all.
};

struct FindOptions {
    std::string fileName, name;
    bool all = false;   ///< Whether long lists are shown whole.
    bool quiet = false; ///< Whether only the status tells.
};

struct JsonOptions {
    std::string fileName;
    bool effective = false; ///< Whether each class lists its inherited members as well.
};

struct ChecksumOptions {
    std::vector<std::string> fileNames;
    bool sha256 = false;
};

/// How files are checked against manifests.
struct ManifestOptions {
    std::vector<std::string> fileNames; ///< Those of the manifests.
    bool quiet = false;                 ///< Whether files that agree are not named.
    bool silent = false;                ///< Whether only the status tells.
    bool ignoreMissing = false;
    bool strict = false; ///< Whether a line that is no checksum line is a failure.
};

struct CheckOptions {
    std::vector<std::string> files;
    ReportFormat format = ReportFormat::text;
    std::size_t maxFindings = kUsuallyShown; ///< Of each file; 0 for all.
    Severity failOn = Severity::error;       ///< What makes a file wrong.
    bool quiet = false;                      ///< Only the status tells.
};

struct ExplainOptions {
    std::string rule;      ///< Empty for a list of all.
    bool markdown = false; ///< All of every rule, as docs/rules.md has it.
};

Status check(const CheckOptions &options, const Console &console);
/// Prints what there is to know about the rules of `check`.
Status explain(const ExplainOptions &options, const Console &console);
Status list(const std::string &fileName, const Console &console);
Status calls(const std::string &fileName, const Console &console);
Status tree(const TreeOptions &options, const Console &console);
Status find(const FindOptions &options, const Console &console);
Status json(const JsonOptions &options, const Console &console);
Status checksum(const ChecksumOptions &options, const Console &console);
Status checkManifests(const ManifestOptions &options, const Console &console);
Status save(const std::string &fileName, const std::string &imageName, const Console &console);

enum class DiffFormat { text, json };

struct DiffOptions {
    std::string oldName, newName;
    bool all = false;   ///< Whether each change is listed, or the first few of a group.
    bool quiet = false; ///< Whether nothing is written.
    DiffFormat format = DiffFormat::text;
    Comparison::Verdict failOn = Comparison::Verdict::relabelled; ///< The least that counts as a difference.
};
Status diff(const DiffOptions &options, const Console &console);

/// Does `work` on a file, and returns what kept it from being done: other files shall have their turn.
template <class Work>
std::optional<std::string> failureOf(const std::string &name, Work work) {
    try {
        work();
        return {};
    } catch (const CannotWork &why) {
        return why.what();
    } catch (const std::bad_alloc &) {
        return name + ": " + kOutOfMemory;
    }
}

/// Does `work`, which returns whether a file is right, for each file; one that cannot be read keeps none from its turn.
template <class Work>
Status forEachFile(const std::vector<std::string> &fileNames, const Console &console, Work work) {
    Status status = done;
    for (const std::string &fileName : fileNames) {
        const auto failure = failureOf(fileName == "-" ? console.stdinName : fileName, [&] {
            if (!work(readInput(fileName, console.stdinName)))
                status = std::max(status, wrong);
        });
        if (failure) {
            console.err << "rtifed: " << *failure << '\n';
            status = cannotWork;
        }
    }
    return status;
}
