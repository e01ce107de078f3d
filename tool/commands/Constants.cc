#include "tool/constants/Constants.hh"
#include "tool/check/ReadOutline.hh"
#include "tool/commands/Commands.hh"
#include "tool/console/OutputFile.hh"
#include "tool/console/Text.hh"
#include "tool/model/Model.hh"

#include <algorithm>
#include <filesystem>
#include <optional>

namespace {

constexpr unsigned long kMostJavaInt = 0x7FFFFFFF;

/// Far more than a model needs, and little enough for memory. Deep classes can have any number in a small file.
constexpr std::size_t kMostConstants = 500000, kMostBytes = 100'000'000;

/// Refuses a model whose constants would be too many, or too long in all.
void refuseTooLarge(const Outline &model, const std::string &name) {
    const ConstantsSize size = sizeOfConstants(model);
    if (size.constants > kMostConstants)
        throw CannotWork(name + ": the classes would have " + counted(size.constants, "constant") +
                         ", since each has those of its superclasses too; at most " + std::to_string(kMostConstants) +
                         " are written");
    if (size.bytes > kMostBytes)
        throw CannotWork(name + ": the constants of the classes would take some " +
                         std::to_string(size.bytes / 1'000'000) +
                         " MB, since each has those of its superclasses too; at most " +
                         std::to_string(kMostBytes / 1'000'000) + " MB are written");
}

/// Returns the scopes that a dotted name gives; without one, the scope that the federation or the Java file gives.
std::vector<std::string> scopesFor(const ConstantsOptions &options, const std::string &federation) {
    const ConstantLanguage &language = *options.language;
    const std::string fileStem = std::filesystem::path(options.output).stem().string();
    const bool isNamedByFile = &language == &kJavaConstants && options.output != "-";
    std::vector<std::string> scopes = {isNamedByFile ? fileStem : scopeFor(federation, language)};
    if (!options.scope.empty())
        scopes = split(options.scope, '.');
    if (std::string fault; !areScopes(scopes, language, fault))
        throw CannotWork(inQuotes(fault) + " cannot name the scope around the constants in " + language.name +
                         "; an identifier is expected, such as " + scopeFor(fault, language));
    if (isNamedByFile && std::filesystem::path(options.output).filename() != scopes.back() + ".java")
        throw CannotWork("the Java class " + scopes.back() + " must be in a file " + scopes.back() + ".java, not " +
                         shown(options.output));
    return scopes;
}

/// Reads a model, and what the comments of its text say. Nothing, with the reason, for a damaged image and for a text
/// with syntax errors: some names would be missing.
std::optional<Outline> readModel(const Input &input, Documentation &documentation, std::ostream &complaints) {
    if (input.isImage())
        return outlineToShow(input, complaints);
    const Checker text(input.contents);
    if (reportSyntaxErrors(text.parser(), input.name, complaints))
        return {};
    DeclarationClauses(text).forEachDocumentation(
        [&documentation](const DeclarationRef &ref, const std::string &about) { documentation[ref] = about; });
    return outlineOf(text);
}

bool hasHandleAbove(const Outline &outline, unsigned long most) {
    for (const TreeKind *tree : kTreeKinds)
        for (const Outline::Class &node : outline.classes(*tree)) {
            const auto isAbove = [most](const Outline::Member &member) { return member.handle > most; };
            if (node.handle > most || std::any_of(node.members.begin(), node.members.end(), isAbove))
                return true;
        }
    return std::any_of(outline.spaces.begin(), outline.spaces.end(),
                       [most](const Outline::Space &space) { return static_cast<unsigned long>(space.handle) > most; });
}

} // namespace

Status constants(const ConstantsOptions &options, const Console &console) {
    const Input input = readInput(options.fileName, console.stdinName);
    std::string digits;
    if (options.handles) {
        const auto model = loadModel(input, console.err);
        if (!model)
            return wrong;
        digits = fingerprint(*model);
    }
    Documentation documentation;
    const std::optional<Outline> read = readModel(input, documentation, console.err);
    if (!read)
        return wrong;
    const Outline &outline = *read;
    if (options.handles && options.language == &kJavaConstants && hasHandleAbove(outline, kMostJavaInt))
        throw CannotWork(input.name + ": a handle is greater than " + std::to_string(kMostJavaInt) +
                         ", which Java cannot have as an int");
    if (!outline.loads)
        complainIfRefused(input, "", console.err);
    refuseTooLarge(outline, input.name);
    ConstantFile file{scopesFor(options, outline.federation), {}, {}, std::move(digits)};
    file.title = "Names " + std::string(options.handles ? "and handles " : "") + "of the object model " +
                 shown(outline.federation) + '.';
    file.scope = constantsOf(outline, documentation, *options.language, file);
    writeOutput(
        options.output, [&](std::ostream &out) { options.language->write(file, out); }, console);
    return outline.loads ? done : wrong;
}
