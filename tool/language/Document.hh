#pragma once

#include "tool/check/CheckedFile.hh"
#include "tool/control/Settings.hh"
#include "tool/language/words/Clauses.hh"
#include "tool/language/words/Entities.hh"
#include "tool/syntax/SyntaxTree.hh"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A FED text that an editor has open, with all that `check` knows of it. It never changes: an edit makes a new one.
///
/// The constructor parses the text and builds its database as far as possible. What only some requests need is made on
/// first use. It is always read as a text, also one that begins with a NUL byte.
///
/// Threads: a document belongs to one thread at a time.
class Document {
public:
    /// `name` is the path of the file, for people and for patterns of configurations; the file need not exist.
    Document(std::string name, std::string text, const Settings &settings);
    Document(const Document &) = delete;
    Document &operator=(const Document &) = delete;

    const Settings &settings() const { return _settings; }

    std::string_view text() const { return parser().text(); }
    const RtiFedParser &parser() const { return checker().parser(); }
    const Checker &checker() const { return *_file.text; }
    const RtiFedDatabase &database() const { return checker().database(); }
    const Declarations &declarations() const { return checker().declarations(); }

    /// The findings of `check`, after the comments in the text and the settings have decided about them: the suppressed
    /// ones are among them.
    const std::vector<Finding> &findings() const;

    /// The lossless tree of the text, on its parser.
    const SyntaxTree &tree() const;
    /// What its clauses are.
    const Clauses &clauses() const;
    /// What they declare, as far as it is understood.
    const Entities &entities() const;

private:
    const std::string _name;
    const Settings _settings;
    mutable CheckedFile _file; // its findings are valid once _decided
    mutable bool _decided = false;
    mutable std::optional<Clauses> _clauses;
    mutable std::optional<Entities> _entities;
};
