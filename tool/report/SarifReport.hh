#pragma once

#include "tool/console/JsonWriter.hh"
#include "tool/report/Report.hh"

#include <ostream>
#include <string>
#include <vector>

/// For code scanning and editors: a SARIF 2.1.0 log of one run. Each result begins a line.
class SarifReport : public Report {
public:
    explicit SarifReport(std::ostream &out) : _json(out, JsonWriter::Layout::compact) {}

    void begin() override;
    void beginFile(const Source &) override {}
    void add(const Source &source, const Finding &finding) override;
    void endFile(const Source &source, const Tally &tally) override;
    void failFile(const std::string &fileName, const std::string &reason) override;
    void end() override;

private:
    JsonWriter _json;
    bool _allRead = true;
    std::vector<Json> _notifications; // written at the end
};
