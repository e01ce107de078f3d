#include "tests/Support.hh"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <unistd.h>

std::string readFile(const std::string &path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    std::ostringstream contents;
    contents << file.rdbuf();
    return contents.str();
}

std::string replaced(std::string text, const std::string &what, const std::string &with) {
    const auto place = text.find(what);
    EXPECT_NE(place, std::string::npos) << what;
    return text.replace(place, what.size(), with);
}

std::string withMom(const std::string &objects, const std::string &interactions, const std::string &spaces) {
    const std::string object = "(class RTIprivate)", interaction = "(class RTIprivate reliable timestamp)";
    std::string text = replaced(example("minimal.fed"), object, object + objects);
    text = replaced(text, interaction, interaction + interactions);
    return replaced(text, "(objects", "(spaces " + spaces + ") (objects");
}

TemporaryFile::TemporaryFile(const std::string &contents) : _path("/tmp/rtifed-test-XXXXXX") {
    const int file = mkstemp(_path.data());
    EXPECT_EQ(write(file, contents.data(), contents.size()), static_cast<ssize_t>(contents.size()));
    close(file);
}

TemporaryFile::~TemporaryFile() {
    std::remove(_path.c_str());
}

std::unique_ptr<RtiFedDatabase> load(const std::string &text) {
    const TemporaryFile file(text);
    return std::make_unique<RtiFedDatabase>(RtiFedDatabaseConstructorArg(file.path(), RTI_true));
}

std::unique_ptr<RtiFedDatabase> emptyDatabase(const std::string &fileName) {
    return std::make_unique<RtiFedDatabase>(RtiFedDatabaseConstructorArg(fileName, RTI_false));
}

std::string listing(const RtiFedDatabase &database) {
    std::ostringstream os;
    database.dumpDatabase(&os);
    return os.str();
}
