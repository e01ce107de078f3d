#include "tool/console/Digest.hh"
#include "tool/console/JsonWriter.hh"
#include "tool/report/Report.hh"

#include <cstddef>
#include <map>
#include <string>

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Returns a text without the numbers of positions, LINE:COLUMN.
std::string withoutPositions(const std::string &text) {
    std::string kept;
    for (std::size_t at = 0; at < text.size();) {
        std::size_t end = at;
        while (end < text.size() && isDigit(text[end]))
            ++end;
        if (end > at && end + 1 < text.size() && text[end] == ':' && isDigit(text[end + 1])) {
            for (++end; end < text.size() && isDigit(text[end]);)
                ++end;
            at = end;
        } else {
            end = end > at ? end : end + 1;
            kept.append(text, at, end - at);
            at = end;
        }
    }
    return kept;
}

/// Names the findings of a file so that their names stay when lines move.
///
/// The idea: a finding is known by its rule and its text without the positions in it. Equal ones are numbered in their
/// order, so that one more or less changes no other name.
class Identities {
public:
    /// Returns 64 hexadecimal digits for the next finding of the file.
    std::string next(const std::string &fileName, const Finding &finding) {
        std::string mistake = finding.rule->id + ('\0' + withoutPositions(finding.text));
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
