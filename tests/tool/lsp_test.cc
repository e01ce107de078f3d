// The language server: places in texts as clients count them, and edits. tests/data/lsp.txt has recorded sessions.

#include "tests/Support.hh"
#include "tool/lsp/Server.hh"
#include "tool/lsp/TextEdits.hh"

#include <malloc.h>
#include <random>

static bool operator==(TextPosition a, TextPosition b) {
    return a.line == b.line && a.character == b.character;
}

namespace {

constexpr PositionEncoding kEncodings[] = {PositionEncoding::utf8, PositionEncoding::utf16, PositionEncoding::utf32};
const std::string kDocument = "file:///nowhere/a.fed";

constexpr const char *kText = R"((FED (Federation F)
  (FEDversion v1.3) ; the version
  (spaces (space Sea (dimension x)))
  (objects
    (class ObjectRoot
      (attribute privilegeToDelete reliable timestamp)
      (class Ship
        ;; Floats.
        (attribute Name reliable receive Sea)
        (class Tug (attribute Pull best_effort receive)))))
  (interactions (class InteractionRoot best_effort receive)))
)";

/// A client in the same process.
class TestClient {
public:
    explicit TestClient(const std::string &text, PositionEncoding encoding = PositionEncoding::utf16) {
        call("initialize", {{"capabilities",
                             {{"general", {{"positionEncodings", {nameOf(encoding)}}}},
                              {"textDocument",
                               {{"diagnostic", Json::object()},
                                {"documentSymbol", {{"hierarchicalDocumentSymbolSupport", true}}}}}}}});
        send(R"({"method": "textDocument/didOpen", "params": {"textDocument": {"uri": ")" + kDocument +
             R"(", "languageId": "fed", "version": 1, "text": )" + quoted(text) + "}}}");
    }

    Received call(const char *method, const Json &params) {
        send(textOfMessage({{"id", 1}, {"method", method}, {"params", params}}));
        return Received::parse(_answer.substr(_answer.find("\r\n\r\n") + 4)).at("result");
    }

    void edit(TextPosition begin, TextPosition end, const std::string &text) {
        const Json range = {{"start", {{"line", begin.line}, {"character", begin.character}}},
                            {"end", {{"line", end.line}, {"character", end.character}}}};
        send(R"({"method": "textDocument/didChange", "params": {"textDocument": {"uri": ")" + kDocument +
             R"(", "version": 2}, "contentChanges": [{"range": )" + range.dump() + R"(, "text": )" + quoted(text) +
             "}]}}");
    }

    Received ask(const char *method) { return call(method, {{"textDocument", {{"uri", kDocument}}}}); }
    const std::string &text() { return _server.session().documents().at(kDocument).text().text(); }

private:
    /// A text in JSON with its bytes as they are, whether they are UTF-8 or not.
    static std::string quoted(const std::string &text) {
        std::string result = "\"";
        for (const char c : text)
            if (c == '"' || c == '\r' || c == '\n')
                result += c == '"' ? "\\\"" : c == '\r' ? "\\r" : "\\n";
            else
                result += c;
        return result + '"';
    }

    void send(const std::string &body) {
        _server.receive(framed(body));
        while (_server.handleNext())
            continue;
    }

    std::string _answer;
    Server _server{[this](const std::string &bytes) { _answer = bytes; }};
};

std::string anyText(std::mt19937 &random) {
    static const char *const kPieces[] = {"\n",
                                          "\r",
                                          "\r\n",
                                          "(class A",
                                          ")",
                                          " ",
                                          "reliable",
                                          "\xC3",
                                          "\xC3\xA5",
                                          "\xC4\xA5",
                                          "\xF0\x9F\x98\x80",
                                          "; rtifed: allow letter-case x\n",
                                          "\xEF\xBB\xBF",
                                          "\"",
                                          "(attribute x reliable receive)"};
    std::string text;
    for (std::size_t count = random() % 4; count > 0; --count)
        text += kPieces[random() % std::size(kPieces)];
    return text;
}

} // namespace

