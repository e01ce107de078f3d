#pragma once

#include "tool/language/Markup.hh"
#include "tool/lsp/Params.hh"
#include "tool/lsp/PositionedText.hh"

#include <string>
#include <vector>

/// Return the name of an encoding or markup in the protocol.
const char *nameOf(PositionEncoding encoding);
const char *nameOf(Markup markup);

/// What the user has set in the editor.
struct ClientSettings {
    bool inlayHints = true, codeLenses = true;
    std::size_t indentation = 2; ///< Of `rtifed fmt`.
    std::string configuration;   ///< The configuration of all files; empty for the nearest `.rtifed.toml`.
    std::string rulesUrl;        ///< The page that explains the rules; empty for the one that is installed.

    /// Takes over what is given: what is absent stays, what is null gets its default. Throws ProtocolError at the first
    /// setting that makes no sense.
    void set(const Params &given);
};

/// What the editor can do, as it said when it started the server; and what its user has set.
struct Client {
    /// Reads the parameters of `initialize`.
    static Client of(const Params &params);

    PositionEncoding encoding = PositionEncoding::utf16;
    bool pullsDiagnostics = false;     ///< It asks for diagnostics; if not, they are sent to it.
    bool refreshesDiagnostics = false; ///< It can be told to ask again.
    bool relatedInformation = false;   ///< Diagnostics may have further places.
    bool diagnosticTags = false;       ///< Diagnostics may say that what they are about is unnecessary.
    bool codeDescriptions = false;     ///< Diagnostics may have a link to their rule.
    bool versionedEdits = false;       ///< Edits may name the version of the text that they are for.
    bool codeActionLiterals = false;   ///< Code actions may have edits; if not, they are not offered.
    bool resolvesCodeActions = false;  ///< It asks for the edit of a code action once that is wanted.
    bool snippets = false;             ///< What completion inserts may have places to fill in.
    bool nestedSymbols = false;        ///< Symbols of a document may be a tree.
    bool watchesFiles = false;         ///< It can be asked to watch files.
    bool refreshesInlayHints = false;  ///< It can be told to ask for hints again.
    bool refreshesCodeLenses = false;  ///< The same for code lenses.
    Markup hoverMarkup = Markup::none, completionMarkup = Markup::none;
    std::vector<std::string> folders; ///< Paths of the workspace.

    ClientSettings settings;
    ClientSettings initialSettings; ///< Those that the server was started with.
};
