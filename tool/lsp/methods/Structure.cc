// Answers about the structure of one text: outline, folding, selections, colours.

#include "tool/language/DocumentSymbols.hh"
#include "tool/language/Ranges.hh"
#include "tool/language/SemanticTokens.hh"
#include "tool/lsp/SymbolKind.hh"
#include "tool/lsp/methods/Methods.hh"

#include <algorithm>

namespace {

/// A text that does not parse may nest without limit, and JSON is written by recursion. No model is so deep.
constexpr std::size_t kMaxDepth = 300;
static_assert(DocumentSymbol::kMaxDepth <= kMaxDepth);

/// Returns the outline as a list in which each symbol names the one that it is in, for clients without trees.
Json symbolList(const OpenDocument &document, const std::vector<DocumentSymbol> &symbols) {
    Json list = Json::array();
    for (const DocumentSymbol &symbol : symbols) {
        Json entry = {
            {"name", symbol.name}, {"kind", symbolKindOf(symbol.kind)}, {"location", document.location(symbol.span)}};
        if (symbol.parent != DocumentSymbol::kNone)
            entry["containerName"] = symbols[symbol.parent].name;
        list.push_back(std::move(entry));
    }
    return list;
}

Json symbolTree(const OpenDocument &document, const std::vector<DocumentSymbol> &symbols) {
    std::vector<Json> entries(symbols.size()), children(symbols.size(), Json::array());
    for (std::size_t i = 0; i < symbols.size(); ++i) {
        const DocumentSymbol &symbol = symbols[i];
        entries[i] = {
            {"name", symbol.name}, {"kind", symbolKindOf(symbol.kind)}, {"range", document.range(symbol.span)}};
        if (!symbol.detail.empty())
            entries[i]["detail"] = symbol.detail;
        entries[i]["selectionRange"] = document.range(symbol.nameSpan);
    }
    Json roots = Json::array();
    for (std::size_t i = symbols.size(); i-- > 0;) { // each symbol is after the one that it is in
        std::reverse(children[i].begin(), children[i].end());
        if (!children[i].empty())
            entries[i]["children"] = std::move(children[i]);
        const std::size_t parent = symbols[i].parent;
        (parent == DocumentSymbol::kNone ? roots : children[parent]).push_back(std::move(entries[i]));
    }
    std::reverse(roots.begin(), roots.end());
    return roots;
}

/// Returns the tokens as the protocol has them: five numbers for each, the place counted from the token before.
Json encoded(const OpenDocument &document, const std::vector<SemanticToken> &tokens, RtiFedSpan range) {
    Json data = Json::array();
    TextPosition last;
    for (const SemanticToken &token : tokens) {
        if (token.span.begin + token.span.length < range.begin || token.span.begin > range.begin + range.length)
            continue;
        const TextPosition begin = document.text().positionAt(token.span.begin);
        const TextPosition end = document.text().positionAt(token.span.begin + token.span.length);
        data.push_back(begin.line - last.line);
        data.push_back(begin.line == last.line ? begin.character - last.character : begin.character);
        data.push_back(end.character - begin.character);
        data.push_back(static_cast<unsigned>(token.type));
        data.push_back(static_cast<unsigned>(token.modifiers));
        last = begin;
    }
    return {{"data", std::move(data)}};
}

} // namespace

Json symbolsOfText(Session &session, const Params &params) {
    const OpenDocument &document = session.document(params);
    const std::vector<DocumentSymbol> symbols = documentSymbols(document.document());
    return session.client.nestedSymbols ? symbolTree(document, symbols) : symbolList(document, symbols);
}

Json foldText(Session &session, const Params &params) {
    const OpenDocument &document = session.document(params);
    Json ranges = Json::array();
    for (const FoldingRange &range : foldingRanges(document.document())) {
        Json entry = {{"startLine", document.text().positionAt(range.span.begin).line},
                      {"endLine", document.text().positionAt(range.span.begin + range.span.length).line}};
        if (range.isComment)
            entry["kind"] = "comment";
        ranges.push_back(std::move(entry));
    }
    return ranges;
}

Json selectText(Session &session, const Params &params) {
    const OpenDocument &document = session.document(params);
    Json selections = Json::array();
    for (const Params &position : params["positions"].items()) {
        const std::uint32_t offset = document.offset(position);
        std::vector<RtiFedSpan> spans = selectionAt(document.document(), offset);
        if (spans.empty())
            spans.push_back({offset, 0});
        if (spans.size() > kMaxDepth) // the outermost ones but for the whole text are left out
            spans.erase(spans.begin() + kMaxDepth, spans.end() - 1);
        Json selection;
        for (auto span = spans.rbegin(); span != spans.rend(); ++span) {
            Json outer = std::move(selection);
            selection = {{"range", document.range(*span)}};
            if (!outer.is_null())
                selection["parent"] = std::move(outer);
        }
        selections.push_back(std::move(selection));
    }
    return selections;
}

Json colourText(Session &session, const Params &params) {
    const OpenDocument &document = session.document(params);
    const auto range = params.find("range");
    const RtiFedSpan whole{0, static_cast<std::uint32_t>(document.text().text().size())};
    return encoded(document, semanticTokens(document.document()), range ? document.span(*range) : whole);
}
