#pragma once

#include "tool/fom/import/FomModel.hh"
#include "tool/fom/import/FomModules.hh"

/// Reads the modules of an object model and merges them, as a federation does. What is wrong is added to the modules;
/// the model then has what can be understood.
FomModel readModel(FomModules &modules);
