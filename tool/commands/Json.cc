#include "tool/commands/Commands.hh"
#include "tool/report/Loading.hh"
#include "tool/report/json/ModelJson.hh"

#include <utility>

Status json(const JsonOptions &options, const Console &console) {
    Input input = readInput(options.fileName, console.stdinName);
    const std::string name = input.name;
    const auto file = fileToShow(std::move(input), console.err);
    if (!file)
        return wrong;
    JsonWriter json(console.out, JsonWriter::Layout::indented);
    writeModel(json, {name, file->outline, file->database.get()}, options.effective);
    return file->outline.loads ? done : wrong;
}
