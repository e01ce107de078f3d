#include "tool/console/Digest.hh"
#include "tool/console/JsonWriter.hh"
#include "tool/report/Report.hh"

#include <cstddef>
#include <map>
#include <string>

namespace {

/// Names the findings of a file so that their names stay when lines move.
///
/// The idea: a finding is known by its rule and the part of its text that lasts. Equal ones are numbered in their
/// order, so that one more or less changes no other name.
class Identities {
public:
    /// Returns 64 hexadecimal digits for the next finding of the file.
    std::string next(const std::string &fileName, const Finding &finding) {
        std::string mistake = finding.rule->id + ('\0' + finding.lastingText());
        mistake = fileName + '\0' + mistake + '\0' + std::to_string(_count[mistake]++);
        return sha256(mistake);
    }

private:
    std::map<std::string, std::size_t> _count; // by rule and text
};

Json entry(const std::string &fileName, unsigned long line, const char *check, const char *severity,
           const std::string &text, const std::string &fingerprint) {
    return {{"description", text},
            {"check_name", check},
            {"fingerprint", fingerprint},
            {"severity", severity},
            {"location", {{"path", pathInRepository(fileName)}, {"lines", {{"begin", line}}}}}};
}

/// The keys and severities are those of GitLab's Code Quality reports. A fingerprint tells the host whether a finding
/// is new, so that it must not depend on the line.
class GitlabReport : public Report {
public:
    explicit GitlabReport(std::ostream &out) : _json(out, JsonWriter::Layout::compact) {}

    bool joinsFindings() const override { return false; } // the host shows each finding at one line

    void begin() override { _json.beginArray(); }

    void beginFile(const Source &, const Tally &) override { _identities = {}; }

    void add(const Source &source, const Finding &finding) override {
        write(entry(source.name(), finding.span ? source.begin(*finding.span).line : 1, finding.rule->id,
                    finding.severity == Severity::error ? "major" : "minor", finding.textWithDetails(),
                    _identities.next(pathInRepository(source.name()), finding)));
    }

    void endFile(const Source &source, const Tally &tally) override {
        if (tally.hidden() > 0)
            remark(source.name(), "not-shown", "info", describeHidden(tally));
        if (!tally.remark.empty())
            remark(source.name(), "hidden-error", tally.refused ? "major" : "info", tally.remark);
    }

    void failFile(const std::string &fileName, const std::string &reason) override {
        remark(fileName, "unreadable-file", "blocker", reason);
    }

    void end() override { _json.breakLine().endArray(); }

private:
    void remark(const std::string &fileName, const char *check, const char *severity, const std::string &text) {
        write(entry(fileName, 1, check, severity, text, sha256(pathInRepository(fileName) + '\0' + check)));
    }

    void write(const Json &value) { _json.breakLine().value(value); }

    JsonWriter _json;
    Identities _identities; // of the current file
};

} // namespace

std::unique_ptr<Report> gitlabReport(std::ostream &out, const ReportStyle &) {
    return std::make_unique<GitlabReport>(out);
}
