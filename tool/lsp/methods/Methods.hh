#pragma once

#include "tool/lsp/Session.hh"

#include <string_view>

/// A method of the protocol, and what handles it: a request returns its result, a notification null. Both may throw
/// ProtocolError.
struct Method {
    std::string_view name;
    bool isRequest;
    Json (*handle)(Session &session, const Params &params);
};

/// Returns the method of this name, or null.
const Method *findMethod(std::string_view name);

// The handlers, by the file that has them.

// Lifecycle.cc
Json initialize(Session &session, const Params &params);
Json initialized(Session &session, const Params &params);
Json shutDown(Session &session, const Params &params);
Json changeConfiguration(Session &session, const Params &params);
Json changeFolders(Session &session, const Params &params);

// TextSync.cc
Json openText(Session &session, const Params &params);
Json changeText(Session &session, const Params &params);
Json closeText(Session &session, const Params &params);
Json saveText(Session &session, const Params &params);
Json ignoreNote(Session &session, const Params &params);

// Diagnostics.cc
Json diagnoseText(Session &session, const Params &params);

// Formatting.cc
Json formatText(Session &session, const Params &params);
Json formatRange(Session &session, const Params &params);
Json formatNewLine(Session &session, const Params &params);

// CodeActions.cc
Json codeActions(Session &session, const Params &params);
Json resolveCodeAction(Session &session, const Params &params);

// Structure.cc
Json symbolsOfText(Session &session, const Params &params);
Json foldText(Session &session, const Params &params);
Json selectText(Session &session, const Params &params);
Json colourText(Session &session, const Params &params);

// Workspace.cc
Json findSymbols(Session &session, const Params &params);
Json diagnoseWorkspace(Session &session, const Params &params);
Json changeFiles(Session &session, const Params &params);

// Navigation.cc
Json hoverName(Session &session, const Params &params);
Json findDefinition(Session &session, const Params &params);
Json findReferences(Session &session, const Params &params);
Json highlightName(Session &session, const Params &params);
Json prepareHierarchy(Session &session, const Params &params);
Json findSupertypes(Session &session, const Params &params);
Json findSubtypes(Session &session, const Params &params);

// Writing.cc
Json completeText(Session &session, const Params &params);
Json prepareRename(Session &session, const Params &params);
Json renameName(Session &session, const Params &params);
Json hintText(Session &session, const Params &params);
Json lensText(Session &session, const Params &params);
