#include "tool/commands/Commands.hh"
#include "tool/model/Revision.hh"
#include "tool/report/DiffReport.hh"
#include "tool/report/json/DiffJson.hh"

#include <utility>

namespace {

/// Notes that a file which the library refuses was compared nevertheless.
void noteRefused(const Difference &difference, std::ostream &err) {
    if (difference.comparison.verdict() == Comparison::Verdict::identical)
        return;
    for (const ComparedFile *file : {&difference.before, &difference.after})
        if (!file->outline.loads)
            err << "rtifed: " << file->input.name
                << " does not load (rtifed check shows why): only what can be understood is compared, without "
                   "handles\n";
}

} // namespace

Status diff(const DiffOptions &options, const Console &console) {
    if (options.oldName == "-" && options.newName == "-")
        throw CannotWork("standard input can be one of the files, not both");
    Input before = options.against.empty() ? readInputOrRevision(options.oldName, console.stdinName)
                                           : readRevision(options.against, options.newName);
    Input after = readInputOrRevision(options.newName, console.stdinName);
    const ComparedFile old = loadForComparison(std::move(before)), now = loadForComparison(std::move(after));
    const Difference difference(old, now);
    if (!options.quiet) {
        noteRefused(difference, console.err);
        if (options.json) {
            JsonWriter json(console.out, JsonWriter::Layout::compact);
            writeDifference(json, difference);
        } else {
            writeDifference(difference, options.all, console);
        }
    }
    return difference.comparison.verdict() >= options.failOn ? wrong : done;
}
