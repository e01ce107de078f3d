#pragma once

// What is true of each text, its tree and its canonical layout, for the fuzz targets and the tests.

#include "fed/loading/RtiFedParserCodegen.hh"
#include "infrastructure/RtiStringUtility.hh"
#include "tool/check/Checker.hh"
#include "tool/format/Format.hh"
#include "tool/syntax/SyntaxEdits.hh"

#include <iterator>
#include <map>
#include <string>
#include <utility>
#include <vector>

/// The declarations of a text by the offset of their names: kind, class and words.
using DeclarationTexts = std::map<std::uint32_t, std::string>;

/// The declarations that the parser delivers.
class DeliveredTexts : public RtiFedParserCodegen {
public:
    explicit DeliveredTexts(RtiFedParser &parser) : _parser(parser) { parser.deliver(*this); }

    DeclarationTexts texts;
    std::vector<RtiFedSpan> words; ///< Where the words of the declarations are.

private:
    void setFederate(std::string name) override { add("Federation", "", {name}); }
    void setFederateVersion(std::string version) override { add("FEDversion", "", {version}); }
    void addSpace(std::string name) override { add("space", "", {_owner = name}); }
    void addDimension(std::string name) override { add("dimension", _owner, {name}); }
    void addObjectClass(std::string name) override { add("class", "", {_owner = name}); }
    void addObjectClassAttribute(std::string name, std::string transportation, std::string ordering,
                                 std::string space) override {
        add("attribute", _owner, {name, transportation, ordering, space});
    }
    void addInteractionClass(std::string name, std::string transportation, std::string ordering,
                             std::string space) override {
        add("class", "", {_owner = name, transportation, ordering, space});
    }
    void addParameter(std::string name) override { add("parameter", _owner, {name}); }

    void add(const std::string &kind, const std::string &owner, const std::vector<std::string> &arguments) {
        std::string &text = texts[_parser.span(0).begin];
        text = kind + '|' + owner;
        for (std::size_t i = 0; i < arguments.size(); ++i)
            if (_parser.given(i)) {
                text += '|' + arguments[i];
                words.push_back(_parser.span(i));
            }
    }

    RtiFedParser &_parser;
    std::string _owner;
};

inline std::string nameIn(const SyntaxTree &tree, SyntaxTree::Index token) {
    const std::string_view bytes = tree.bytes(token);
    return std::string(tree.kind(token) == RtiFedPiece::Kind::quotedWord ? bytes.substr(1, bytes.size() - 2) : bytes);
}

/// The same of the tree of a text that parses.
inline DeclarationTexts declarationsOf(const SyntaxTree &tree) {
    DeclarationTexts texts;
    std::vector<std::string> paths; // of the classes and spaces, by clause
    for (SyntaxTree::Index clause = 0; clause < tree.clauses().size(); ++clause) {
        const std::string keyword(tree.keyword(clause));
        const std::vector<SyntaxTree::Index> words = tree.words(clause);
        const SyntaxTree::Index parent = tree.clauses()[clause].parent;
        const std::string owner = parent == SyntaxTree::kNone ? "" : paths[parent];
        std::string path;
        if (keyword == "class")
            path = (owner.empty() ? "" : owner + '.') + nameIn(tree, words[1]);
        else if (keyword == "space")
            path = nameIn(tree, words[1]);
        paths.push_back(path);
        if (words.size() == 1 || keyword == "Federate" || keyword == "sec_level")
            continue;
        std::string &text = texts[tree.begin(words[1])];
        text = keyword + '|' + (path.empty() ? owner + '|' + nameIn(tree, words[1]) : '|' + path);
        for (std::size_t i = 2; i < words.size(); ++i)
            text += '|' + nameIn(tree, words[i]);
    }
    return texts;
}

/// The comments of a text without the blanks at their ends, and its words and parentheses, with keywords in upper case.
struct Contents {
    std::vector<std::string> comments, words;

    explicit Contents(const SyntaxTree &tree) {
        for (SyntaxTree::Index token = 0; token < tree.numTokens(); ++token) {
            const std::string bytes(tree.bytes(token));
            const bool isKeyword = !words.empty() && words.back() == "(";
            if (tree.kind(token) == RtiFedPiece::Kind::comment)
                comments.push_back(bytes.substr(0, bytes.find_last_not_of(" \t\v\f") + 1));
            else if (!SyntaxTree::isSpace(tree.kind(token)))
                words.push_back(isKeyword ? RtiStringUtility::toupper(bytes) : bytes);
        }
    }
};

/// Returns what is wrong with the tree of any text, or nothing.
inline std::string faultOfTree(const std::string &text) {
    RtiFedParser parser(text);
    const SyntaxTree tree(parser);
    std::string printed;
    std::map<std::uint32_t, std::size_t> sizes; // of the words
    for (SyntaxTree::Index token = 0; token < tree.numTokens(); ++token) {
        printed += tree.bytes(token);
        if (tree.bytes(token).empty())
            return "an empty token";
        if (SyntaxTree::isWord(tree.kind(token)))
            sizes[tree.begin(token)] = tree.bytes(token).size();
    }
    if (printed != text || SyntaxEdits(tree).text() != text)
        return "the tree is not the text";
    const DeliveredTexts delivered(parser);
    for (const RtiFedSpan word : delivered.words) {
        const auto after = sizes.upper_bound(word.begin);
        const auto [begin, length] =
            after == sizes.begin() ? std::pair<const std::uint32_t, std::size_t>() : *std::prev(after);
        // In a text with errors, the parser reads a no-break space as a blank, but it is a part of the tree's word.
        const bool isSame = begin == word.begin && length == word.length;
        if (!isSame && (parser.numErrors() == 0 || word.begin + word.length > begin + length))
            return "the parser reads other words";
    }
    if (parser.numErrors() == 0 && delivered.texts != declarationsOf(tree))
        return "the parser reads other clauses";
    for (SyntaxTree::Index clause = 0; clause < tree.clauses().size(); ++clause)
        if (tree.clauseAt(tree.begin(tree.clauses()[clause].open)) != clause)
            return "a clause is not where it begins";
    return "";
}

inline std::string imageOf(const Checker &checker) {
    RtiBuffer image;
    checker.database().save(image);
    return {reinterpret_cast<const char *>(image.data()), image.size()};
}

/// Returns what is wrong with the layout of a text that parses, or nothing. `lines` are formatted alone, too.
inline std::string faultOfFormat(const std::string &text, const FormatOptions &options = {}) {
    const Checker before(text);
    if (before.parser().numErrors() > 0)
        return "";
    const SyntaxTree tree(before.parser());
    const std::string result = formatted(tree, options);
    const Checker after(result);
    const SyntaxTree resultTree(after.parser());
    const Contents old(tree), now(resultTree);
    if (now.words != old.words)
        return "words changed";
    if (now.comments != old.comments)
        return "comments changed";
    if (after.numErrors() != before.numErrors() || imageOf(after) != imageOf(before))
        return "the model changed";
    if (!options.lines && formatted(resultTree, options) != result)
        return "not the same when formatted twice:\n" + result + "----\n" + formatted(resultTree, options);
    return "";
}
