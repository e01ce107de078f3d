// The messages of the language server: how bytes become messages, and what is done about any value in them; and that
// what it offers to do does what it says. tests/data/lsp.txt has recorded sessions.

#include "tests/Support.hh"
#include "tests/tool/FormattedText.hh"
#include "tool/check/CheckedFile.hh"
#include "tool/console/Console.hh"
#include "tool/fix/EditedText.hh"
#include "tool/format/Format.hh"
#include "tool/language/DocumentSymbols.hh"
#include "tool/lsp/Server.hh"
#include "tool/lsp/Uri.hh"

#include <chrono>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <random>
#include <set>
#include <thread>
#include <unistd.h>

namespace {

const std::string kUri = "file:///nowhere/a.fed";
const std::string kRequest = R"({"id": 1, "method": "textDocument/)";

/// What the server sends, without headers.
std::vector<Received> messagesIn(const std::string &bytes) {
    MessageReader reader;
    reader.add(bytes);
    std::vector<Received> messages;
    while (const auto message = reader.next())
        messages.push_back(Received::parse(message->body));
    return messages;
}

class Exchange {
public:
    void add(const std::string &body) { _input += framed(body); }
    void add(const Json &message) { add(textOfMessage(message)); }

    void begin(const std::string &text, const Json &capabilities = Json::object()) {
        add({{"id", 0}, {"method", "initialize"}, {"params", {{"capabilities", capabilities}}}});
        add({{"method", "textDocument/didOpen"},
             {"params", {{"textDocument", {{"uri", kUri}, {"version", 1}, {"text", text}}}}}});
    }

    /// Sends all in one piece, or in pieces of random sizes, each handled as far as it goes.
    std::vector<Received> run(std::mt19937 *random = nullptr) {
        std::string output;
        Server server([&](const std::string &bytes) { output += bytes; });
        for (std::size_t at = 0; at < _input.size();) {
            const std::size_t size = random ? 1 + (*random)() % 40 : _input.size();
            server.receive(std::string_view(_input).substr(at, size));
            at += size;
            while (random && server.handleNext())
                continue;
        }
        while (server.handleNext() || server.handleIdle())
            continue;
        return messagesIn(output);
    }

private:
    std::string _input;
};

/// The answer with this id.
Received answerOf(const std::vector<Received> &messages, const Received &id) {
    for (const Received &message : messages)
        if (message.value("id", Received()) == id && !message.contains("method"))
            return message;
    return {};
}

int errorOf(const Received &answer) {
    return answer.contains("error") ? answer["error"]["code"].get<int>() : 0;
}

/// The text after the edits of a document that a result has.
std::string edited(const std::string &text, const Received &edits) {
    PositionedText result(text, PositionEncoding::utf16);
    std::vector<Received> ordered = edits;
    const auto begin = [](const Received &edit) {
        const Received &start = edit["range"]["start"];
        return std::pair(start["line"].get<int>(), start["character"].get<int>());
    };
    std::sort(ordered.begin(), ordered.end(), [&](const auto &a, const auto &b) { return begin(a) > begin(b); });
    for (const Received &edit : ordered) {
        const auto offset = [&](const char *end) {
            const Received &place = edit["range"][end];
            return result.offsetAt({place["line"].get<std::uint32_t>(), place["character"].get<std::uint32_t>()});
        };
        result.replace(offset("start"), offset("end"), edit["newText"].get<std::string>());
    }
    return result.text();
}

} // namespace

TEST(LspProtocol, ReadsMessagesInPiecesOfAnySize) {
    std::mt19937 random(1);
    Exchange exchange;
    exchange.begin("(FED (Federation \xC3\xA4)");
    for (int id = 1; id < 20; ++id)
        exchange.add(
            {{"id", id}, {"method", "textDocument/foldingRange"}, {"params", {{"textDocument", {{"uri", kUri}}}}}});
    const std::vector<Received> whole = exchange.run();
    ASSERT_EQ(whole.size(), 21U) << "an answer to each request, and diagnostics once";
    for (int i = 0; i < 20; ++i) {
        std::vector<Received> answers;
        for (Received &message : exchange.run(&random))
            if (message.contains("id")) // diagnostics are sent whenever nothing is to do
                answers.push_back(std::move(message));
        EXPECT_EQ(answers, std::vector<Received>(whole.begin(), whole.end() - 1));
    }
}

