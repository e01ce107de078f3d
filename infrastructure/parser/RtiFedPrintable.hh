#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// What RtiFedParser::printableSize and RtiFedParser::printable promise.
std::size_t printableSize(std::string_view bytes);
std::string printable(std::string_view bytes, std::size_t limit = 60);
