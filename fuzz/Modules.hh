#pragma once

// What is true of each merge, extract and set of constants, for the fuzz target and the tests.

#include "fuzz/Syntax.hh"
#include "tool/check/ReadOutline.hh"
#include "tool/comparison/Comparison.hh"
#include "tool/console/Console.hh"
#include "tool/constants/Constants.hh"
#include "tool/modules/Extract.hh"
#include "tool/modules/Merge.hh"

#include <algorithm>
#include <list>
#include <regex>
#include <set>
#include <sstream>

/// Merges texts that parse. `conflicts` gets the number of conflicts; the result then means nothing.
inline std::string mergedText(const std::vector<std::string> &texts, std::size_t &conflicts) {
    std::list<Module> modules;
    Merge merge(false);
    for (const std::string &text : texts)
        merge.add(modules.emplace_back("m" + std::to_string(modules.size()), std::make_unique<const Checker>(text)));
    merge.checkInheritance();
    conflicts = merge.conflicts().size();
    return conflicts > 0 ? "" : merge.text();
}

/// The declarations of a text in upper case, without the federation and its version: kind, class and name.
inline std::set<std::string> declarationSet(const std::string &text) {
    const RtiFedParser parser(text);
    std::set<std::string> declarations;
    for (const auto &[offset, declaration] : declarationsOf(SyntaxTree(parser)))
        if (declaration.rfind("F", 0) != 0)
            declarations.insert(RtiStringUtility::toupper(
                declaration.substr(0, declaration.find('|', declaration.find('|', declaration.find('|') + 1) + 1))));
    return declarations;
}

inline std::set<std::string> commentSet(const std::string &text) {
    const RtiFedParser parser(text);
    const std::vector<std::string> comments = Contents(SyntaxTree(parser)).comments;
    return {comments.begin(), comments.end()};
}

template <class Set>
bool isSubset(const Set &part, const Set &whole) {
    return std::includes(whole.begin(), whole.end(), part.begin(), part.end());
}

/// Returns what is wrong with the merge of texts, or nothing. Texts that do not parse are not merged.
inline std::string faultOfMerge(const std::vector<std::string> &texts) {
    bool allLoad = true;
    for (const std::string &text : texts) {
        const Checker checker(text);
        if (checker.parser().numErrors() > 0)
            return "";
        allLoad = allLoad && checker.findsNoError();
    }
    std::size_t conflicts = 0, again = 0;
    const std::string result = mergedText(texts, conflicts);
    if (conflicts > 0)
        return "";
    const Checker checker(result);
    if (checker.parser().numErrors() > 0 || (allLoad && !checker.findsNoError()))
        return "the result does not load:\n" + result;
    const std::set<std::string> declarations = declarationSet(result), comments = commentSet(result);
    for (const std::string &text : texts)
        if (!isSubset(commentSet(text), comments))
            return "a comment is lost:\n" + result;
    if (!allLoad) // a class may then be declared twice, differently
        return "";
    std::set<std::string> expected;
    for (const std::string &text : texts)
        expected.merge(declarationSet(text));
    if (declarations != expected)
        return "the result has other declarations:\n" + result;
    for (const std::string &text : texts) {
        const std::string repeated = mergedText({result, text}, again);
        if (again > 0 || declarationSet(repeated) != declarations || commentSet(repeated) != comments)
            return "merged again, the result changes:\n" + result + "----\n" + repeated;
    }
    return "";
}

/// Returns what is wrong with the extracts of single classes of a text that loads, or nothing.
inline std::string faultOfExtracts(const std::string &text, std::size_t most) {
    const Checker checker(text);
    if (!checker.findsNoError())
        return "";
    const Outline model = outlineOf(checker);
    const Module module("m", std::make_unique<const Checker>(text));
    std::vector<std::string> extracts;
    for (const TreeKind *tree : kTreeKinds)
        for (const Outline::Class &node : model.classes(*tree)) {
            ExtractedClasses wanted;
            (tree == &kObjectTree ? wanted.objects : wanted.interactions).insert(RtiStringUtility::toupper(node.name));
            extracts.push_back(extracted(module, wanted));
            if (!Checker(extracts.back()).findsNoError())
                return "the extract of " + node.name + " does not load:\n" + extracts.back();
            if (extracts.size() == most)
                return "";
        }
    std::size_t conflicts = 0;
    const std::string all = mergedText(extracts, conflicts);
    const Outline now = outlineOf(Checker(all));
    if (conflicts > 0 || Comparison(model, now, false).verdict() > Comparison::Verdict::renumbered)
        return "the extracts of all classes are not the model:\n" + all;
    return "";
}

/// Returns what is wrong with the identifiers of a scope and those in it, or nothing.
inline std::string faultOfScope(const ConstantScope &scope, const ConstantLanguage &language,
                                std::vector<std::string> enclosing) {
    static const std::regex legal("[A-Za-z]([A-Za-z0-9]|_(?!_))*");
    std::set<std::string> identifiers;
    const auto isGood = [&](const std::string &identifier) {
        return std::regex_match(identifier, legal) && identifiers.insert(identifier).second &&
               language.keywords.count(identifier) == 0;
    };
    for (const Constant &constant : scope.constants)
        if (!isGood(constant.identifier))
            return "the constant " + constant.identifier + " in " + scope.title;
    for (const ConstantScope &inner : scope.scopes) {
        if (!isGood(inner.identifier) ||
            std::find(enclosing.begin(), enclosing.end(), inner.identifier) != enclosing.end())
            return "the scope " + inner.identifier + " in " + scope.title;
        enclosing.push_back(inner.identifier);
        if (std::string fault = faultOfScope(inner, language, enclosing); !fault.empty())
            return fault;
        enclosing.pop_back();
    }
    return "";
}

/// Returns what is wrong with the constants of any text, or nothing.
inline std::string faultOfConstants(const std::string &text) {
    const Outline model = outlineOf(Checker(text));
    for (const ConstantLanguage *language : {&kCppConstants, &kJavaConstants, &kPythonConstants}) {
        ConstantFile file{{scopeFor(model.federation, *language)}, "", {}, std::string(64, '0')};
        file.scope = constantsOf(model, {}, *language, file);
        if (std::string fault = faultOfScope(file.scope, *language, file.path); !fault.empty())
            return language->name + (": " + fault);
        std::ostringstream written;
        try {
            language->write(file, written);
        } catch (const CannotWork &) { // such as classes that are too deep for Java
            continue;
        }
        if (written.str().find_first_of(std::string("\0\r\t", 3)) != std::string::npos)
            return std::string(language->name) + ": a control character";
    }
    return "";
}