TEST(LspProtocol, FindsTheNextMessageAfterOneThatIsTooLong) {
    MessageReader reader;
    reader.add("Content-Length: " + std::to_string(kMaxMessage + 1) + "\r\n\r\n");
    EXPECT_NE(reader.next()->fault, "");
    const std::string piece(std::size_t(4) << 20, 'x');
    for (std::size_t size = 0; size < kMaxMessage; size += piece.size()) {
        reader.add(piece);
        ASSERT_FALSE(reader.next());
    }
    for (const std::string &rest : {std::string(1, 'x'), std::string(5000, '\n').insert(0, 4999, 'x')}) {
        reader.add(rest + framed("{}"));
        const auto message = reader.next();
        ASSERT_TRUE(message);
        EXPECT_EQ(message->body + message->fault.substr(0, 47),
                  rest.size() == 1 ? "{}" : "expected a header with Content-Length, found \"x");
    }
    EXPECT_EQ(reader.next()->body, "{}") << "after a header that is too long";
    reader.add(std::string(5000, 'x'));
    EXPECT_NE(reader.next()->fault, "") << "before such a header ends";
}

TEST(LspProtocol, ReadsHeadersOfAnyLengthUpToTheLimit) {
    const auto resultOf = [](const std::vector<std::string> &pieces) { // of all pieces
        MessageReader reader;
        std::string result;
        for (const std::string &piece : pieces) {
            reader.add(piece);
            while (const auto message = reader.next())
                result += message->fault.empty() ? message->body : message->fault.substr(0, 15) + "... ";
            result += '|';
        }
        return result;
    };
    const auto header = [](std::size_t size) {
        const std::string length = "Content-Length: 2\r\n\r\n";
        return "x: " + std::string(size - length.size() - 5, 'x') + "\r\n" + length;
    };
    for (const auto &[pieces, expected] :
         {std::pair<std::vector<std::string>, std::string>{{header(4096) + "{}"}, "{}|"},
          {{header(4097) + "{}" + framed("[]")}, "expected a head... {}[]|"},
          {{std::string(4096, 'x')}, "|"},
          {{std::string(4097, 'x')}, "expected a head... |"},
          {{header(99).substr(0, 98), "\n{}" + framed("[]")}, "|{}[]|"},
          {{"\n!Content-Length", ": 2\n\n{}"}, "expected a head... |{}|"},
          {{"Content-Length: 268435456\n\n", "x"}, "||"},
          {{"Content-Length: 268435457\n\n", "x"}, "expected at mos... ||"}})
        EXPECT_EQ(resultOf(pieces), expected) << pieces.front().size();
}

