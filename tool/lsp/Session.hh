#pragma once

#include "tool/control/Configurations.hh"
#include "tool/lsp/Client.hh"
#include "tool/lsp/OpenDocument.hh"
#include "tool/lsp/WorkspaceFiles.hh"

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>

/// What the methods of the protocol work on: the client, the texts that it has open, and how to reach it.
class Session {
public:
    /// `send` takes each message for the client. `isCancelled` reads what has come from the client, and returns whether
    /// it has cancelled the request that is being answered.
    Session(std::function<void(const Json &)> send, std::function<bool()> isCancelled)
        : _send(std::move(send)), _isCancelled(std::move(isCancelled)) {}

    enum class State : unsigned char { created, running, shutDown, exited };
    State state = State::created;
    Client client;

    /// Opens a text, in place of one that is open under this URI.
    OpenDocument &open(const std::string &uri, std::string text);
    void close(const std::string &uri);
    /// Returns the open text that `params.textDocument` names. Throws ProtocolError if there is none.
    OpenDocument &document(const Params &params);
    /// Returns the open text of this URI, or of one that encodes the same path otherwise, as editors do; or null.
    OpenDocument *find(const std::string &uri);
    const std::map<std::string, OpenDocument> &documents() const { return _documents; }

    /// Returns what holds for a file. A configuration that cannot be used is reported to the person, once; the defaults
    /// hold then.
    Settings settingsFor(const std::string &path);
    /// Reads the configurations anew, for all open texts.
    void reload();

    /// The open texts whose diagnostics the client has not yet got; empty if it asks for them itself.
    std::set<std::string> undiagnosed;
    void markUndiagnosed(const std::string &uri);
    /// Tells a client that asks for diagnostics to ask again.
    void refreshDiagnostics();

    WorkspaceFiles files;

    void respond(const Json &id, Json result);
    void respondError(const Json &id, ErrorCode code, const std::string &text);
    void notify(const char *method, Json params);
    /// Sends a request whose answer does not matter.
    void request(const char *method, Json params);
    void showError(const std::string &text);
    void log(const std::string &text);

    /// Throws ProtocolError if the client has cancelled the request that is being answered.
    void checkCancelled() const;

private:
    Configurations &configurations();

    std::function<void(const Json &)> _send;
    std::function<bool()> _isCancelled;
    std::map<std::string, OpenDocument> _documents;
    std::unique_ptr<Configurations> _configurations; // null until needed
    std::set<std::string> _shownErrors;              // about configurations
    int _numRequests = 0;
};
