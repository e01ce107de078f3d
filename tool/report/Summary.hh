#pragma once

#include "tool/report/Report.hh"

#include <cstddef>
#include <map>
#include <string>

/// Counts how many files load, and why the others do not.
class Summary {
public:
    void addFile(const Tally &tally);
    void addFailure() { ++_numUnread; }

    /// Whether there is more than one file; a summary of one is no news.
    bool isUseful() const { return _numLoading + _numRefused + _numUnread > 1; }
    /// Returns the summary in one line, such as `14 load, 24 refused: 14 without a complete MOM, 10 unclosed`.
    std::string text() const;

private:
    std::size_t _numLoading = 0, _withErrors = 0, _withWarnings = 0, _numRefused = 0, _numUnread = 0;
    std::map<std::string, std::size_t> _reasons; // by the words of the gravest rule
};
