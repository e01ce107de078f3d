#include "tests/Support.hh"
#include "tool/console/ChildProcess.hh"

#include <unistd.h>

namespace {

/// What a program prints, whether it succeeds, and its complaint.
std::string ran(const std::vector<std::string> &arguments) {
    ChildProcess child(arguments);
    std::string text;
    for (int byte = std::fgetc(child.output()); byte != EOF; byte = std::fgetc(child.output()))
        text += static_cast<char>(byte);
    const bool succeeds = child.succeeds();
    EXPECT_FALSE(child.succeeds()) << "there is nothing more to wait for";
    return text + (succeeds ? ", good, " : ", bad, ") + child.complaint();
}

} // namespace

TEST(ChildProcess, PassesWhatItIsGivenAndSays) {
    const int nextFile = dup(0);
    close(nextFile);
    EXPECT_EQ(ran({"printf", "%s|", "a b", "$HOME", "\"'"}), "a b|$HOME|\"'|, good, ");
    EXPECT_EQ(ran({"sh", "-c", "cat; printf out; printf wrong >&2; exit 3"}), "out, bad, wrong");
    EXPECT_EQ(ran({"sh", "-c", "kill -9 $$"}), ", bad, ");
    EXPECT_EQ(ran({"sh", "-c", "head -c 100000 /dev/zero | tr '\\0' x >&2"}), ", good, " + std::string(4096, 'x'));
    EXPECT_FALSE(ChildProcess({"yes"}).succeeds()) << "nobody reads what it prints";
    try {
        const ChildProcess child({"/no/such/program"});
        ADD_FAILURE();
    } catch (const std::string &reason) {
        EXPECT_EQ(reason, "No such file or directory");
    }
    EXPECT_EQ(dup(0), nextFile) << "a file is still open";
    close(nextFile);
}
