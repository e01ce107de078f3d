#include "tool/Model.hh"
#include "tool/commands/Commands.hh"

Status check(const std::vector<std::string> &fileNames, const Console &console) {
    return forEachFile(fileNames, console, [&](const Input &input) { return reportProblems(input, console.out); });
}
