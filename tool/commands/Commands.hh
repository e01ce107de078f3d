#pragma once

#include "tool/Comparison.hh"
#include "tool/Console.hh"
#include "tool/Input.hh"

#include <algorithm>
#include <string>
#include <vector>

/// The commands of the program. Each does its work on what the command line names, writes its result to `console.out`
/// and what keeps it from its work to `console.err`. They throw CannotWork where that ends all of it.

Status check(const std::vector<std::string> &fileNames, const Console &console);
Status list(const std::string &fileName, const Console &console);
Status calls(const std::string &fileName, const Console &console);
Status checksum(const std::vector<std::string> &fileNames, const Console &console);
Status save(const std::string &fileName, const std::string &imageName, const Console &console);

struct DiffOptions {
    std::string oldName, newName;
    bool all = false;            ///< Whether each change is listed, or the first few of a group.
    bool quiet = false;          ///< Whether nothing is written.
    std::string format = "text"; ///< Or json.
    Comparison::Verdict failOn = Comparison::Verdict::relabelled; ///< The least that counts as a difference.
};
Status diff(const DiffOptions &options, const Console &console);

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
