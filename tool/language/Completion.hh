#pragma once

#include "infrastructure/RtiFedPosition.hh"
#include "tool/language/Markup.hh"

#include <cstdint>
#include <string>
#include <vector>

class Document;

/// Something that an editor offers to insert.
struct Completion {
    enum class Kind : unsigned char {
        keyword, ///< With a snippet for its clause.
        delivery,
        space,
        momClass, ///< A class that the RTI uses, and a member of one.
        momMember,
        version
    };

    Kind kind;
    std::string label;         ///< What the user types the beginning of.
    std::string detail;        ///< A few words; may be empty.
    std::string documentation; ///< May be empty.
    std::string text;          ///< What to insert.
    /// The same with `${1:Name}` and the like for what is to be filled in, in the syntax of the Language Server
    /// Protocol; empty if nothing is. Its lines have LF and two blanks a level, without indentation of the first line.
    std::string snippet = {};
};

struct Completions {
    RtiFedSpan replaced; ///< The word at the cursor, which an item replaces; of length 0 if there is none.
    std::vector<Completion> items;
};

/// Returns what fits at a cursor, whatever the user has typed of it: the keywords and clauses that may begin there, the
/// transportations, orderings and spaces where these belong, and the names of the classes and members that the RTI
/// uses and that are missing. Nothing in a comment and where only the user knows the name.
///
/// It depends on the text before the cursor, so that it works where the rest does not parse. Takes time in proportion
/// to the clauses directly around the cursor and to the spaces. The documentation of the items has this markup.
Completions completionsAt(const Document &document, std::uint32_t offset, Markup markup);
