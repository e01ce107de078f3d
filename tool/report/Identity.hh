#pragma once

#include "tool/check/Finding.hh"

#include <cstddef>
#include <map>
#include <string>

/// Names the findings of a file so that their names stay when lines move.
///
/// The idea: a finding is known by its rule and its text without the positions in it. Equal ones are numbered in their
/// order, so that one more or less changes no other name.
class Identities {
public:
    /// Returns 64 hexadecimal digits for the next finding of the file.
    std::string next(const std::string &fileName, const Finding &finding);

private:
    std::map<std::string, std::size_t> _count; // by rule and text
};