TEST(LspProtocol, CancelsRequestsThatWait) {
    Exchange exchange;
    exchange.begin("(FED)");
    exchange.add(kRequest + R"(foldingRange", "params": {"textDocument": {"uri": ")" + kUri + "\"}}}");
    exchange.add(
        {{"id", "two"}, {"method", "textDocument/foldingRange"}, {"params", {{"textDocument", {{"uri", kUri}}}}}});
    exchange.add({{"method", "$/cancelRequest"}, {"params", {{"id", "two"}}}});
    exchange.add({{"method", "$/cancelRequest"}, {"params", {{"id", 77}}}});
    const std::vector<Received> messages = exchange.run();
    EXPECT_EQ(errorOf(answerOf(messages, 1)), 0);
    EXPECT_EQ(errorOf(answerOf(messages, "two")), -32800);
}

/// A long request reads on between two files, but not more than a bounded number of bytes.
TEST(LspProtocol, CancelsTheRequestThatItAnswers) {
    const std::string initialize = textOfMessage(
        {{"id", 0},
         {"method", "initialize"},
         {"params",
          {{"capabilities", Json::object()}, {"workspaceFolders", {{{"uri", uriOfPath(RTIFED_EXAMPLES)}}}}}}});
    const std::string request =
        R"({"id": 1, "method": "workspace/symbol", "params": {"query": "no such name", "workDoneToken": 2}})";
    const std::string large = R"({"method": "$/large", "params": ")" + std::string(std::size_t(2) << 20, 'x') + "\"}";
    const std::string cancel = framed(R"({"method": "$/cancelRequest", "params": {"id": 1}})");
    const std::string other = framed(R"({"method": "$/cancelRequest", "params": {"id": 2}})");
    for (const std::string &next : {other + cancel + cancel, other + framed(large)}) {
        std::string output;
        int numReads = 0;
        std::function<void()> readMore;
        Server server([&](const std::string &bytes) { output += bytes; }, [&] { readMore(); });
        readMore = [&] {
            if (++numReads == 2)
                server.receive(next);
            std::this_thread::sleep_for(std::chrono::milliseconds(101)); // so that progress is reported
        };
        server.receive(framed(initialize) + framed(request));
        while (server.handleNext())
            continue;
        const bool isCancelled = next != other + framed(large);
        EXPECT_EQ(errorOf(answerOf(messagesIn(output), 1)), isCancelled ? -32800 : 0);
        EXPECT_EQ(numReads, 2);
        const std::string progress =
            isCancelled ? R"("0 of 3 files","percentage":0}})" : R"("1 of 3 files","percentage":33}})";
        EXPECT_NE(output.find(progress), std::string::npos) << output;
        output.clear();
        server.receive(framed(request));
        while (server.handleNext())
            continue;
        EXPECT_EQ(errorOf(answerOf(messagesIn(output), 1)), 0) << "another request with this id";
    }
}

TEST(LspProtocol, ServesWhereverInputComesFrom) {
    const std::string begin = framed(R"({"id": 1, "method": "initialize", "params": {"capabilities": {}}})");
    const std::string end = framed(R"({"id": 2, "method": "shutdown"})") + framed(R"({"method": "exit"})");
    const std::string large = framed(R"({"method": "$/large", "params": ")" + std::string(1 << 19, 'x') + "\"}");
    const TemporaryFile file(begin + large + large + large + large + end);
    const int opened = open(file.path().c_str(), O_RDONLY), folder = open("/", O_RDONLY);
    std::ostringstream out;
    EXPECT_EQ(serve(opened, out), 0) << out.str();
    EXPECT_EQ(messagesIn(out.str()).size(), 2U);
    EXPECT_THROW(serve(folder, out), CannotWork);
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    std::thread client([&] {
        for (const std::string &part : {begin.substr(0, 30), begin.substr(30)}) {
            EXPECT_EQ(write(ends[1], part.data(), part.size()), static_cast<ssize_t>(part.size()));
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        }
        close(ends[1]);
    });
    EXPECT_EQ(serve(ends[0], out), 1);
    client.join();
    for (const int each : {opened, folder, ends[0]})
        close(each);
}

