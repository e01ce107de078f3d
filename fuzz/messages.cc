// The language server: any bytes from the client get answers that are JSON, and no crash. The first byte says how the
// others are read: as the stream itself, in pieces of any size; or as messages that NUL bytes separate, of which each
// gets its header, after a client has initialized the server and opened a text.

#include "fuzz/Fuzz.hh"
#include "tool/lsp/Server.hh"

#include <algorithm>

namespace {

void handleAll(Server &server) {
    while (server.handleNext() || server.handleIdle())
        continue;
}

/// Checks that each message of the server is JSON with the right length.
void check(const std::string &bytes) {
    MessageReader reader;
    reader.add(bytes);
    while (const auto message = reader.next()) {
        FUZZ_CHECK(message->fault.empty());
        FUZZ_CHECK(Received::parse(message->body).at("jsonrpc") == "2.0");
    }
}

const char *const kBegin[] = {
    R"~({"id":0,"method":"initialize","params":{"capabilities":{"textDocument":)~"
    R"~({"codeAction":{"codeActionLiteralSupport":{}}}}}})~",
    R"~({"method":"textDocument/didOpen","params":{"textDocument":{"uri":"file:///nowhere/a.fed","version":1,"text":)~"
    R"~("(FED (Federation \u00e4\ud83d\ude00)\r\n(FEDversion v1.3)\r(objects (class A (attribute x relaible receive)"}}})~"};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    if (size == 0)
        return 0;
    Server server(check);
    const std::string input = textOf(data + 1, size - 1);
    if (data[0] % 2 == 0) {
        const std::size_t piece = data[0] / 2 + 1U;
        for (std::size_t at = 0; at < input.size() && !server.hasExited(); at += piece) {
            server.receive(input.substr(at, piece));
            handleAll(server);
        }
        return 0;
    }
    for (const char *body : kBegin)
        server.receive(framed(body));
    for (std::size_t at = 0; at < input.size() && !server.hasExited();) {
        const std::size_t end = std::min(input.find('\0', at), input.size());
        server.receive(framed(input.substr(at, end - at)));
        if (input.size() % 2 == 0) // else all are there before the first one is handled
            handleAll(server);
        at = end + 1;
    }
    handleAll(server);
    return 0;
}
