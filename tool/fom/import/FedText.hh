#pragma once

#include "tool/fom/import/FomModel.hh"

#include <string>
#include <vector>

/// Returns an object model without errors as formatted FED text that loads, with the Management Object Model of FED.
/// Comments have what the model says and FED cannot hold: the semantics and data types where they belong, and all else
/// in a summary at the top. `files` are the names of the modules; the first one names a federation without a name.
std::string fedText(const FomModel &model, const std::vector<std::string> &files);
