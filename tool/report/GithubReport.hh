#pragma once

#include "tool/report/Report.hh"

#include <ostream>

/// For workflows on a code host: each finding as a command that makes the host show it next to the line.
class GithubReport : public Report {
public:
    explicit GithubReport(std::ostream &out) : _out(out) {}

    void beginFile(const Source &) override {}
    void add(const Source &source, const Finding &finding) override;
    void endFile(const Source &source, const Tally &tally) override;
    void failFile(const std::string &fileName, const std::string &reason) override;

private:
    std::ostream &_out;
};
