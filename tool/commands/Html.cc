#include "tool/check/ReadOutline.hh"
#include "tool/commands/Commands.hh"
#include "tool/console/OutputFile.hh"
#include "tool/console/Text.hh"
#include "tool/model/Revision.hh"
#include "tool/page/ModelPage.hh"

#include <sstream>

Status html(const HtmlOptions &options, const Console &console) {
    Configurations configurations(options.configuration);
    Input input = readInput(options.fileName, console.stdinName);
    const Settings settings = configurations.settingsFor(input.name);
    ModelToShow model(std::move(input), settings);
    std::optional<ComparedFile> old;
    std::optional<Difference> difference;
    if (!options.against.empty()) {
        Input before = readRevision(options.against, options.fileName);
        Outline outline = readOutline(before);
        old.emplace(ComparedFile{std::move(before), std::move(outline)});
        difference.emplace(*old, model.file);
    }
    const bool loads = model.file.outline.loads;
    const ModelPageOptions page{difference ? &*difference : nullptr, ""};
    if (options.output == "-") {
        writeModelPage(model, page, console.out);
    } else {
        std::ostringstream text;
        writeModelPage(model, page, text);
        const std::string bytes = text.str();
        writeFile(options.output, bytes.data(), bytes.size());
    }
    return loads ? done : wrong;
}
