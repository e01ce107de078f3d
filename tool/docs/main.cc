#include "tool/commandline/CommandLine.hh"
#include "tool/docs/Completion.hh"
#include "tool/docs/ManPage.hh"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>

namespace {

void write(const std::filesystem::path &path, const std::string &text) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    if (!(file << text).flush())
        throw std::runtime_error(path.string() + " cannot be written");
}

} // namespace

/// Writes the manual pages and the completions of the program into a folder, laid out as under share/.
int main(int argc, char **argv) try {
    if (argc != 2 || *argv[1] == '-') {
        std::cerr << "usage: rtifed-docs FOLDER\n";
        return 2;
    }
    const std::filesystem::path share = argv[1];
    CommandLine commandLine(Console{std::cout, std::cerr});
    const ProgramTexts all = programTexts(commandLine.app());
    const auto writePage = [&](const CommandTexts &command) {
        write(share / "man/man1" / (pageName(command, all) + ".1"), manPage(command, all));
    };
    writePage(all.program);
    std::for_each(all.commands.begin(), all.commands.end(), writePage);
    write(share / "bash-completion/completions/rtifed", bashCompletion(all));
    write(share / "zsh/vendor-completions/_rtifed", zshCompletion(all));
    write(share / "fish/vendor_completions.d/rtifed.fish", fishCompletion(all));
} catch (const std::exception &failure) {
    std::cerr << "rtifed-docs: " << failure.what() << '\n';
    return 1;
}
