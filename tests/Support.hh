#pragma once

#include "fed/RtiFedDatabase.hh"
#include "infrastructure/RtiBuffer.hh"
#include "infrastructure/RtiDebugStream.hh"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <typeinfo>

std::string readFile(const std::string &path);
inline std::string example(const std::string &name) {
    return readFile(std::string(RTIFED_EXAMPLES) + "/" + name);
}

/// The smallest FED text with the MOM, with more declarations in its sections.
std::string withMom(const std::string &objects, const std::string &interactions = "", const std::string &spaces = "");

std::string replaced(std::string text, const std::string &what, const std::string &with);

/// Returns how often a random test is repeated: an eighth as often as usual with sanitizers, which take ten times as
/// long; and RTIFED_ROUNDS in the environment, such as 20 or 0.1, times that.
inline std::size_t rounds(std::size_t usual) {
    const char *times = std::getenv("RTIFED_ROUNDS");
    const double wanted = static_cast<double>(usual) * (times ? std::stod(times) : 1) / RTIFED_SLOWNESS;
    return std::max<std::size_t>(static_cast<std::size_t>(wanted), 1);
}

/// Compares what `actual` returns for each text with what is expected of it, from a file of tests/data: "----" lines
/// separate the cases, and a "====" line separates text and expectation. If RTIFED_RECORD is set in the environment,
/// what is returned is written to the file instead.
template <class Actual>
void forEachCase(const std::string &fileName, Actual actual) {
    const std::string path = std::string(RTIFED_TEST_DATA "/") + fileName;
    const bool records = std::getenv("RTIFED_RECORD") != nullptr;
    std::istringstream lines(readFile(path));
    std::string part, text, line, record;
    const auto finish = [&] {
        SCOPED_TRACE(text);
        const std::string got = actual(text);
        EXPECT_EQ(records ? part : got, part);
        record += (record.empty() ? "" : "----\n") + text + "\n====\n" + got;
        part.clear();
    };
    while (std::getline(lines, line)) {
        if (line == "====") {
            text = part.substr(0, part.size() - 1);
            part.clear();
        } else if (line == "----") {
            finish();
        } else {
            part += line + "\n";
        }
    }
    finish();
    if (records)
        std::ofstream(path, std::ios::binary) << record;
}

/// A file that is removed with this object.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::string &contents);
    ~TemporaryFile();
    const std::string &path() const { return _path; }

private:
    std::string _path;
};

/// A database built from a file that holds the text.
std::unique_ptr<RtiFedDatabase> load(const std::string &text);

/// An empty database with the given file name.
std::unique_ptr<RtiFedDatabase> emptyDatabase(const std::string &fileName = "none.fed");

std::string listing(const RtiFedDatabase &database);

/// The answers of a database to every query, as text, without the counters, which a refused call may increase.
std::string answers(const RtiFedDatabase &db);

/// A database restored from an image, which must be consumed whole.
std::unique_ptr<RtiFedDatabase> restored(const std::string &image);

/// Captures the error stream during its lifetime.
class ErrorLines {
public:
    ErrorLines() { _rtiErrorStream.setOutputStream(_lines); }
    ~ErrorLines() { _rtiErrorStream.setOutputStream(std::cerr); }
    std::string text() const { return _lines.str(); }

private:
    std::ostringstream _lines;
};

/// The reason of the exception that `action` throws, which must be of exactly this type.
template <class Exception, class Action>
std::string reasonOf(Action action) {
    try {
        action();
    } catch (const RTI::Exception &thrown) {
        EXPECT_TRUE(typeid(thrown) == typeid(Exception)) << thrown._name << ": " << thrown._reason;
        return thrown._reason;
    }
    ADD_FAILURE() << "nothing was thrown";
    return {};
}

inline RtiBuffer imageOf(const RtiFedSaveable &object) {
    RtiBuffer buffer;
    EXPECT_EQ(object.save(buffer), RTI_true);
    return buffer;
}

inline std::string bytesOf(const RtiFedSaveable &object) {
    const RtiBuffer image = imageOf(object);
    return {reinterpret_cast<const char *>(image.data()), image.size()};
}

inline std::string dumpOf(const RtiFedSaveable &object) {
    std::ostringstream os;
    os << std::hex; // must have no effect
    object.dump(os);
    return os.str();
}

/// The lines of a comparison of the image of `saved` with `live`; the image must be consumed whole.
inline std::string diffOf(const RtiFedSaveable &saved, const RtiFedSaveable &live) {
    RtiBuffer image = imageOf(saved);
    std::ostringstream os;
    live.diff(image, os);
    EXPECT_EQ(image.remaining(), 0u);
    return os.str();
}