TEST(LspProtocol, LimitsItsAnswers) {
    std::string text = "(FED (spaces (space Unused)) (objects (class A";
    for (int i = 0; i < 1100; ++i)
        text += " (attribute a" + std::to_string(i) + " relaible receive)";
    for (int i = 0; i < 400; ++i)
        text += " (class C";
    Exchange exchange;
    const Json folders = {{{"uri", "file:///nowhere"}}};
    exchange.add(
        {{"id", 0},
         {"method", "initialize"},
         {"params",
          {{"capabilities", {{"textDocument", {{"documentSymbol", {{"hierarchicalDocumentSymbolSupport", true}}}}}}},
           {"workspaceFolders", folders}}}});
    exchange.begin(text);
    const Json document = {{"uri", kUri}}, place = {{"line", 0}, {"character", text.size()}};
    exchange.add({{"id", 1}, {"method", "workspace/symbol"}, {"params", {{"query", ""}}}});
    exchange.add({{"id", 2}, {"method", "textDocument/documentSymbol"}, {"params", {{"textDocument", document}}}});
    exchange.add({{"id", 3},
                  {"method", "textDocument/selectionRange"},
                  {"params", {{"textDocument", document}, {"positions", {place}}}}});
    const std::vector<Received> messages = exchange.run();
    EXPECT_EQ(answerOf(messages, 1)["result"].size(), 1000U);
    const auto depthOf = [](const Received &outermost, const auto &next) {
        std::size_t depth = 0;
        for (const Received *each = &outermost; each; each = next(*each))
            ++depth;
        return depth;
    };
    EXPECT_EQ(depthOf(answerOf(messages, 2)["result"].back(),
                      [](const Received &symbol) {
                          const auto children = symbol.find("children");
                          return children == symbol.end() ? nullptr : &children->back();
                      }),
              DocumentSymbol::kMaxDepth);
    EXPECT_EQ(depthOf(answerOf(messages, 3)["result"][0],
                      [](const Received &range) {
                          const auto parent = range.find("parent");
                          return parent == range.end() ? nullptr : &*parent;
                      }),
              301U);
    const Received &diagnostics = messages.back()["params"]["diagnostics"];
    EXPECT_EQ(diagnostics.size(), 1001U);
    EXPECT_EQ(diagnostics.front()["severity"], 1);
    EXPECT_EQ(diagnostics.back()["severity"], 3);
    EXPECT_EQ(diagnostics.back()["message"], "102 further findings; rtifed check --max-findings 0 prints all");
}

TEST(LspProtocol, RefusesParametersOfAnyWrongKind) {
    const Json wrong[] = {nullptr,
                          1,
                          -1,
                          1.5,
                          "x",
                          true,
                          Json::array(),
                          Json::object(),
                          Json::array({1}),
                          99999999999,
                          {{"line", 0}, {"character", -1}},
                          {{"line", 99999999999}, {"character", 1}}};
    const Json place = {{"line", 0}, {"character", 0}};
    const Json range = {{"start", place}, {"end", place}};
    const Json params = {
        {"textDocument", {{"uri", kUri}}},
        {"position", place},
        {"range", range},
        {"positions", Json::array({place})},
        {"newName", "New"},
        {"ch", "\n"},
        {"context", {{"diagnostics", Json::array()}, {"includeDeclaration", true}, {"only", {"quickfix"}}}}};
    const char *const methods[] = {"hover",    "definition", "references",       "documentHighlight", "completion",
                                   "rename",   "formatting", "onTypeFormatting", "rangeFormatting",   "codeAction",
                                   "codeLens", "inlayHint",  "selectionRange",   "prepareRename",     "diagnostic"};
    Exchange exchange;
    exchange.begin("(FED (objects (class A)))");
    int id = 0;
    for (const char *method : methods)
        for (const auto &[key, right] : params.items())
            for (const Json &value : wrong) {
                Json changed = params;
                changed[key] = value;
                exchange.add({{"id", ++id}, {"method", "textDocument/" + std::string(method)}, {"params", changed}});
            }
    const std::vector<Received> messages = exchange.run();
    for (int each = 1; each <= id; ++each) {
        const int error = errorOf(answerOf(messages, each));
        EXPECT_TRUE(error == 0 || error == -32602 || error == -32803) << each << ": " << error;
    }
}

