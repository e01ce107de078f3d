#include "tool/lsp/MessageReader.hh"
#include "tool/lsp/methods/Methods.hh"

namespace {

std::int64_t versionOf(const Params &textDocument) {
    const Received &version = textDocument["version"].value();
    return version.is_number_integer() ? version.get<std::int64_t>() : 0;
}

/// A client that does not tell which files change may have another configuration by now.
void readConfigurations(Session &session) {
    if (!session.client.watchesFiles)
        session.reload();
}

/// Closes a document, and takes back its diagnostics, which the client would show for ever.
void close(Session &session, const std::string &uri) {
    session.close(uri);
    if (!session.client.pullsDiagnostics)
        session.notify("textDocument/publishDiagnostics", {{"uri", uri}, {"diagnostics", Json::array()}});
}

} // namespace

Json openText(Session &session, const Params &params) {
    const Params textDocument = params["textDocument"];
    std::string text = textDocument["text"].string();
    const std::string uri = textDocument["uri"].string();
    static_assert(kMaxMessage <= kMaxOpenText, "no message has a text that is too long");
    readConfigurations(session);
    session.open(uri, std::move(text)).version = versionOf(textDocument);
    session.markUndiagnosed(uri);
    return nullptr;
}

/// A change that cannot be applied leaves a text that is not that of the editor. So the document is closed: all that is
/// asked about it is answered by an error then, and not by what is wrong.
Json changeText(Session &session, const Params &params) {
    OpenDocument &document = session.document(params);
    const std::string uri = document.uri();
    try {
        for (const Params &change : params["contentChanges"].items())
            document.apply(change);
        document.version = versionOf(params["textDocument"]);
    } catch (const ProtocolError &) {
        close(session, uri);
        throw;
    }
    session.markUndiagnosed(uri);
    return nullptr;
}

Json closeText(Session &session, const Params &params) {
    const std::string uri = session.document(params).uri(); // a copy, which outlives the document
    close(session, uri);
    return nullptr;
}

Json saveText(Session &session, const Params &) {
    readConfigurations(session);
    return nullptr;
}

Json ignoreNote(Session &, const Params &) {
    return nullptr;
}
