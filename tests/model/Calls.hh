#pragma once

#include "benchmarks/Federation.hh"

#include <array>
#include <string>
#include <vector>

/// A call of the library: the first byte chooses the operation, the others its arguments, so that a sequence of calls
/// means something whatever is taken out of it.
using Call = std::array<unsigned char, 8>;

/// Makes the same calls on a database of the library and on the plain model of one, which begin with a few classes or
/// with a federation that both load. Returns the calls up to the first answer that differs, and both answers; nothing
/// if all are the same.
std::string faultOfCalls(const std::vector<Call> &calls, const Federation *federation = nullptr);