TEST(Lsp, CountsPositionsAsTheClientDoes) {
    const std::string text = "a\xC3\xA4\xF0\x9F\x98\x80z\r\n\xFFy\rx\n";
    struct Case {
        std::uint32_t offset;
        TextPosition utf8, utf16, utf32;
    };
    for (const Case &c : {Case{0, {0, 0}, {0, 0}, {0, 0}},
                          {3, {0, 3}, {0, 2}, {0, 2}},
                          {7, {0, 7}, {0, 4}, {0, 3}},
                          {8, {0, 8}, {0, 5}, {0, 4}},
                          {11, {1, 1}, {1, 1}, {1, 1}},
                          {13, {2, 0}, {2, 0}, {2, 0}},
                          {15, {3, 0}, {3, 0}, {3, 0}}})
        for (const auto &[encoding, expected] : {std::pair(PositionEncoding::utf8, c.utf8),
                                                 {PositionEncoding::utf16, c.utf16},
                                                 {PositionEncoding::utf32, c.utf32}}) {
            const PositionedText positioned(text, encoding);
            EXPECT_EQ(positioned.positionAt(c.offset), expected) << c.offset << nameOf(encoding);
            EXPECT_EQ(positioned.offsetAt(expected), c.offset) << nameOf(encoding);
        }
    const PositionedText positioned(text, PositionEncoding::utf16);
    EXPECT_EQ(positioned.offsetAt({0, 3}), 3U) << "within a pair";
    EXPECT_EQ(positioned.offsetAt({0, 99}), 8U) << "after the line";
    EXPECT_EQ(positioned.offsetAt({4, 0}), 15U) << "after the text";
    EXPECT_EQ(positioned.positionAt(5), (TextPosition{0, 2})) << "within a character";
    for (const auto &[lines, expected] :
         {std::pair("\nx", "0 1 "), {"\r\nx", "0 2 "}, {"x\r\n", "0 3 "}, {"\r", "0 1 "}}) {
        const PositionedText other(lines, PositionEncoding::utf8);
        std::string begins;
        for (std::uint32_t line = 0; line < other.numLines(); ++line)
            begins += std::to_string(other.lineBegin(line)) + ' ';
        EXPECT_EQ(begins, expected);
    }
}

/// Any edit of any text of up to four characters, most of which are line ends.
TEST(Lsp, KeepsTheLinesOfAnEditedText) {
    std::vector<std::string> texts{""};
    for (std::size_t i = 0; i < 1 + 3 + 9 + 27; ++i)
        for (const char *const next : {"\r", "\n", "x"})
            texts.push_back(texts[i] + next);
    for (const std::string &text : texts)
        for (std::uint32_t begin = 0; begin <= text.size(); ++begin)
            for (std::uint32_t end = begin; end <= text.size(); ++end)
                for (const char *const with : {"", "\r", "\n", "y"}) {
                    PositionedText edited(text, PositionEncoding::utf8);
                    edited.replace(begin, end, with);
                    const PositionedText fresh(edited.text(), PositionEncoding::utf8);
                    ASSERT_EQ(edited.numLines(), fresh.numLines());
                    for (std::uint32_t line = 0; line < fresh.numLines(); ++line)
                        ASSERT_EQ(edited.lineBegin(line), fresh.lineBegin(line));
                }
}

