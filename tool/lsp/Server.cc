#include "tool/lsp/Server.hh"

#include "tool/console/Console.hh"
#include "tool/console/Text.hh"
#include "tool/lsp/methods/Diagnostics.hh"
#include "tool/lsp/methods/Methods.hh"

#include <array>
#include <cerrno>
#include <cstring>
#include <new>
#include <poll.h>
#include <unistd.h>
#include <utility>

namespace {

constexpr const char *kCancel = "$/cancelRequest";

bool isId(const Received &id) {
    return id.is_string() || id.is_number_integer();
}

ProtocolError unusableId(const Received &id) {
    return {ErrorCode::invalidRequest, std::string("id: expected a string or whole number, found ") + id.type_name()};
}

/// Returns an id as it is sent back. Throws ProtocolError for one that cannot be.
Json idOf(const Received &id) {
    if (!isId(id) && !id.is_null())
        throw unusableId(id);
    return Json(id);
}

/// Whether a message may be ignored: those whose names begin so are extensions of other clients and servers.
bool isOptional(const std::string &method) {
    return beginsWith(method, "$/");
}

} // namespace

Server::Server(std::function<void(const std::string &)> write, std::function<void()> readMore)
    : _write(std::move(write)), _readMore(std::move(readMore)),
      _session([this](const Json &message) { _write(framed(textOfMessage(message))); },
               [this] { return isCancelled(); }) {}

void Server::receive(std::string_view bytes) {
    _reader.add(bytes);
    while (auto message = _reader.next())
        if (message->fault.empty())
            add(message->body);
        else
            _session.respondError(nullptr, ErrorCode::parseError, message->fault);
}

void Server::add(const std::string &body) {
    try {
        Received message = parseMessage(body);
        if (!message.is_object())
            throw ProtocolError(ErrorCode::invalidRequest,
                                std::string("expected an object, found ") + message.type_name());
        if (message.value("method", Received()) == kCancel && !message.contains("id"))
            return cancel(message);
        _waiting.push_back({std::move(message), body.size()});
        _numWaiting += body.size();
    } catch (const ProtocolError &refused) {
        _session.respondError(nullptr, refused.code(), refused.what());
    }
}

/// Cancels a request at once, before those that came earlier are answered. As for any notification, what is wrong with
/// it is logged.
void Server::cancel(const Received &message) {
    try {
        cancelRequest(Params(message, "message")["params"]["id"].value());
    } catch (const ProtocolError &refused) {
        _session.log(std::string(kCancel) + ": " + refused.what());
    }
}

void Server::cancelRequest(const Received &id) {
    if (!isId(id))
        throw unusableId(id);
    for (Waiting &waiting : _waiting) {
        const auto waitingId = waiting.message.find("id");
        if (waitingId != waiting.message.end() && *waitingId == id)
            waiting.cancelled = true;
    }
    _currentCancelled = _currentCancelled || _current == id;
}

bool Server::isCancelled() {
    if (!isFull())
        _readMore();
    return _currentCancelled;
}

bool Server::handleNext() {
    if (_waiting.empty())
        return false;
    const Waiting waiting = std::move(_waiting.front());
    _waiting.pop_front();
    _numWaiting -= waiting.size;
    handle(waiting);
    return true;
}

bool Server::handleIdle() {
    if (_session.undiagnosed.empty())
        return false;
    const std::string uri = *_session.undiagnosed.begin();
    _session.undiagnosed.erase(uri);
    publishDiagnostics(_session, *_session.find(uri));
    return !_session.undiagnosed.empty();
}

void Server::handle(const Waiting &waiting) {
    const Received &message = waiting.message;
    const auto id = message.find("id"), method = message.find("method");
    if (method == message.end() && (message.contains("result") || message.contains("error")))
        return; // an answer to a request of the server, none of which matters
    Json answerId;
    try {
        if (id != message.end())
            answerId = idOf(*id);
        const std::string name = Params(message, "message")["method"].string();
        static const Received none;
        const auto given = message.find("params");
        const Params params(given == message.end() ? none : *given);
        if (id == message.end())
            return note(name, params);
        if (waiting.cancelled)
            throw ProtocolError(ErrorCode::requestCancelled, "the request was cancelled");
        _current = *id;
        _currentCancelled = false;
        _session.respond(answerId, answer(name, params));
    } catch (const ProtocolError &refused) {
        _session.respondError(answerId, refused.code(), refused.what());
    }
}

