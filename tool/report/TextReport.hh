#pragma once

#include "tool/console/TerminalBuffer.hh"
#include "tool/report/Report.hh"

#include <ostream>

/// For people: each finding as `FILE:LINE:COLUMN: error: TEXT [RULE]`, with the line of the file below it.
class TextReport : public Report {
public:
    /// `width` is the width of the terminal, 0 if there is none.
    TextReport(std::ostream &out, bool color, std::size_t width);

    void beginFile(const Source &) override {}
    void add(const Source &source, const Finding &finding) override;
    void endFile(const Source &source, const Tally &tally) override;
    void failFile(const std::string &, const std::string &) override {}

private:
    void printHead(const std::string &place, const char *color, const char *kind, const std::string &text);
    void printExcerpt(const Source &source, const std::optional<RtiFedSpan> &span);
    Colored in(const char *color, const std::string &text) const;

    std::ostream &_out;
    bool _color;
    std::size_t _width; // of the lines of a text
};
