#pragma once

#include "tool/check/Finding.hh"
#include "tool/report/Source.hh"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <memory>
#include <ostream>
#include <string>

/// The number of findings of a file, without the suppressed ones; a mistake at several places is one finding if the
/// report joins findings. The first `most` are shown, errors before warnings.
struct Tally {
    std::size_t errors, warnings, most;
    std::size_t suppressed = 0;
    std::size_t fixable = 0;       ///< Of the errors and warnings, those that `rtifed fix` would fix.
    bool refused = false;          ///< The library refuses the file, and not only for errors that a baseline lists.
    std::string remark = {};       ///< Says that such errors are not shown as errors; empty if all are.
    const Rule *gravest = nullptr; ///< The gravest rule for which the library refuses the file; null if it loads.

    std::size_t shownErrors() const { return std::min(errors, most); }
    std::size_t shownWarnings() const { return std::min(warnings, most - shownErrors()); }
    std::size_t hidden() const { return errors + warnings - shownErrors() - shownWarnings(); }
};

/// Returns how many findings are not shown, such as `2 more errors and 1 more warning are not shown`.
std::string describeHidden(const Tally &tally);

/// Says how many findings can be fixed, such as `3 of 5 can be fixed by rtifed fix`; empty if none can.
std::string describeFixable(const Tally &tally);

inline constexpr std::size_t kAllShown = std::numeric_limits<std::size_t>::max(); ///< Findings of a file.

/// Writes the findings of files in one format. Each finding is written when it is added, place by place, so that the
/// report adds no memory for them. The operations are called in this order, those of a file once for each file.
class Report {
public:
    Report() = default;
    Report(const Report &) = delete;
    Report &operator=(const Report &) = delete;
    virtual ~Report() = default;

    virtual void begin() {}
    virtual void beginFile(const Source &, const Tally &) {}
    /// Writes a finding; a suppressed one only if the report shows these.
    virtual void add(const Source &source, const Finding &finding) = 0;
    virtual bool showsSuppressed() const { return false; }
    /// The number of findings of a file that are shown by default.
    virtual std::size_t usuallyShown() const { return kAllShown; }
    /// Whether a mistake at several places is one finding; else each place is a finding.
    virtual bool joinsFindings() const { return true; }
    virtual void endFile(const Source &source, const Tally &tally) = 0;
    /// Reports a file that cannot be read, with its name and the reason, in place of the operations of a file.
    virtual void failFile(const std::string &, const std::string &) {}
    virtual void end() {}
};

/// How a report is written.
struct ReportStyle {
    bool color = false;                ///< Whether the output shows colours.
    std::size_t width = 0;             ///< Columns of the terminal; 0 if the output is not one.
    Severity failOn = Severity::error; ///< The least severity of findings that fail the check.
};

/// Returns a report that writes to `out`.
using ReportMaker = std::unique_ptr<Report>(std::ostream &out, const ReportStyle &style);

/// For people: each finding as `FILE:LINE:COLUMN: error: TEXT [RULE]`, with the line of the file below it. A summary
/// follows the findings of several files.
ReportMaker textReport;

/// For people and scripts: only the first line of each finding, for each of its places.
ReportMaker conciseReport;

/// For programs: one JSON document, described by docs/findings.schema.json. Each file and each finding begins a line.
ReportMaker jsonReport;

/// For code scanning and editors: a SARIF 2.1.0 log of one run. Each result begins a line.
ReportMaker sarifReport;

/// For workflows on a code host: each place as a command that makes the host show it next to the line.
ReportMaker githubReport;

/// For merge requests on a code host: a JSON array with an entry for each place, which the host shows next to the line.
ReportMaker gitlabReport;

/// For test servers: an XML document with a test suite for each file and a test case for each finding.
ReportMaker junitReport;

/// For people: the number of findings of each rule in all files, the most frequent first.
ReportMaker statisticsReport;

/// The same as JSON, described by docs/statistics.schema.json.
ReportMaker jsonStatisticsReport;
