#pragma once

#include "tool/check/Finding.hh"

#include <string>
#include <string_view>

/// Returns a syntax error of a text as a finding. It adds what the parser cannot know: which words are transportations
/// and orderings, and how the mistake is fixed.
Finding findingOf(RtiFedParser::Error error, std::string_view text);

/// The transportation or ordering that two words make, such as `best effort`; empty if they make none.
std::string joinedDeliveryWord(std::string_view first, std::string_view second);
