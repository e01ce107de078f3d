#pragma once

#include "fed/RtiFedDatabase.hh"
#include "tool/check/Finding.hh"
#include "tool/model/Declarations.hh"

#include <functional>
#include <string_view>
#include <vector>

/// A text, the database that was built from it as far as possible, and the places of the records.
struct BuiltText {
    const RtiFedParser &parser;
    const RtiFedDatabase &database;
    const Declarations &declarations;
};

/// Returns what is missing of the Management Object Model (MOM) as one finding, and a finding for each tree that has
/// the MOM beside its root. Names for which `mayBeDeclared` is true, in a part of the text that was not understood, do
/// not count as missing.
std::vector<Finding> momFindings(const BuiltText &text, const std::function<bool(std::string_view)> &mayBeDeclared);
