#pragma once

#include "tool/lsp/MessageReader.hh"
#include "tool/lsp/Session.hh"

#include <cstddef>
#include <deque>
#include <functional>
#include <ostream>
#include <string>
#include <string_view>

/// The language server as the client sees it: bytes come in, messages go out.
///
/// One thread does all. Messages are answered in their order, but all input that is there is read before each of them:
/// so a request can be cancelled before its turn, and diagnostics wait until no further edit is there. A person who
/// types faster than a text can be checked gets the diagnostics of the newest text only.
class Server {
public:
    /// `write` takes the bytes for the client. `readMore` is called while a long request is being answered: it passes
    /// what has come to receive(), and does not wait.
    Server(
        std::function<void(const std::string &)> write, std::function<void()> readMore = [] {});

    /// Takes bytes from the client.
    void receive(std::string_view bytes);

    /// Handles the next message. Returns false if there is none.
    bool handleNext();

    /// Does what can wait until there is no message: diagnostics of one text. Returns false if nothing is left.
    bool handleIdle();

    /// Whether the bytes that wait to be handled are too many to read more.
    bool isFull() const { return _numWaiting > kMaxWaiting; }
    bool hasExited() const { return _session.state == Session::State::exited; }
    /// The exit status: 0 if the client asked for a shutdown before.
    int status() const { return _status; }

    const Session &session() const { return _session; }

private:
    static constexpr std::size_t kMaxWaiting = std::size_t(1) << 20;

    /// A message that was not yet handled.
    struct Waiting {
        Received message;
        std::size_t size;
        bool cancelled = false;
    };

    void add(const std::string &body);
    void cancel(const Received &message);
    void cancelRequest(const Received &id);
    void handle(const Waiting &waiting);
    Json answer(const std::string &method, const Params &params);
    void note(const std::string &method, const Params &params);
    bool isCancelled();

    std::function<void(const std::string &)> _write;
    std::function<void()> _readMore;
    MessageReader _reader;
    std::deque<Waiting> _waiting;
    std::size_t _numWaiting = 0; // bytes
    Received _current;           // the id of the request that is being answered, or was the last
    bool _currentCancelled = false;
    int _status = 1;
    Session _session;
};

/// Serves the client that writes to the file descriptor `in` and reads from `out`, until it says `exit` or closes the
/// connection. Returns the exit status.
int serve(int in, std::ostream &out);
