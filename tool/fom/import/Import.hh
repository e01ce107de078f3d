#pragma once

#include "tool/fom/import/FomModules.hh"
#include "tool/fom/import/FomReader.hh"
#include "tool/model/Outline.hh"
#include "tool/report/Source.hh"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

/// Object models in XML, and what they are in FED.
class Import {
public:
    /// Reads the modules of one object model.
    explicit Import(std::vector<Input> inputs) : _modules(std::move(inputs)), _model(readModel(_modules)) {}

    const std::vector<FomModules::Module> &modules() const { return _modules.all(); }
    bool succeeds() const { return _modules.numErrors() == 0; }
    /// Whether each module is one of an object model that can be read, with errors or without.
    bool isUnderstood() const { return _model.isUnderstood; }

    /// The model as FED text; only if it succeeds.
    std::string text() const;

    /// The model, as far as it can be understood, with the places of the first module. It has no handles and no
    /// Management Object Model. `similar` are the spaces of a model to compare with, see FomSpaces.
    Outline outline(const std::vector<Outline::Space> &similar) const;

private:
    FomModules _modules;
    FomModel _model;
};

/// Returns a module as findings refer to it. The module must outlive the result.
inline Source sourceOf(const FomModules::Module &module) {
    return {module.name, module.text->text(),
            [text = module.text.get()](std::uint32_t offset) { return text->positionAt(offset); }};
}
