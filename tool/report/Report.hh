#pragma once

#include "tool/check/Finding.hh"
#include "tool/console/Console.hh"
#include "tool/report/Source.hh"

#include <cstddef>
#include <memory>
#include <string>

enum class ReportFormat { text, json, sarif, github };

/// The number of findings of a file, and of those that are not shown.
struct Tally {
    std::size_t errors = 0, warnings = 0;
    std::size_t hiddenErrors = 0, hiddenWarnings = 0;

    std::size_t hidden() const { return hiddenErrors + hiddenWarnings; }
};

/// Returns how many findings are not shown, such as `2 more errors and 1 more warning are not shown`.
std::string describeHidden(const Tally &tally);

/// Writes the findings of files in one format. Each finding is written when it is added, so that the memory does not
/// grow with their number. The operations are called in this order, those of a file once for each file.
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
    /// Reports a file that cannot be read, in place of the operations of a file.
    virtual void failFile(const std::string &fileName, const std::string &reason) = 0;
    virtual void end() {}
};

/// Returns a report that writes to the console's `out`.
std::unique_ptr<Report> makeReport(ReportFormat format, const Console &console);
