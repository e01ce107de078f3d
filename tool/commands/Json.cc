#include "tool/commands/Commands.hh"
#include "tool/model/Model.hh"
#include "tool/report/json/ModelJson.hh"

Status json(const JsonOptions &options, const Console &console) {
    const Input input = readInput(options.fileName, console.stdinName);
    const auto outline = outlineToShow(input, console.err);
    if (!outline)
        return wrong;
    const auto database = outline->loads ? buildModel(input) : nullptr;
    JsonWriter json(console.out, JsonWriter::Layout::indented);
    writeModel(json, {input.name, *outline, database.get()}, options.effective);
    return outline->loads ? done : wrong;
}
