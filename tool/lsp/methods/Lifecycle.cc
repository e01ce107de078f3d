#include "tool/lsp/methods/Methods.hh"

#include "tool/language/SemanticTokens.hh"
#include "tool/lsp/Uri.hh"

#include <algorithm>

namespace {

/// What the server can do, in the order of the protocol.
Json capabilitiesFor(const Client &client) {
    Json capabilities = {{"positionEncoding", nameOf(client.encoding)},
                         {"textDocumentSync", {{"openClose", true}, {"change", 2}, {"save", true}}},
                         {"completionProvider", {{"triggerCharacters", {"(", " "}}}},
                         {"hoverProvider", true},
                         {"declarationProvider", true},
                         {"definitionProvider", true},
                         {"referencesProvider", true},
                         {"documentHighlightProvider", true},
                         {"renameProvider", {{"prepareProvider", true}}},
                         {"typeHierarchyProvider", true},
                         {"inlayHintProvider", true},
                         {"codeLensProvider", Json::object()},
                         {"documentSymbolProvider", true},
                         {"workspaceSymbolProvider", {{"workDoneProgress", true}}},
                         {"foldingRangeProvider", true},
                         {"selectionRangeProvider", true},
                         {"semanticTokensProvider",
                          {{"legend", {{"tokenTypes", kTokenTypeNames}, {"tokenModifiers", kTokenModifierNames}}},
                           {"full", true},
                           {"range", true}}},
                         {"documentFormattingProvider", true},
                         {"documentRangeFormattingProvider", true},
                         {"documentOnTypeFormattingProvider", {{"firstTriggerCharacter", "\n"}}},
                         {"workspace", {{"workspaceFolders", {{"supported", true}, {"changeNotifications", true}}}}}};
    if (client.codeActionLiterals)
        capabilities["codeActionProvider"] = {
            {"codeActionKinds", {"quickfix", "source.fixAll.rtifed", "source.addMom.rtifed"}},
            {"resolveProvider", true}};
    if (client.pullsDiagnostics)
        capabilities["diagnosticProvider"] = {{"identifier", "rtifed"},
                                              {"interFileDependencies", false},
                                              {"workspaceDiagnostics", true},
                                              {"workDoneProgress", true}};
    return capabilities;
}

/// A wrong setting is reported, and must not keep the server from its work.
void takeSettings(Session &session, const std::optional<Params> &settings) {
    try {
        if (settings)
            session.client.settings.set(*settings);
    } catch (const ProtocolError &wrong) {
        session.showError(std::string("settings of rtifed: ") + wrong.what());
    }
}

} // namespace

Json initialize(Session &session, const Params &params) {
    if (session.state != Session::State::created)
        throw ProtocolError(ErrorCode::invalidRequest, "the server is initialized already");
    session.client = Client::of(params);
    takeSettings(session, params.find("initializationOptions"));
    session.client.initialSettings = session.client.settings;
    session.state = Session::State::running;
    return {{"capabilities", capabilitiesFor(session.client)},
            {"serverInfo", {{"name", "rtifed"}, {"version", RTIFED_VERSION}}}};
}

Json initialized(Session &session, const Params &) {
    if (session.client.watchesFiles) {
        const Json watchers = {{{"globPattern", "**/*.[fF][eE][dD]"}},
                               {{"globPattern", "**/" + std::string(kConfigurationName)}}};
        session.request("client/registerCapability",
                        {{"registrations", Json::array({{{"id", "files"},
                                                         {"method", "workspace/didChangeWatchedFiles"},
                                                         {"registerOptions", {{"watchers", watchers}}}}})}});
    }
    return nullptr;
}

Json shutDown(Session &session, const Params &) {
    session.state = Session::State::shutDown;
    return nullptr;
}

/// Without any settings those hold again that the server was started with.
Json changeConfiguration(Session &session, const Params &params) {
    const auto settings = params.find("settings");
    // unreached: the protocol requires settings, or null
    if (!settings || settings->isNull("rtifed"))
        session.client.settings = session.client.initialSettings;
    takeSettings(session, settings);
    session.reload();
    if (session.client.refreshesInlayHints)
        session.request("workspace/inlayHint/refresh", nullptr);
    if (session.client.refreshesCodeLenses)
        session.request("workspace/codeLens/refresh", nullptr);
    return nullptr;
}

Json changeFolders(Session &session, const Params &params) {
    std::vector<std::string> &folders = session.client.folders;
    const auto pathOf = [](const Params &folder) { return pathOfUri(folder["uri"].string()); };
    for (const Params &removed : params["event"]["removed"].items())
        if (const auto path = pathOf(removed))
            folders.erase(std::remove(folders.begin(), folders.end(), *path), folders.end());
    for (const Params &added : params["event"]["added"].items())
        if (const auto path = pathOf(added))
            folders.push_back(*path);
    session.files.forgetNames();
    return nullptr;
}
