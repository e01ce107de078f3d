#pragma once

#include "tool/console/JsonWriter.hh"
#include "tool/model/Outline.hh"

#include <string>

class RtiFedDatabase;

/// A model, as docs/model.schema.json describes it.
struct ShownModel {
    const std::string &fileName;
    const Outline &outline;
    const RtiFedDatabase *database; ///< Null for a file that the library refuses.
};

/// Writes a model as the next value. With `effective`, each class has a list of its inherited members as well.
void writeModel(JsonWriter &json, const ShownModel &model, bool effective);