/// Answers a request. Throws ProtocolError.
Json Server::answer(const std::string &method, const Params &params) {
    const Method *known = findMethod(method);
    if (_session.state == Session::State::created && method != "initialize")
        throw ProtocolError(ErrorCode::serverNotInitialized,
                            "expected the request initialize first, found " + inQuotes(method));
    if (_session.state == Session::State::shutDown)
        throw ProtocolError(ErrorCode::invalidRequest,
                            "the server was shut down; expected the notification exit, found " + inQuotes(method));
    if (!known || !known->isRequest)
        throw ProtocolError(known ? ErrorCode::invalidRequest : ErrorCode::methodNotFound,
                            known ? method + " is a notification, which has no id"
                                  : "unknown method " + inQuotes(method));
    try {
        return known->handle(_session, params);
    } catch (const std::bad_alloc &) { // unreached: the processes in which memory runs out record nothing
        throw ProtocolError(ErrorCode::internalError, kOutOfMemory);
    }
}

/// Handles a notification. What is wrong with it cannot be answered, so it is logged.
void Server::note(const std::string &method, const Params &params) {
    if (method == "exit") {
        _status = _session.state == Session::State::shutDown ? 0 : 1;
        _session.state = Session::State::exited;
        return; // equivalent: nothing is handled after it
    }
    if (_session.state != Session::State::running)
        return;
    const Method *known = findMethod(method);
    if (!known || known->isRequest) {
        if (known)
            _session.log(method + " is a request, which needs an id");
        else if (!isOptional(method))
            _session.log("unknown notification " + inQuotes(method));
        return;
    }
    try {
        known->handle(_session, params);
    } catch (const std::bad_alloc &) { // unreached: as above
        _session.log(method + ": " + kOutOfMemory);
    } catch (const std::exception &refused) {
        _session.log(method + ": " + refused.what());
    }
}

namespace {

/// Input from a file descriptor.
class ClientInput {
public:
    explicit ClientInput(int file) : _file(file) {}

    /// Whether bytes have come, or the end, so that reading does not wait.
    bool isWaiting() const {
        pollfd polled{_file, POLLIN, 0}; // equivalent: poll sets the last one
        return poll(&polled, 1, 0) > 0;  // equivalent: a millisecond
    }

    /// Waits for bytes and passes them to the server. Returns false at the end. Throws CannotWork.
    bool read(Server &server) {
        ssize_t size = -1; // equivalent: not used before it is read
        do
            size = ::read(_file, _bytes.data(), _bytes.size());
        while (size < 0 && errno == EINTR); // unreached: no signal that comes is handled and returns
        if (size < 0)
            throw CannotWork(std::string("standard input: ") + std::strerror(errno));
        _ended = size == 0;
        server.receive({_bytes.data(), static_cast<std::size_t>(size)});
        return !_ended;
    }

    void readWaiting(Server &server) {
        while (!_ended && !server.isFull() && isWaiting())
            read(server);
    }

    bool hasEnded() const { return _ended; }

private:
    const int _file;
    bool _ended = false;
    std::array<char, 65536> _bytes{}; // equivalent: any capacity
};

} // namespace

int serve(int in, std::ostream &out) {
    ClientInput input(in);
    Server *running = nullptr;
    Server server([&](const std::string &bytes) { out << bytes << std::flush; }, [&] { input.readWaiting(*running); });
    running = &server;
    while (!server.hasExited()) {
        input.readWaiting(server);
        if (server.handleNext() || server.handleIdle())
            continue;
        // unreached: input comes in this moment
        if (input.hasEnded() || (!input.isWaiting() && !input.read(server)))
            break;
    }
    return server.status();
}
