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

Markup markupOf(const Params &capabilities, std::initializer_list<const char *> path) {
    return lists(capabilities, path, nameOf(Markup::markdown)) ? Markup::markdown : Markup::none;
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

const char *nameOf(Markup markup) {
    return markup == Markup::markdown ? "markdown" : "plaintext";
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
    client.hoverMarkup = markupOf(capabilities, {"textDocument", "hover", "contentFormat"});
    client.completionMarkup =
        markupOf(capabilities, {"textDocument", "completion", "completionItem", "documentationFormat"});
    client.nestedSymbols = can(capabilities, {"textDocument", "documentSymbol", "hierarchicalDocumentSymbolSupport"});
    client.watchesFiles = can(capabilities, {"workspace", "didChangeWatchedFiles", "dynamicRegistration"});
    client.refreshesInlayHints = can(capabilities, {"workspace", "inlayHint", "refreshSupport"});
    client.refreshesCodeLenses = can(capabilities, {"workspace", "codeLens", "refreshSupport"});
    client.folders = foldersOf(params);
    return client;
}

void ClientSettings::set(const Params &given) {
    if (const auto own = given.find("rtifed"))
        return set(*own);
    static const ClientSettings defaults;
    const auto kept = [&](const char *key, auto ClientSettings::*setting) {
        return given.isNull(key) ? defaults.*setting : this->*setting;
    };
    inlayHints = given.flag("inlayHints", kept("inlayHints", &ClientSettings::inlayHints));
    codeLenses = given.flag("codeLens", kept("codeLens", &ClientSettings::codeLenses));
    if (const auto format = given.find("format"); format && format->isNull("indent"))
        indentation = defaults.indentation;
    else if (const auto indent = format ? format->find("indent") : std::nullopt)
        indentation = std::clamp<std::size_t>(indent->number(), 1, kMaxIndentation);
    configuration = given.stringOf("configuration", kept("configuration", &ClientSettings::configuration).c_str());
    rulesUrl = given.stringOf("rulesUrl", kept("rulesUrl", &ClientSettings::rulesUrl).c_str());
}
