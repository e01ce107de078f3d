#pragma once

#include "tool/check/Rule.hh"

#include <ostream>
#include <string>

/// Writes what there is to know about a rule, in lines of at most `width` columns.
void writeRule(const Rule &rule, std::size_t width, std::ostream &out);

/// Writes a line for each rule.
void writeRuleList(std::ostream &out);

/// Returns docs/rules.md, the page about all rules.
std::string rulesAsMarkdown();