TEST(Lsp, FindsPlacesInLongLines) {
    std::mt19937 random(4);
    std::string text;
    for (int i = 1; i < 420; ++i)
        text += i % 140 == 0 ? "\n" : random() % 2 == 0 ? "\xF0\x9F\x98\x80\xC3\xA4" : "abcdefghijk";
    const PositionedText positioned(text, PositionEncoding::utf16);
    TextPosition expected, character;
    for (std::uint32_t at = 0; at < text.size(); ++at) {
        const auto byte = static_cast<unsigned char>(text[at]);
        if ((byte & 0xC0U) == 0x80) {
            ASSERT_EQ(positioned.positionAt(at), character) << at;
            continue;
        }
        character = expected;
        ASSERT_EQ(positioned.positionAt(at), expected) << at;
        ASSERT_EQ(positioned.offsetAt(expected), at);
        expected.character += byte >= 0xF0 ? 2 : 1;
        if (byte == '\n')
            expected = {expected.line + 1, 0};
    }
    const std::string line = std::string(1024, 'x') + '\n' + std::string(1022, 'y');
    EXPECT_EQ(PositionedText(line + "\xF0\x9F\x98\x80", PositionEncoding::utf16).positionAt(2049),
              (TextPosition{1, 1022}));
    PositionedText edited(std::string(2048, 'x'), PositionEncoding::utf16);
    EXPECT_EQ(edited.positionAt(2048), (TextPosition{0, 2048}));
    edited.replace(0, 0, "\xC3\xA4");
    EXPECT_EQ(edited.positionAt(2050), (TextPosition{0, 2049}));
}

TEST(Lsp, KnowsAfterEachEditWhatAFreshServerKnows) {
    std::mt19937 random(5);
    for (std::size_t i = 0; i < rounds(1000); ++i) {
        const PositionEncoding encoding = kEncodings[i % 3];
        std::string text = kText;
        TestClient client(text, encoding);
        for (int edits = 1 + static_cast<int>(random() % 4); edits > 0; --edits) {
            const PositionedText before(text, encoding);
            auto begin = static_cast<std::uint32_t>(random() % (text.size() + 1));
            auto end = static_cast<std::uint32_t>(std::min<std::size_t>(text.size(), begin + random() % 30));
            const TextPosition from = before.positionAt(begin), to = before.positionAt(end);
            begin = before.offsetAt(from);
            end = before.offsetAt(to);
            const std::string with = anyText(random);
            text.replace(begin, end - begin, with);
            client.edit(from, to, with);
            TestClient fresh(text, encoding);
            ASSERT_EQ(client.text(), text);
            for (const char *method : {"textDocument/diagnostic", "textDocument/documentSymbol"})
                ASSERT_EQ(client.ask(method), fresh.ask(method)) << text;
        }
    }
}

TEST(Lsp, FormatsByEditsThatMakeTheFormattedText) {
    std::mt19937 random(9);
    for (int i = 0; i < 2000; ++i) {
        std::string before, after;
        for (int j = 0; j < 6; ++j) {
            const std::string part = anyText(random);
            before += part;
            after += random() % 4 == 0 ? anyText(random) : part;
        }
        PositionedText edited(before, PositionEncoding::utf16);
        std::vector<Replacement> edits = differences(before, after);
        for (auto edit = edits.rbegin(); edit != edits.rend(); ++edit) {
            const auto [begin, length] = edit->span;
            ASSERT_EQ(edited.offsetAt(edited.positionAt(begin)), begin) << "a place that no position can name";
            ASSERT_EQ(edited.offsetAt(edited.positionAt(begin + length)), begin + length);
            edited.replace(begin, begin + length, edit->text);
        }
        ASSERT_EQ(edited.text(), after);
    }
    for (const auto &[before, after, expected] : {std::tuple("a  \n", "a\n", "1+2= "),
                                                  {"a\r\n", "a  \r\n", "1+0=   "},
                                                  {"x y\n", "  x  y\n", "0+0=   2+0=  "}}) {
        std::string edits;
        for (const auto &[span, with] : differences(before, after))
            edits += std::to_string(span.begin) + '+' + std::to_string(span.length) + '=' + with + ' ';
        EXPECT_EQ(edits, expected);
    }
}

TEST(Lsp, NeedsNoMoreMemoryAfterManyEdits) {
    TestClient client(kText);
    const auto edit = [&](int count) {
        for (int i = 0; i < count; ++i) {
            client.edit({2, 0}, {2, i % 2 == 0 ? 0U : 4U}, i % 2 == 0 ? "(a\r\n" : "");
            if (i % 10 == 0)
                client.ask("textDocument/diagnostic");
        }
        return mallinfo2().uordblks;
    };
    const std::size_t before = edit(500);
    EXPECT_LT(edit(static_cast<int>(rounds(10000))), before + 65536);
}
