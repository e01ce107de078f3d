#pragma once

#include "tool/Console.hh"
#include "tool/Input.hh"
#include "tool/Model.hh"
#include "tool/Report.hh"

#include <algorithm>
#include <string>
#include <vector>

/// The commands of the program. Each does its work on what the command line names, writes its result to `console.out`
/// and what keeps it from its work to `console.err`. They throw CannotWork where that ends all of it.

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
Status checksum(const std::vector<std::string> &fileNames, const Console &console);
Status save(const std::string &fileName, const std::string &imageName, const Console &console);

/// Does `work`, which returns whether a file is right, for each file; one that cannot be read keeps none from its turn.
template <class Work>
Status forEachFile(const std::vector<std::string> &fileNames, const Console &console, Work work) {
    Status status = done;
    for (const std::string &fileName : fileNames) {
        try {
            if (!work(readInput(fileName, console.stdinName)))
                status = std::max(status, wrong);
        } catch (const CannotWork &why) {
            console.err << "rtifed: " << why.what() << '\n';
            status = cannotWork;
        }
    }
    return status;
}
