#pragma once

#include "tool/fom/import/FomModel.hh"
#include "tool/fom/import/FomModules.hh"
#include "tool/model/Outline.hh"

#include <vector>

/// Returns an object model as far as it is understood, with the places of the first module. See Import::outline().
Outline outlineOf(const FomModel &model, const FomModules &modules, const std::vector<Outline::Space> &similar);

/// Removes from two outlines, of which at least one is of XML, what cannot differ between them: what every FED has in
/// its roots; roots in which neither has anything else, and what only one of them says of how the root interaction
/// class is sent; the order of dimensions; and the names of the federation and version.
void removeWhatXmlLacks(Outline &a, Outline &b);
