#include "tool/fom/import/FedText.hh"

#include "fed/storage/RtiFedName.hh"
#include "infrastructure/RtiFedLimits.hh"
#include "tool/check/Suggestion.hh"
#include "tool/console/Console.hh"
#include "tool/console/Line.hh"
#include "tool/console/Text.hh"
#include "tool/fom/import/FomSpaces.hh"
#include "tool/format/Format.hh"
#include "tool/model/MomText.hh"

#include <algorithm>
#include <filesystem>

namespace {

constexpr std::size_t kWidth = 100; // columns of a comment, which the formatting indents
constexpr const char *kStandardInput = "-";

/// The first words of what an import adds to a description. An export keeps them, and the next import drops them.
constexpr std::string_view kImported = "Imported by rtifed import from ", kLeftOut = "Not in FED, and left out here: ";

/// Returns what may follow the semicolons of a comment: a text that would allow findings becomes a quotation.
std::string quotedIfCommand(const std::string &text) {
    return (beginsWith(text, "rtifed:") ? "> " : "") + text;
}

/// Returns a paragraph as lines of comments. The width is less where the formatting will indent them.
std::string commentLines(const std::string &paragraph, std::size_t depth) {
    const std::size_t width = kWidth - std::min(2 * depth, kWidth / 2);
    std::string lines, line;
    const auto endLine = [&] {
        lines += ";; " + quotedIfCommand(line) + '\n';
        line.clear();
    };
    for (const std::string &bytes : wordsOf(paragraph)) {
        const std::string word = shown(bytes);
        if (!line.empty() && columns(line) + columns(word) + 4 > width)
            endLine();
        line += (line.empty() ? "" : " ") + word;
    }
    if (!line.empty())
        endLine();
    return lines;
}

/// Returns a text, whose paragraphs end at empty lines, as comments.
std::string comment(const std::string &text, std::size_t depth = 0) {
    std::string comments, paragraph;
    for (const std::string &line : split(text + "\n\n", '\n')) {
        if (line.find_first_not_of(" \t\r") != std::string::npos) {
            paragraph += line + ' ';
            continue;
        }
        const bool isOfImport = beginsWith(paragraph, kImported);
        const std::string more = isOfImport ? "" : commentLines(paragraph, depth);
        comments += (comments.empty() || more.empty() ? "" : ";;\n") + more;
        paragraph.clear();
    }
    return comments;
}

/// Replaces what no name in FED can have, and cuts what is too long.
std::string asName(std::string name) {
    name.resize(std::min(name.size(), kMaxNameLength));
    for (char &c : name)
        if (c == '"' || c == '\0')
            c = '\'';
        else if (c == '\n' || c == '\r')
            c = ' ';
    return name;
}

class Writer {
public:
    Writer(const FomModel &model, const std::vector<std::string> &files)
        : _model(model), _files(files), _spaces(model) {}

    std::string write() {
        _text = header() + "\n(FED (Federation " + asWord(asName(federation())) + ") (FEDversion " +
                asWord(asName(_model.version)) + ")\n(spaces\n";
        for (const FomSpaces::Space &space : _spaces.all()) {
            _text += comment(space.semantics, 2) + "(space " + asWord(space.name) + '\n';
            for (std::size_t i = 0; i < space.dimensions.size(); ++i)
                _text += comment(space.ofDimensions[i], 3) + "(dimension " + asWord(space.dimensions[i]) + ")\n";
            _text += ")\n";
        }
        _text += ")\n";
        for (const FomTree *tree : kFomTrees) {
            _text += std::string("(") + tree->section + '\n';
            writeClass(*tree, 0, 0);
            _text += ")\n";
        }
        return _text + ")\n";
    }

private:
    std::string federation() const {
        if (!_model.federation.empty())
            return _model.federation;
        return _files.front() == kStandardInput ? "unnamed" : std::filesystem::path(_files.front()).stem().string();
    }

    std::string header() const {
        std::vector<std::string> names;
        for (const std::string &file : _files)
            names.push_back(file == kStandardInput ? "standard input"
                                                   : std::filesystem::path(file).filename().string());
        std::vector<std::string> losses;
        for (const auto &[what, count] : _model.losses)
            losses.push_back(what + " (" + std::to_string(count) + ')');
        const std::string description = comment(_model.description);
        return commentLines(std::string(kImported) + joined(names) + '.', 0) +
               (losses.empty() ? "" : commentLines(std::string(kLeftOut) + joined(losses) + '.', 0)) +
               (description.empty() ? "" : "\n" + description);
    }

    std::string delivery(const FomDelivery &delivery) const {
        const std::string space = _spaces.nameFor(delivery.dimensions);
        const auto wordOr = [](const FomText &word, const char *ofStandard) {
            return ' ' + (word.given() ? word.text : ofStandard);
        };
        return wordOr(delivery.transportation, "reliable") + wordOr(delivery.order, "timestamp") +
               (space.empty() ? "" : ' ' + asWord(space));
    }

    void writeMember(const FomTree &tree, const FomMember &member, std::size_t depth) {
        _text +=
            comment(member.semantics, depth) + '(' + tree.memberElement + ' ' + asWord(member.name.text) +
            (tree.kind.membersHaveProperties ? delivery(member.delivery) : "") + ')' +
            (member.dataType.empty() ? "\n" : " ; " + std::string(kDataTypeInComment) + shown(member.dataType) + '\n');
    }

    /// Writes a class and its subclasses; the levels are limited when they are read. What every root has comes first,
    /// and the Management Object Model last, so that a reader sees the classes of the model.
    void writeClass(const FomTree &tree, std::size_t index, std::size_t depth) {
        const FomClass &node = _model.classes(tree)[index];
        _text += comment(node.semantics, depth) + "(class " + asWord(node.name.text) +
                 (tree.kind.membersHaveProperties ? "" : delivery(node.delivery)) + '\n';
        const bool isRoot = index == 0;
        for (const FomMember &member : node.members)
            writeMember(tree, member, depth + 1);
        if (isRoot)
            _text += std::string("(class ") + kPrivateClass +
                     (tree.kind.membersHaveProperties ? "" : " reliable timestamp") + ")\n";
        bool hasMom = false;
        for (const std::size_t child : node.children) {
            hasMom = hasMom || RtiFedName::equal(_model.classes(tree)[child].name.text, kMomClass);
            writeClass(tree, child, depth + 1);
        }
        if (isRoot && !hasMom)
            _text += "\n;; The Management Object Model, through which the RTI reports and takes requests.\n" +
                     momClass(tree.kind, kMomClass) + '\n';
        _text += ")\n";
    }

    const FomModel &_model;
    const std::vector<std::string> &_files;
    const FomSpaces _spaces;
    std::string _text;
};

/// Long comments in deeply nested classes, which are indented, make a FED of any length of a short model.
void checkSize(const std::string &fed) {
    if (fed.size() > kMaxTextSize) // unreached: an import of more than a gigabyte
        throw CannotWork("the FED is longer than " + std::to_string(kMaxTextSize) + " bytes, mostly with semantics");
}

} // namespace

std::string fedText(const FomModel &model, const std::vector<std::string> &files) {
    const std::string text = Writer(model, files).write();
    checkSize(text);
    const RtiFedParser parser(text);
    std::string result = formatted(SyntaxTree(parser));
    checkSize(result);
    return result;
}
