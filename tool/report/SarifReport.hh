#pragma once

#include "tool/report/Report.hh"

#include <ostream>
#include <string>
#include <vector>

/// For the code scanning of forges and editors: a SARIF 2.1.0 log of one run; each result begins a line.
class SarifReport : public Report {
public:
    explicit SarifReport(std::ostream &out) : _out(out) {}

    void begin() override;
    void beginFile(const Source &) override {}
    void add(const Source &source, const Finding &finding) override;
    void endFile(const Source &source, const Tally &tally) override;
    void failFile(const std::string &fileName, const std::string &reason) override;
    void end() override;

private:
    std::ostream &_out;
    bool _firstResult = true, _allRead = true;
    std::vector<std::string> _notifications; // as JSON, which stand at the end
};
