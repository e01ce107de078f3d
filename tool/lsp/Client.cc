#include "tool/lsp/Client.hh"

#include "tool/format/Format.hh"
#include "tool/lsp/Uri.hh"

#include <algorithm>
#include <initializer_list>
#include <optional>

namespace {

/// Whether the client has a capability: a member that is neither absent nor false.
bool can(const Params &capabilities, std::initializer_list<const char *> path) {
    std::optional<Params> part = capabilities;
    for (const char *key : path)
        if (part)
            part = part->find(key);
    return part && !(part->value().is_boolean() && !part->value().get<bool>());
}

bool lists(const Params &capabilities, std::initializer_list<const char *> path, const char *word) {
    std::optional<Params> part = capabilities;
    for (const char *key : path)
        if (part)
            part = part->find(key);
    return part && part->value().is_array() &&
           std::any_of(part->value().begin(), part->value().end(), [&](const Received &each) { return each == word; });
}

/// Returns the first encoding in the order of the client that the server has, too; UTF-16 for a client that names none.
PositionEncoding encodingFor(const Params &capabilities) {
    if (const auto general = capabilities.find("general"))
        if (const auto encodings = general->find("positionEncodings"))
            for (const Params &encoding : encodings->items())
                for (const PositionEncoding known :
                     {PositionEncoding::utf8, PositionEncoding::utf16, PositionEncoding::utf32})
                    if (encoding.value() == nameOf(known))
                        return known;
    return PositionEncoding::utf16;
}

std::vector<std::string> foldersOf(const Params &params) {
    std::vector<std::string> folders;
    const auto add = [&](const std::string &uri) {
        if (const auto path = pathOfUri(uri))
            folders.push_back(*path);
    };
    if (const auto given = params.find("workspaceFolders"))
        for (const Params &folder : given->items())
            add(folder["uri"].string());
    else if (const auto root = params.find("rootUri"))
        add(root->string());
    return folders;
}

} // namespace

const char *nameOf(PositionEncoding encoding) {
    return encoding == PositionEncoding::utf8 ? "utf-8" : encoding == PositionEncoding::utf16 ? "utf-16" : "utf-32";
}

Client Client::of(const Params &params) {
    static const Received none = Received::object();
    const Params capabilities = params.find("capabilities").value_or(Params(none));
    Client client;
    client.encoding = encodingFor(capabilities);
    client.pullsDiagnostics = can(capabilities, {"textDocument", "diagnostic"});
    client.refreshesDiagnostics = can(capabilities, {"workspace", "diagnostics", "refreshSupport"});
    client.relatedInformation = can(capabilities, {"textDocument", "publishDiagnostics", "relatedInformation"});
    client.diagnosticTags = can(capabilities, {"textDocument", "publishDiagnostics", "tagSupport"});
    client.codeDescriptions = can(capabilities, {"textDocument", "publishDiagnostics", "codeDescriptionSupport"});
    client.versionedEdits = can(capabilities, {"workspace", "workspaceEdit", "documentChanges"});
    client.codeActionLiterals = can(capabilities, {"textDocument", "codeAction", "codeActionLiteralSupport"});
    client.resolvesCodeActions =
        lists(capabilities, {"textDocument", "codeAction", "resolveSupport", "properties"}, "edit");
    client.snippets = can(capabilities, {"textDocument", "completion", "completionItem", "snippetSupport"});
    client.markdown = lists(capabilities, {"textDocument", "hover", "contentFormat"}, "markdown");
    client.nestedSymbols = can(capabilities, {"textDocument", "documentSymbol", "hierarchicalDocumentSymbolSupport"});
    client.watchesFiles = can(capabilities, {"workspace", "didChangeWatchedFiles", "dynamicRegistration"});
    client.refreshesInlayHints = can(capabilities, {"workspace", "inlayHint", "refreshSupport"});
    client.refreshesCodeLenses = can(capabilities, {"workspace", "codeLens", "refreshSupport"});
    client.folders = foldersOf(params);
    return client;
}

void Client::set(const Params &settings) {
    if (const auto own = settings.find("rtifed"))
        return set(*own);
    inlayHints = settings.flag("inlayHints", inlayHints);
    codeLenses = settings.flag("codeLens", codeLenses);
    if (const auto format = settings.find("format"))
        if (const auto indent = format->find("indent"))
            indentation = std::clamp<std::size_t>(indent->number(), 1, kMaxIndentation);
    configuration = settings.stringOf("configuration", configuration.c_str());
    rulesUrl = settings.stringOf("rulesUrl", rulesUrl.c_str());
}
