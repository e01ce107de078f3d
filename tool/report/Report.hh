#pragma once

#include "tool/check/Finding.hh"
#include "tool/console/Console.hh"
#include "tool/report/Source.hh"

#include <cstddef>
#include <memory>
#include <string>

enum class ReportFormat { text, json, sarif, github };

/// How many findings a file has, and how many of them are not shown.
struct Tally {
    std::size_t errors = 0, warnings = 0;
    std::size_t hiddenErrors = 0, hiddenWarnings = 0;

    std::size_t hidden() const { return hiddenErrors + hiddenWarnings; }
};

/// How many findings are not shown, in words: `2 more errors and 1 more warning are not shown`.
std::string describeHidden(const Tally &tally);

/// What is said of the findings in files, in one format. It is written as it is told, and keeps none of it: the calls
/// come in the order in which they stand here, those for a file for each file.
class Report {
public:
    Report() = default;
    Report(const Report &) = delete;
    Report &operator=(const Report &) = delete;
    virtual ~Report() = default;

    virtual void begin() {}
    virtual void beginFile(const Source &source) = 0;
    virtual void add(const Source &source, const Finding &finding) = 0;
    virtual void endFile(const Source &source, const Tally &tally) = 0;
    /// A file that is not read: it begins and ends with this.
    virtual void failFile(const std::string &fileName, const std::string &reason) = 0;
    virtual void end() {}
};

/// A report to the console's `out`.
std::unique_ptr<Report> makeReport(ReportFormat format, const Console &console);
