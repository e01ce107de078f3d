#include "tool/modules/ModuleNode.hh"

#include "fed/storage/RtiFedName.hh"
#include "tool/console/Text.hh"
#include "tool/format/Format.hh"
#include "tool/model/DeliveryWords.hh"
#include "tool/model/TreeKind.hh"
#include "tool/syntax/TextStyle.hh"

#include <algorithm>

namespace {

using Kind = SyntaxTree::Kind;
using Index = Module::Index;

/// Puts the text together from tokens, without caring for the layout, and formats it.
class ModuleWriter {
public:
    explicit ModuleWriter(const ModuleNode &fed) : _lineEnd(lineEndOf(fed.module->original().tree())) { write(fed); }

    std::string formattedText() {
        const RtiFedParser parser(std::move(_text));
        return formatted(SyntaxTree(parser));
    }

private:
    /// A clause without clauses has the comment that is about it after its ")". If it gets clauses, that comment goes
    /// beside its words, where it is about it still.
    void write(const ModuleNode &node) {
        const Module &module = *node.module;
        const auto [open, close, parent, end] = module.tree().clauses()[node.clause];
        const Module::Extent &extent = module.extent(node.clause);
        const bool opensUp = !module.tree().hasClauses(node.clause) && !node.children.empty();
        copy(module, extent.begin, open);
        if (!node.commentsAbove.empty()) {
            writeLines(node.commentsAbove);
            padTo(module, open);
        }
        copy(module, open, extent.headEnd);
        if (opensUp)
            // equivalent: the module is formatted, so blanks follow, which are written for the column
            copyBeside(module, close + 1, extent.end);
        for (const ModuleNode &child : node.children)
            write(child);
        copy(module, extent.tail, close);
        writeLines(node.commentsAtEnd);
        copy(module, close, close + 1);
        if (!opensUp)
            copyBeside(module, close + 1, extent.end);
    }

    void copy(const Module &module, Index begin, Index end) {
        for (Index token = begin; token < end; ++token) {
            const Kind kind = module.tree().kind(token);
            if (kind == Kind::lineEnd)
                _text += _lineEnd;
            else
                write(module.tree().bytes(token), kind == Kind::comment);
            _endsInComment = kind == Kind::comment;
        }
    }

    /// Copies the comment after a clause, in the column that it has there: lines below it that are in its column
    /// continue it.
    void copyBeside(const Module &module, Index begin, Index end) {
        if (begin < end) // equivalent: further blanks do not matter, since the text is formatted
            padTo(module, begin);
        copy(module, begin, end);
    }

    /// Writes blanks up to the column of a token in its module.
    void padTo(const Module &module, Index token) {
        if (_endsInComment)
            _text += _lineEnd;
        _endsInComment = false;
        // equivalent: columns are only compared
        const auto columnAfter = [](std::string_view text) { return text.size() - (text.find_last_of("\r\n") + 1); };
        const std::size_t wanted = columnAfter(module.tree().text().substr(0, module.tree().begin(token)));
        const std::size_t column = columnAfter(_text);
        _text.append(wanted - std::min(column, wanted), ' ');
    }

    void writeLines(const std::vector<std::string> &comments) {
        for (const std::string &comment : comments) {
            _text.erase(_text.find_last_not_of(' ') + 1); // the indentation of the line, if nothing else is on it
            if (!_text.empty() && _text.back() != '\n' && _text.back() != '\r')
                _text += _lineEnd;
            write(comment, true);
            _endsInComment = true;
        }
    }

    void write(std::string_view bytes, bool isComment) {
        if (_endsInComment && !isComment)
            _text += _lineEnd;
        _text += bytes;
    }

    const std::string_view _lineEnd;
    std::string _text;
    bool _endsInComment = false;
};

} // namespace

ModuleNode nodeOf(const Module &module, Index clause) {
    ModuleNode node{&module, clause};
    module.forEachChild(clause, [&](Index child) { node.children.push_back(nodeOf(module, child)); });
    return node;
}

std::string textOf(const ModuleNode &fed) {
    return ModuleWriter(fed).formattedText();
}

ModuleProperties::ModuleProperties(const Module &module, Index clause) {
    const std::vector<Index> words = module.tree().words(clause);
    const auto word = [&](std::size_t index) {
        return index < words.size() ? wordOf(module.tree(), words[index]) : std::string_view();
    };
    const ClauseKind kind = module.clauses()[clause].kind;
    if (kind == ClauseKind::attribute || kind == ClauseKind::interactionClass) {
        transportation = word(2);
        ordering = word(3);
        space = word(4);
    } else if (kind == ClauseKind::federate) {
        securityLevel = word(2);
    }
    module.forEachChild(clause, [&](Index child) {
        if (module.clauses()[child].kind == ClauseKind::secLevel)
            securityLevel = wordOf(module.tree(), module.tree().words(child).at(1));
    });
}

bool ModuleProperties::operator==(const ModuleProperties &other) const {
    return meaningOf(transportation) == meaningOf(other.transportation) &&
           meaningOf(ordering) == meaningOf(other.ordering) && RtiFedName::equal(space, other.space) &&
           securityLevel == other.securityLevel;
}

std::string ModuleProperties::descriptionBeside(const ModuleProperties &other) const {
    std::string words;
    for (const std::string_view word : {transportation, ordering, space})
        words += (words.empty() || word.empty() ? "" : " ") + std::string(word);
    const std::string level =
        securityLevel.empty() ? "without security level" : "of security level " + inQuotes(securityLevel);
    return words.empty() ? level
                         : inQuotes(words, kTextLimit) + (securityLevel == other.securityLevel ? "" : ' ' + level);
}

bool isMomClass(std::string_view fullName) {
    return std::any_of(kTreeKinds.begin(), kTreeKinds.end(), [fullName](const TreeKind *tree) {
        return RtiFedName::equal(fullName, std::string(tree->root) + ".Manager");
    });
}
