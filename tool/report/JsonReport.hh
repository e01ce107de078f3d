#pragma once

#include "tool/console/JsonWriter.hh"
#include "tool/report/Report.hh"

#include <ostream>

/// For programs: one JSON document, described by docs/findings.schema.json. Each file and each finding begins a line.
class JsonReport : public Report {
public:
    explicit JsonReport(std::ostream &out) : _json(out, JsonWriter::Layout::compact) {}

    void begin() override;
    void beginFile(const Source &source) override;
    void add(const Source &source, const Finding &finding) override;
    void endFile(const Source &source, const Tally &tally) override;
    void failFile(const std::string &fileName, const std::string &reason) override;
    void end() override;

private:
    JsonWriter _json;
    Json _failures = Json::array(); // written at the end
};