TEST(LspProtocol, KeepsBytesThatAreNotUtf8) {
    const std::string bytes = "a\xFF\xC3\xC0\x80\xED\xA0\x80\xF4\x90\x80\x80\xF0\x8F\xBF\xBF\xC3\xA4\xF4\x8F\xBF\xBFz";
    const Received message = parseMessage('"' + bytes + '"');
    const std::string valid = "\xC3\xA4 \xF0\x9F\x98\x80 \xF4\x8F\xBB\xBF \xF4\x80\x80\x80 \xED\x95\x9C";
    EXPECT_EQ(withOriginalBytes(parseMessage('"' + valid + '"').get<std::string>()), valid);
    for (int byte = 0x80; byte < 0x100; ++byte) {
        const std::string one = "x" + std::string(1, static_cast<char>(byte)) + "y";
        EXPECT_EQ(withOriginalBytes(parseMessage('"' + one + '"').get<std::string>()), one);
    }
    EXPECT_EQ(withOriginalBytes(message.get<std::string>()).substr(0, 18), bytes.substr(0, 18));
}

TEST(LspProtocol, RefusesMessagesThatWouldTakeMuchMemory) {
    const auto nested = [](std::size_t depth) { return std::string(depth, '[') + std::string(depth, ']'); };
    const std::string deep(65, '['), most(1999999, ','), tooDeep = "expected at most 64 levels of JSON, found more";
    for (const auto &[body, expected] : {std::pair<std::string, std::string>{nested(64), ""},
                                         {nested(65), tooDeep},
                                         {R"(["\\",)" + nested(64) + "]", tooDeep},
                                         {R"(["a",)" + nested(64) + "]", tooDeep},
                                         {'"' + deep + most + R"(,,\"[[\\")", ""}, // in a string they are no values
                                         {"[" + most, "the message is no JSON: parse error at line 1, c"},
                                         {"[," + most, "expected at most 2000000 JSON values, found more"},
                                         {"[1e999]", "the message has a number that is too large to be"}}) {
        std::string problem;
        try {
            parseMessage(body);
        } catch (const ProtocolError &refused) {
            problem = refused.what();
        }
        EXPECT_EQ(problem.substr(0, 48), expected) << body.substr(0, 20);
    }
}

TEST(LspProtocol, NamesFilesByTheirUris) {
    for (const std::string path : {"/a.fed", "/with blank/\xC3\xA4%20?#~.fed", "/{a}.fed", "/\xFF\n"})
        EXPECT_EQ(pathOfUri(uriOfPath(path)), path);
    EXPECT_EQ(pathOfUri("file://host/a%2fb"), "/a/b");
    EXPECT_EQ(pathOfUri("FILE:/a%zz%4"), "/a%zz%4");
    for (const char *uri : {"untitled:Untitled-1", "file:", "file://", "file:a", "file:///a%00b", "http:///a", ""})
        EXPECT_EQ(pathOfUri(uri), std::nullopt) << uri;
}

/// Each action on a text with the mistakes of the recorded findings leaves the text without what it is about.
TEST(LspProtocol, OffersActionsThatHelp) {
    const Json capabilities = {{"textDocument",
                                {{"codeAction", {{"codeActionLiteralSupport", Json::object()}}},
                                 {"publishDiagnostics", {{"codeDescriptionSupport", true}}}}}};
    const std::string example = readFile(RTIFED_EXAMPLES "/harbour.fed");
    const Json all = {{"start", {{"line", 0}, {"character", 0}}}, {"end", {{"line", 9999}, {"character", 0}}}};
    std::size_t numActions = 0;
    for (const auto &[right, wrong] : {std::pair("best_effort", "best_efort"),
                                       {"timestamp", "time_stamp"},
                                       {"reliable receive", "receive reliable"},
                                       {"(class RTIprivate)", ""}}) {
        std::string text = example;
        const std::size_t at = text.find(right);
        ASSERT_NE(at, std::string::npos) << right;
        text.replace(at, std::string(right).size(), wrong);
        Exchange exchange;
        exchange.begin(text, capabilities);
        exchange.add({{"id", 1},
                      {"method", "textDocument/codeAction"},
                      {"params", {{"textDocument", {{"uri", kUri}}}, {"range", all}, {"context", Json::object()}}}});
        const Received actions = answerOf(exchange.run(), 1)["result"];
        for (const Received &action : actions) {
            const std::string after = edited(text, action["edit"]["changes"][kUri]);
            Exchange second;
            second.begin(after);
            const std::vector<Received> messages = second.run();
            for (const Received &finding : action.value("diagnostics", Received::array())) {
                EXPECT_FALSE(finding.contains("codeDescription")) << "the page is not beside this program";
                for (const Received &left : messages.back()["params"]["diagnostics"])
                    EXPECT_NE(left["message"], finding["message"]) << action["title"];
            }
            ++numActions;
        }
    }
    EXPECT_GE(numActions, 8U);
}

