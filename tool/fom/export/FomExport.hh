#pragma once

#include "tool/fom/export/ExportPlan.hh"
#include "tool/fom/export/FomFacts.hh"
#include "tool/model/Outline.hh"

#include <string>
#include <vector>

/// What an export is for.
enum class FomForm : unsigned char {
    interchange, ///< Between people and tools; valid against the schema DIF.
    fdd,         ///< For creating a federation execution; valid against the schema FDD as well.
    module       ///< For being merged with other modules: as interchange, without what is empty or in every federation.
};

/// Returns a model as XML of IEEE 1516-2010, with a line for each element. `description` is the text about the model as
/// a whole. `notes` gets what the export says otherwise than the file.
std::string exportedModel(const Outline &outline, const FomFacts &facts, const std::string &description, FomForm form,
                          std::vector<ExportNote> &notes);
