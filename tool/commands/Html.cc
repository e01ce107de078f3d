#include "tool/commands/HtmlFolder.hh"
#include "tool/input/Revision.hh"
#include "tool/page/ModelPage.hh"
#include "tool/page/Page.hh"

#include <filesystem>

namespace {

/// Returns the old file that the page shows the changes from; nothing if there is none to compare.
std::optional<ComparedFile> oldFile(const HtmlOptions &options, const ModelToShow &model, const Console &console) {
    if (options.against.empty())
        return {};
    ComparedFile old = loadForComparison(readOldVersion(options.against, options.fileName, console.stdinName));
    if (model.isDamagedImage())
        return {};
    return old;
}

} // namespace

Status html(const HtmlOptions &options, const Console &console) {
    std::error_code none;
    if (options.fileName != "-" && std::filesystem::is_directory(options.fileName, none))
        return htmlOfFolder(options, console);
    Input input = readInput(options.fileName, console.stdinName);
    const Settings settings = Configurations(options.configuration).settingsFor(input.name);
    ModelToShow model(std::move(input), settings);
    const bool loads = model.file.outline.loads;
    const std::optional<ComparedFile> old = oldFile(options, model, console);
    std::optional<Difference> difference;
    if (old)
        difference.emplace(*old, model.file);
    if (!loads)
        console.err << model.complaint;
    const ModelPageOptions page{difference ? &*difference : nullptr, ""};
    if (options.output == "-") {
        writeModelPage(model, page, console.out);
    } else {
        TextStream text;
        writeModelPage(model, page, text);
        writePageFile(options.output, text.str());
    }
    return loads ? done : wrong;
}
