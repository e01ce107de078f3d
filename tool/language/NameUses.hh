#pragma once

#include "tool/language/words/Entities.hh"

#include <optional>
#include <string>
#include <vector>

class Document;

/// How a place names something.
enum class NameUse : unsigned char {
    declaration,
    repeatedDeclaration, ///< A duplicate, which the library refuses.
    use,                 ///< The space of an attribute or interaction class.
    comment              ///< A component of a dotted name in a comment.
};

/// Something that a name may mean.
struct NamedEntity {
    Entities::Index entity;
    Entities::Index via; ///< Of a member in a comment: the class before it, which may inherit the member; else kNone.
};

/// A name in a text that means something that the text declares.
struct NameAt {
    RtiFedSpan span;
    NameUse use;
    std::vector<NamedEntity> meanings; ///< Not empty; more than one only in a comment.
};

/// Returns the name that the cursor is in or directly after; nothing if nothing is known of it.
///
/// Takes little time once the entities of the document are known.
std::optional<NameAt> nameAt(const Document &document, std::uint32_t offset);

/// A place that names something.
struct Reference {
    RtiFedSpan span;
    NameUse use = NameUse::declaration;
    bool isCertain =
        true; ///< Whether it can mean nothing else: a dotted name in a comment may be the end of several names.
};

/// Returns all places that name an entity, in the order of the text: its declarations, the uses of a space, and
/// comments. Takes time in proportion to the text.
std::vector<Reference> referencesTo(const Document &document, Entities::Index entity);

/// The same for all that the name at an offset may mean, without duplicates. Empty if it means nothing. An editor can
/// use it for highlights too.
std::vector<Reference> referencesAt(const Document &document, std::uint32_t offset);

/// Returns the names where the meaning of the name at an offset is declared first: the member of a superclass for an
/// inherited one. Empty if there is no name, or the text does not declare it.
std::vector<RtiFedSpan> definitionsAt(const Document &document, std::uint32_t offset);
