#include "tool/commands/Commands.hh"

Status fmt(const FmtOptions &options, const Console &console) {
    if (options.format.lines && options.rewrite.files.size() > 1)
        throw CannotWork("--range needs a single file, found " + std::to_string(options.rewrite.files.size()));
    return rewriteFiles(options.rewrite, console, [&](const Input &input) -> std::optional<Rewritten> {
        const RtiFedParser parser(input.contents);
        if (reportSyntaxErrors(parser, input.name, console.err))
            return std::nullopt;
        return Rewritten{formatted(SyntaxTree(parser), options.format)};
    });
}