TEST(LspProtocol, FormatsAsTheProgramDoes) {
    const std::string example = readFile(RTIFED_EXAMPLES "/harbour.fed");
    std::mt19937 random(8);
    for (int i = 0; i < 20; ++i) {
        std::string text;
        for (const char c : example)
            if (c == '\n')
                text += random() % 9 == 0 ? "  \r\n" : random() % 9 == 0 ? "\r\n\r\n" : "\r\n";
            else
                text += c == ' ' && random() % 20 == 0 ? "   " : std::string(1, c);
        Exchange exchange;
        exchange.begin(text);
        exchange.add(
            {{"id", 1}, {"method", "textDocument/formatting"}, {"params", {{"textDocument", {{"uri", kUri}}}}}});
        const Received edits = answerOf(exchange.run(), 1)["result"];
        EXPECT_EQ(edited(text, edits), formattedText(text));
    }
}

/// Each fix of `rtifed fix` is an action, with the same edits; fixing all gives the same text.
TEST(LspProtocol, OffersEachFix) {
    const std::string example = readFile(RTIFED_EXAMPLES "/harbour.fed");
    const Json all = {{"start", {{"line", 0}, {"character", 0}}}, {"end", {{"line", 9999}, {"character", 0}}}};
    const Json capabilities = {{"textDocument", {{"codeAction", {{"codeActionLiteralSupport", Json::object()}}}}}};
    for (const auto &[was, is] : {std::pair<std::string, std::string>{"(class RequestUpdatesSent", "(class Other"},
                                  {"(attribute privilegeToDelete reliable timestamp)", ""},
                                  {"(class Tug", "(class Tug (attribute Position best_effort timestamp ApproachArea)"},
                                  {"(class Tug", "(class Tug (attribute Position reliable timestamp)"},
                                  {"(FEDversion v1.3)", ""},
                                  {"(objects", "(objects)\n  (objects"},
                                  {"(spaces", "(spaces (space Unused (dimension x))"}}) {
        const std::string text = replaced(example, was, is);
        CheckedFile file = checkFile({"/nowhere/a.fed", text}, Severity::warning);
        Exchange exchange;
        exchange.begin(text, capabilities);
        exchange.add({{"id", 1},
                      {"method", "textDocument/codeAction"},
                      {"params", {{"textDocument", {{"uri", kUri}}}, {"range", all}, {"context", Json::object()}}}});
        std::multiset<std::string> offered, expected;
        bool offersAll = false;
        const Received actions = answerOf(exchange.run(), 1)["result"];
        for (const Received &action : actions) {
            if (action["kind"] == "quickfix" && action["title"].get<std::string>().rfind("Allow ", 0) != 0)
                offered.insert(edited(text, action["edit"]["changes"][kUri]));
            offersAll = offersAll || action["kind"] == "source.fixAll.rtifed";
        }
        bool anySafe = false;
        for (const Finding &finding : file.findings) {
            anySafe = anySafe || finding.fix.isSafe;
            EditedText after(text);
            after.add(finding.fix.edits);
            after.makeEdits();
            if (!finding.fix.empty())
                expected.insert(after.text());
        }
        EXPECT_FALSE(expected.empty()) << is;
        EXPECT_EQ(offered, expected) << is;
        EXPECT_EQ(offersAll, anySafe) << is;
    }
}

