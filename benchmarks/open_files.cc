// Loads each file with the library and does nothing else: what a process that needs the models takes at least. The peer
// of the program's commands. Usage: rtifed-bench-open FILE...

#include "benchmarks/Program.hh"
#include "fed/RtiFedDatabase.hh"

#include <memory>
#include <string>
#include <vector>

int main(int argc, char **argv) {
    return runProgram([&] {
        std::vector<std::unique_ptr<const RtiFedDatabase>> models;
        for (const std::string &file : std::vector<std::string>(argv + 1, argv + argc))
            models.push_back(std::make_unique<RtiFedDatabase>(RtiFedDatabaseConstructorArg(file, RTI_true)));
    });
}
