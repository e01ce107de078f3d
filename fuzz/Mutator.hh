#pragma once

#include <string_view>
#include <vector>

/// Words and clauses that the mutator inserts. Each target that is linked with Mutator.cc defines it.
extern const std::vector<std::string_view> kMutatorWords;
