// Writes a federation of each size to DIRECTORY/SIZE.fed, .xml and .proto, and prints the size and the number of all
// declarations.

#include "benchmarks/Federation.hh"
#include "benchmarks/Program.hh"
#include "fed/RtiFedDatabase.hh"

#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>

int main(int argc, char **argv) {
    return runProgram([&] {
        if (argc < 4)
            throw std::runtime_error("usage: rtifed-bench-generate START.fed DIRECTORY SIZE...");
        const std::string start = argv[1], directory = argv[2];
        const RtiFedDatabase database(RtiFedDatabaseConstructorArg(start, RTI_true));
        for (int i = 3; i < argc; ++i) {
            const Federation federation = generateFederation(database, std::stoul(argv[i]));
            const auto write = [&](const char *suffix, const std::string &text) {
                std::ofstream file(directory + "/" + argv[i] + suffix, std::ios::binary);
                file.exceptions(std::ios::badbit | std::ios::failbit);
                file << text << std::flush;
            };
            write(".fed", toFed(federation));
            write(".xml", toXml(federation));
            write(".proto", toProto(federation));
            std::cout << argv[i] << ' ' << federation.numDeclarations() << '\n';
        }
    });
}
