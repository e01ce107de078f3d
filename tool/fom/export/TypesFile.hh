#pragma once

#include "tool/fom/export/ExportPlan.hh"
#include "tool/fom/export/FomFacts.hh"
#include "tool/model/Outline.hh"

#include <string>

/// A file of types: a TOML document in which a person says of the classes, members and dimensions of a model what FED
/// does not, such as their data types.
///
///     [objects."Craft.Tug"]
///     sharing = "PublishSubscribe"
///     attributes.BollardPull = { dataType = "HLAfloat64BE", updateType = "Static" }
///     [interactions.Collision]
///     parameters.Damage = { dataType = "HLAunicodeString" }
///     [spaces.Area]
///     dimensions.east = { upperBound = 48000 }
///
/// Names are those of the FED, in any letter case, and of classes with or without the root.

/// Reads a file of types. Throws CannotWork with all its faults, to which belong names that the export does not have.
FomFacts readTypes(const std::string &fileName, const Outline &outline, const ExportPlan &plan);

/// Returns a file of types with all names of an export, what is known of them, and empty texts to fill in. `comments`
/// has what the comments of the FED say.
std::string typesTemplate(const Outline &outline, const ExportPlan &plan, const FomFacts &known,
                          const FomFacts &comments);