/// Editors write the same path in different ways, save files that did not exist, and have folders in each other.
TEST(LspProtocol, KnowsTheTextsOfItsFolders) {
    const TemporaryFile file("");
    const std::string folder = file.path() + " c++ (b)";
    std::filesystem::create_directories(folder + "/sub");
    std::ofstream(folder + "/sub/a.fed") << "(FED (Federation Old))";
    const auto symbolsOf = [&](const std::string &uri, const std::string &text) {
        Exchange exchange;
        exchange.add({{"id", 0},
                      {"method", "initialize"},
                      {"params",
                       {{"capabilities", Json::object()},
                        {"workspaceFolders",
                         {{{"uri", uriOfPath(folder)}, {"name", "f"}},
                          {{"uri", uriOfPath(folder + "/sub")}, {"name", "s"}}}}}}});
        exchange.add({{"method", "textDocument/didOpen"},
                      {"params", {{"textDocument", {{"uri", uri}, {"version", 1}, {"text", text}}}}}});
        exchange.add({{"id", 1}, {"method", "workspace/symbol"}, {"params", {{"query", ""}}}});
        std::string found;
        const Received symbols = answerOf(exchange.run(), 1)["result"];
        for (const Received &symbol : symbols)
            found += symbol["name"].get<std::string>() + (symbol["location"]["uri"] == uri ? "! " : " ");
        return found;
    };
    const std::string strict = uriOfPath(folder + "/sub/a.fed");
    std::string loose = strict;
    for (const auto &[code, character] : {std::pair("%2B", "+"), {"%28", "("}, {"%29", ")"}})
        while (loose.find(code) != std::string::npos)
            loose = replaced(loose, code, character);
    EXPECT_NE(loose, strict);
    for (const std::string &uri : {strict, loose})
        EXPECT_EQ(symbolsOf(uri, "(FED (Federation New))"), "New! ") << uri;
    EXPECT_EQ(symbolsOf(uriOfPath(folder + "/unsaved.fed"), "(FED (Federation New))"), "Old New! ");
    EXPECT_EQ(symbolsOf("untitled:Untitled-1", "(FED (Federation New))"), "Old ");
    std::filesystem::remove_all(folder);
}

/// A file is read again once its size or its time differs; what is no text that can be open has no names.
TEST(LspProtocol, ReadsFilesThatChange) {
    const TemporaryFile file("");
    const std::string folder = file.path() + ".folder", path = folder + "/a.fed";
    std::filesystem::create_directory(folder);
    std::string output;
    Server server([&](const std::string &bytes) { output = bytes; });
    const auto answer = [&](const char *method, const Json &params) {
        server.receive(framed(textOfMessage({{"id", 1}, {"method", method}, {"params", params}})));
        server.handleNext();
        const std::vector<Received> messages = messagesIn(output);
        return messages.back()["result"];
    };
    answer("initialize",
           {{"capabilities", {{"workspace", {{"didChangeWatchedFiles", {{"dynamicRegistration", true}}}}}}},
            {"workspaceFolders", {{{"uri", uriOfPath(folder)}}}}});
    const auto symbols = [&] {
        std::string names;
        for (const Received &symbol : answer("workspace/symbol", {{"query", ""}}))
            names += symbol["name"].get<std::string>() + " ";
        return names;
    };
    const auto writeText = [&](const std::string &text) { std::ofstream(path) << text; };
    writeText("(FED (Federation A))");
    EXPECT_EQ(symbols(), "A ");
    const auto time = std::filesystem::last_write_time(path);
    writeText("(FED (Federation B))");
    std::filesystem::last_write_time(path, time + std::chrono::seconds(1));
    EXPECT_EQ(symbols(), "B ");
    writeText("(FED (Federation BC))");
    std::filesystem::last_write_time(path, time + std::chrono::seconds(1));
    EXPECT_EQ(symbols(), "BC ");
    writeText(std::string("\0(FED (Federation D))", 21));
    EXPECT_EQ(symbols(), "") << "a saved image";
    std::filesystem::resize_file(path, kMaxOpenText + 1);
    EXPECT_EQ(symbols(), "");
    std::filesystem::remove(path);
    EXPECT_EQ(symbols(), "");
    std::filesystem::remove_all(folder);
}
