#pragma once

#include "tool/console/JsonWriter.hh"
#include "tool/language/words/DeclarationClauses.hh"

#include <cstdint>
#include <functional>
#include <string>

/// Which declaration of a model the places and comments of its text are about. The script of the page knows a
/// declaration by its index in the JSON of the model: ["object", CLASS], ["object", CLASS, MEMBER], and the same with
/// "interaction" and "space".
class DeclarationRefs {
public:
    /// Takes time in proportion to the text, which must outlive this object.
    explicit DeclarationRefs(const Checker &text) : _clauses(text) {}

    /// Returns the innermost declaration whose clause has this byte; null if there is none.
    Json at(std::uint32_t offset) const;

    /// Calls `visit` with null and the comments about the file as a whole, with ["space"], ["object"] and
    /// ["interaction"] and the comments about all spaces or classes of a kind, and with each declaration and its
    /// comments; only if there are comments.
    void forEachDocumentation(const std::function<void(const Json &, const std::string &)> &visit) const;

private:
    DeclarationClauses _clauses;
};
