#pragma once

#include "tool/language/words/Entities.hh"
#include "tool/syntax/SyntaxTree.hh"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

class Checker;

/// A declaration by its indices in the outline of its model.
struct DeclarationRef {
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;

    ClauseKind kind = ClauseKind::unknown;
    std::uint32_t owner = 0;      ///< Of the class or space that it is or is in, among those of its tree.
    std::uint32_t member = kNone; ///< Of an attribute, parameter or dimension.

    bool operator<(const DeclarationRef &other) const {
        return std::tie(kind, owner, member) < std::tie(other.kind, other.owner, other.member);
    }
};

/// Which declaration of a model each place of its text is about, and what the comments say about the declarations.
class DeclarationClauses {
public:
    /// Takes time in proportion to the text, which must outlive this object.
    explicit DeclarationClauses(const Checker &text);

    /// Returns the innermost declaration whose clause has this byte.
    std::optional<DeclarationRef> at(std::uint32_t offset) const;

    /// Returns what the comments before the first declaration say, which are about the file, with an empty line
    /// wherever other lines are between two of them. The comments next to that declaration, and those next to
    /// federates, are not about the file.
    std::string documentationOfFile() const;

    /// Returns what the comments next to the sections of this keyword say.
    std::string documentationOfSections(std::string_view keyword) const;

    /// Calls `visit` with each declaration that has comments, and what they say.
    void forEachDocumentation(const std::function<void(const DeclarationRef &, const std::string &)> &visit) const;

private:
    static constexpr std::uint32_t kNone = Entities::kNone;

    void number();
    void findClauses();

    const SyntaxTree &_tree;
    Entities _entities;
    std::vector<DeclarationRef> _refs;      // by entity
    std::vector<Entities::Index> _declared; // by clause; kNone if it declares nothing that is in the model
    std::vector<Entities::Index> _about; // by clause: the same, or that of the innermost clause around it that has one
};
