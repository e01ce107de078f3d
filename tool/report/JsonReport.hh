#pragma once

#include "tool/report/Report.hh"

#include <ostream>
#include <utility>
#include <vector>

/// For programs: one JSON document, described by docs/findings.schema.json; each file and finding begins a line.
class JsonReport : public Report {
public:
    explicit JsonReport(std::ostream &out) : _out(out) {}

    void begin() override;
    void beginFile(const Source &source) override;
    void add(const Source &source, const Finding &finding) override;
    void endFile(const Source &source, const Tally &tally) override;
    void failFile(const std::string &fileName, const std::string &reason) override;
    void end() override;

private:
    std::ostream &_out;
    bool _firstFile = true, _firstFinding = true;
    std::vector<std::pair<std::string, std::string>> _failures; // file and reason, which stand at the end
};
