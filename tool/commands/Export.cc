#include "tool/check/Checker.hh"
#include "tool/check/ReadOutline.hh"
#include "tool/commands/Commands.hh"
#include "tool/console/OutputFile.hh"
#include "tool/console/Text.hh"
#include "tool/fom/export/TypesFile.hh"

#include <algorithm>
#include <tuple>

namespace {

/// A model, and what its text says beyond it.
struct ReadModel {
    Outline outline;
    FomFacts comments;
    std::string description;
};

/// Whether a file declares nothing that is understood.
bool isNothing(const Outline &outline) {
    return outline.federation.empty() && outline.spaces.empty() && outline.objects.empty() &&
           outline.interactions.empty();
}

/// Reads a file as far as it can be understood. Nothing if that is nothing at all.
std::optional<ReadModel> readModel(const Input &input, const Console &console) {
    if (input.isImage()) {
        auto outline = outlineToShow(input, console.err);
        return outline ? std::optional(ReadModel{std::move(*outline), {}, {}}) : std::nullopt;
    }
    const Checker text(input.contents);
    ReadModel model{outlineOf(text), {}, {}};
    const bool exports = !isNothing(model.outline);
    if (!model.outline.loads)
        complainIfRefused(input, exports ? ", so that only what can be understood is exported" : "", console.err);
    if (!exports)
        return {};
    const DeclarationClauses clauses(text);
    model.comments.addComments(clauses);
    model.description = clauses.documentationOfFile();
    return model;
}

/// Prints the notes in the order of the file.
void print(std::vector<ExportNote> notes, const std::string &fileName, const Console &console) {
    const auto key = [](const ExportNote &note) {
        // equivalent: any place before the first
        return note.place ? std::tuple(note.place->line, note.place->column) : std::tuple(0UL, 0UL);
    };
    std::stable_sort(notes.begin(), notes.end(),
                     [&key](const ExportNote &a, const ExportNote &b) { return key(a) < key(b); });
    for (const ExportNote &note : notes)
        console.err << textOf(fileName, note.place) << ": note: " << note.text << '\n';
}

} // namespace

Status exportModel(const ExportOptions &options, const Console &console) {
    const Input input = readInput(options.fileName, console.stdinName);
    const auto model = readModel(input, console);
    if (!model)
        return wrong;
    std::vector<ExportNote> notes;
    FomFacts facts;
    if (!options.types.empty() || options.typesTemplate) {
        std::vector<ExportNote> ignored; // the export makes them again
        const ExportPlan plan(model->outline, ignored);
        if (!options.types.empty())
            facts = readTypes(options.types, model->outline, plan);
        if (options.typesTemplate)
            writeOutput(options.output, typesTemplate(model->outline, plan, facts, model->comments), console);
    }
    if (!options.typesTemplate) {
        facts.addMissing(model->comments);
        writeOutput(options.output, exportedModel(model->outline, facts, model->description, options.form, notes),
                    console);
    }
    print(std::move(notes), input.name, console);
    return model->outline.loads ? done : wrong;
}
