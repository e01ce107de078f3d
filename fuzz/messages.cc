// The language server: any bytes from the client get answers that are JSON, and no crash. The first byte says how the
// others are read: as the stream itself, in pieces of any size; or as messages that NUL bytes separate, of which each
// gets its header, after a client has initialized the server and opened a text.

#include "fuzz/Fuzz.hh"
#include "fuzz/MessageWords.hh"
#include "tool/lsp/Server.hh"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <vector>

namespace {

/// A folder with a second text and a configuration, as a workspace. In the inputs, it is called /nowhere.
class Workspace {
public:
    Workspace() {
        FUZZ_CHECK(mkdtemp(_path.data()));
        std::ofstream(_path + "/b.fed")
            << "(FED (Federation F) (FEDversion v) (objects (class Aa (attribute x reliable receive))))";
        std::ofstream(_path + "/.rtifed.toml") << "[naming]\nclass = \"[A-Z]*\"\n";
    }
    Workspace(const Workspace &) = delete;
    Workspace &operator=(const Workspace &) = delete;
    ~Workspace() { std::filesystem::remove_all(_path); }

    std::string withPaths(std::string input) const {
        constexpr std::string_view kName = "/nowhere";
        for (std::size_t at = 0; (at = input.find(kName, at)) != std::string::npos; at += _path.size())
            input.replace(at, kName.size(), _path);
        return input;
    }

    /// Whether the server reads only this folder, and not all files of this machine.
    bool confines(const Server &server) const {
        const auto isIn = [this](const std::string &folder) {
            return folder.rfind(_path, 0) == 0 && folder.find("..") == std::string::npos;
        };
        const std::vector<std::string> &folders = server.session().client.folders;
        return std::all_of(folders.begin(), folders.end(), isIn);
    }

private:
    std::string _path = (std::filesystem::temp_directory_path() / "rtifed-fuzz-XXXXXX").string();
};

const Workspace &workspace() {
    static const Workspace workspace;
    return workspace;
}

void handleAll(Server &server) {
    while (workspace().confines(server) && (server.handleNext() || server.handleIdle()))
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

/// What a client says first: it has opened a text, and gets its diagnostics at each change or when it asks for them,
/// which leaves more time for all else.
std::vector<std::string> beginning(bool pullsDiagnostics) {
    const std::string kinds = pullsDiagnostics ? R"~("diagnostic":{},)~" : "";
    return {
        R"~({"id":0,"method":"initialize","params":{"rootUri":"file:///nowhere","capabilities":{"textDocument":{)~" +
            kinds + R"~("codeAction":{"codeActionLiteralSupport":{}}}}}})~",
        R"~({"method":"textDocument/didOpen","params":{"textDocument":{"uri":"file:///nowhere/a.fed","version":1,"text":)~"
        R"~("(FED (Federation \u00e4\ud83d\ude00)\r\n(FEDversion v1.3)\r(objects (class A (attribute x relaible receive))))"}}})~"};
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    if (size == 0)
        return 0;
    Server server(check);
    const std::string input = workspace().withPaths(textOf(data + 1, size - 1));
    if (data[0] % 2 == 0) {
        const std::size_t piece = data[0] / 2 + 1U;
        for (std::size_t at = 0; at < input.size() && !server.hasExited(); at += piece) {
            server.receive(input.substr(at, piece));
            handleAll(server);
        }
        return 0;
    }
    for (const std::string &body : beginning(data[0] % 4 == 3))
        server.receive(framed(workspace().withPaths(body)));
    for (std::size_t at = 0; at < input.size() && !server.hasExited();) {
        const std::size_t end = std::min(input.find('\0', at), input.size());
        server.receive(framed(input.substr(at, end - at)));
        if (size % 2 == 1) // else all are there before the first one is handled
            handleAll(server);
        at = end + 1;
    }
    handleAll(server);
    return 0;
}
