#include "tool/console/JsonWriter.hh"
#include "tool/console/Text.hh"
#include "tool/report/Report.hh"
#include "tool/report/Summary.hh"

#include <algorithm>
#include <array>
#include <iomanip>
#include <utility>
#include <vector>

namespace {

constexpr int kStatisticsVersion = 1; // to be raised when a key is removed or changes its meaning

/// Counts the findings of each rule.
class StatisticsReport : public Report {
public:
    explicit StatisticsReport(std::ostream &out) : _out(out) {}

    void beginFile(const Source &, const Tally &) override { ++_file; }

    void add(const Source &, const Finding &finding) override {
        Count &count = _counts[finding.rule->index];
        ++count.findings;
        count.places += 1 + finding.furtherPlaces.size();
        count.files += std::exchange(count.lastFile, _file) == _file ? 0 : 1;
    }

    void endFile(const Source &source, const Tally &tally) override {
        _summary.addFile(tally);
        if (!tally.remark.empty())
            _remarks.push_back(source.name() + ": note: " + tally.remark);
    }
    void failFile(const std::string &, const std::string &) override { _summary.addFailure(); }

    void end() override {
        const std::vector<const Rule *> rules = mostFrequentFirst();
        if (!rules.empty())
            _out << "places  findings  files  rule\n";
        std::size_t width = 0;
        for (const Rule *rule : rules)
            width = std::max(width, std::string(rule->id).size());
        for (const Rule *rule : rules) {
            const Count &count = _counts[rule->index];
            _out << std::setw(6) << count.places << std::setw(10) << count.findings << std::setw(7) << count.files
                 << "  " << rule->id << std::string(width + 2 - std::string(rule->id).size(), ' ') << rule->title
                 << '\n';
        }
        for (const std::string &remark : _remarks)
            _out << remark << '\n';
        if (_summary.isUseful())
            _out << _summary.text() << '\n';
    }

protected:
    struct Count {
        std::size_t findings = 0, places = 0, files = 0, lastFile = 0;
    };

    std::vector<const Rule *> mostFrequentFirst() const {
        std::vector<const Rule *> rules;
        for (const Rule &rule : allRules())
            if (_counts[rule.index].findings > 0)
                rules.push_back(&rule);
        std::stable_sort(rules.begin(), rules.end(), [this](const Rule *a, const Rule *b) {
            return _counts[a->index].places > _counts[b->index].places;
        });
        return rules;
    }

    const Count &countOf(const Rule &rule) const { return _counts[rule.index]; }

private:
    std::ostream &_out;
    std::array<Count, std::tuple_size<Rules>::value> _counts;
    std::size_t _file = 0; // the number of the current one
    Summary _summary;
    std::vector<std::string> _remarks; // about errors that are hidden
};

/// The same as JSON.
class JsonStatisticsReport : public StatisticsReport {
public:
    explicit JsonStatisticsReport(std::ostream &out) : StatisticsReport(out), _json(out, JsonWriter::Layout::compact) {}

    void failFile(const std::string &fileName, const std::string &reason) override {
        _failures.push_back({{"file", fileName}, {"text", reason}});
    }

    void end() override {
        _json.beginObject().member("formatVersion", kStatisticsVersion).key("rules").beginArray();
        for (const Rule *rule : mostFrequentFirst())
            _json.breakLine().value({{"rule", rule->id},
                                     {"findings", countOf(*rule).findings},
                                     {"places", countOf(*rule).places},
                                     {"files", countOf(*rule).files}});
        _json.breakLine().endArray().member("failures", _failures).endObject();
    }

private:
    JsonWriter _json;
    Json _failures = Json::array();
};

} // namespace

std::unique_ptr<Report> statisticsReport(std::ostream &out, const ReportStyle &) {
    return std::make_unique<StatisticsReport>(out);
}

std::unique_ptr<Report> jsonStatisticsReport(std::ostream &out, const ReportStyle &) {
    return std::make_unique<JsonStatisticsReport>(out);
}
