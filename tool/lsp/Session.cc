#include "tool/lsp/Session.hh"

#include "tool/console/Console.hh"
#include "tool/console/Text.hh"
#include "tool/lsp/Uri.hh"

#include <algorithm>
#include <utility>

namespace {

enum MessageType { error = 1 };

} // namespace

OpenDocument &Session::open(const std::string &uri, std::string text) {
    close(uri);
    Settings settings = settingsFor(pathOfUri(uri).value_or(""));
    return _documents.try_emplace(uri, uri, std::move(text), client.encoding, std::move(settings)).first->second;
}

void Session::close(const std::string &uri) {
    _documents.erase(uri);
    undiagnosed.erase(uri);
}

OpenDocument &Session::document(const Params &params) {
    const std::string uri = params["textDocument"]["uri"].string();
    if (OpenDocument *document = find(uri))
        return *document;
    throw ProtocolError(ErrorCode::invalidParams, "the document " + inQuotes(uri, kTextLimit) + " is not open");
}

OpenDocument *Session::find(const std::string &uri) {
    if (const auto found = _documents.find(uri); found != _documents.end())
        return &found->second;
    const auto path = pathOfUri(uri);
    const auto same = std::find_if(_documents.begin(), _documents.end(),
                                   [&path](const auto &known) { return path && known.second.path() == *path; });
    return same == _documents.end() ? nullptr : &same->second;
}

/// An unusable configuration of the user's own settings must not stop all others from being used.
Configurations &Session::configurations() {
    if (!_configurations)
        try {
            ConfigurationOptions options;
            options.file = client.settings.configuration;
            _configurations = std::make_unique<Configurations>(std::move(options));
        } catch (const CannotWork &) {
            _configurations = std::make_unique<Configurations>(ConfigurationOptions{});
            throw;
        }
    return *_configurations;
}

Settings Session::settingsFor(const std::string &path) {
    if (path.empty())
        return {};
    try {
        return configurations().settingsFor(path);
    } catch (const CannotWork &failure) {
        if (_shownErrors.insert(failure.what()).second)
            showError(failure.what());
        return {};
    }
}

void Session::reload() {
    _configurations.reset();
    _shownErrors.clear();
    for (auto &[uri, document] : _documents) {
        document.setSettings(settingsFor(pathOfUri(uri).value_or("")));
        markUndiagnosed(uri);
    }
    files.forgetContents();
    refreshDiagnostics();
}

void Session::refreshDiagnostics() {
    if (client.pullsDiagnostics && client.refreshesDiagnostics)
        request("workspace/diagnostic/refresh", nullptr);
}

void Session::markUndiagnosed(const std::string &uri) {
    if (!client.pullsDiagnostics)
        undiagnosed.insert(uri);
}

void Session::respond(const Json &id, Json result) {
    _send({{"jsonrpc", "2.0"}, {"id", id}, {"result", std::move(result)}});
}

void Session::respondError(const Json &id, ErrorCode code, const std::string &text) {
    _send({{"jsonrpc", "2.0"}, {"id", id}, {"error", {{"code", static_cast<int>(code)}, {"message", text}}}});
}

void Session::notify(const char *method, Json params) {
    _send({{"jsonrpc", "2.0"}, {"method", method}, {"params", std::move(params)}});
}

void Session::request(const char *method, Json params) {
    Json message = {{"jsonrpc", "2.0"}, {"id", ++_numRequests}, {"method", method}};
    if (!params.is_null())
        message["params"] = std::move(params);
    _send(message);
}

void Session::showError(const std::string &text) {
    notify("window/showMessage", {{"type", MessageType::error}, {"message", text}});
}

void Session::log(const std::string &text) {
    notify("window/logMessage", {{"type", MessageType::error}, {"message", text}});
}

void Session::checkCancelled() const {
    if (_isCancelled())
        throw ProtocolError(ErrorCode::requestCancelled, "the request was cancelled");
}
