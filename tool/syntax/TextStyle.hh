#pragma once

#include "tool/syntax/SyntaxTree.hh"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

/// How the author of a text writes it, for edits that should look the same.
struct TextStyle {
    std::string lineEnd;     ///< The most frequent one; LF if there is none.
    std::string indentation; ///< The most frequent difference between a clause and the clause around it.
    bool closesOnOwnLine;    ///< Whether most ")" of clauses with clauses in them begin a line.
    bool hasColumns;         ///< Whether most attributes have their transportation below that of the one before.
    /// How the text first spells a keyword, by its usual spelling; only where they differ.
    std::map<std::string, std::string, std::less<>> keywords;
};

TextStyle styleOf(const SyntaxTree &tree);

/// Returns the line end that a text has most often; of equally frequent ones the first of LF, CR LF and CR.
std::string_view lineEndOf(const SyntaxTree &tree);

/// Returns the blanks before a token if nothing else precedes it on its line, else nothing.
std::optional<std::string_view> indentationOf(const SyntaxTree &tree, SyntaxTree::Index token);
