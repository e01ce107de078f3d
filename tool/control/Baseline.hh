#pragma once

#include "tool/check/Finding.hh"

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <tuple>

/// The findings that a project knows of, in a file, so that only new ones fail; docs/baseline.schema.json describes it.
///
/// A finding is recognised by its file, rule and text, but not by its place, so that it is known also after lines were
/// added above it. Of equal findings only the number is kept: if there are more than that, the last ones in the text
/// count as new, though another may be.
class Baseline {
public:
    /// An empty baseline that will be the file of this name: the paths in it are relative to its folder.
    explicit Baseline(const std::string &fileName);

    /// Reads a baseline. Throws CannotWork.
    static Baseline read(const std::string &fileName);

    /// Says that the findings of a file are compared with the baseline from now on.
    void beginFile(const std::string &fileName);

    void add(const Finding &finding) { ++_counts[keyOf(finding)]; }

    /// Whether the finding is in the baseline, as often as this was called for equal ones.
    bool take(const Finding &finding);

    /// The number of findings that are left in the baseline of the files that were begun.
    std::size_t numLeft() const;

    std::size_t size() const;

    /// Returns the baseline as JSON, an entry in each line, sorted so that changes are easy to review.
    std::string text() const;

private:
    using Key = std::tuple<std::string, std::string, std::string>; // file, rule, text

    Key keyOf(const Finding &finding) const;

    std::filesystem::path _folder;
    std::string _file; // the current one, as the baseline names it
    std::set<std::string> _begun;
    std::map<Key, std::size_t> _counts;
};
