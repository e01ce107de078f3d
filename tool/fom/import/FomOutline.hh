#pragma once

#include "tool/fom/import/FomModel.hh"
#include "tool/fom/import/FomModules.hh"
#include "tool/model/Outline.hh"

#include <vector>

/// Returns an object model as far as it is understood, with the places of the first module. See Import::outline().
Outline outlineOf(const FomModel &model, const FomModules &modules, const std::vector<Outline::Space> &similar);

/// Removes from an outline what no object model in XML has, or need not have: what every FED has in its roots, a root
/// with nothing else in it, and the names of the federation and version.
void removeWhatXmlLacks(Outline &outline);
