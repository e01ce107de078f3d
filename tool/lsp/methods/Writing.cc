// What helps to write: completion, renaming, and notes beside the text.

#include "tool/language/Completion.hh"
#include "tool/language/Hints.hh"
#include "tool/language/Rename.hh"
#include "tool/lsp/TextEdits.hh"
#include "tool/lsp/methods/Methods.hh"

#include <algorithm>

namespace {

/// Returns the number by which the protocol knows a kind of completion.
int kindOf(Completion::Kind kind) {
    enum Kinds { classKind = 7, module = 9, property = 10, value = 12, keyword = 14, enumMember = 20 };
    switch (kind) {
    case Completion::Kind::keyword:
        return keyword;
    case Completion::Kind::delivery:
        return enumMember;
    case Completion::Kind::space:
        return module;
    case Completion::Kind::momClass:
        return classKind;
    case Completion::Kind::momMember:
        return property;
    default:
        return value;
    }
}

/// The items keep their order: editors sort by this text.
std::string sortText(std::size_t index) {
    std::string digits = std::to_string(index);
    return std::string(6 - std::min<std::size_t>(digits.size(), 6), '0') + digits;
}

Json itemOf(const Client &client, const Completion &item, const Json &range, std::size_t index) {
    enum Formats { snippet = 2 };
    enum Modes { adjustIndentation = 2 };
    Json json = {{"label", item.label}, {"kind", kindOf(item.kind)}, {"sortText", sortText(index)}};
    if (!item.detail.empty())
        json["detail"] = item.detail;
    if (!item.documentation.empty())
        json["documentation"] = {{"kind", nameOf(client.completionMarkup)}, {"value", item.documentation}};
    const bool isSnippet = client.snippets && !item.snippet.empty();
    if (isSnippet) {
        json["insertTextFormat"] = Formats::snippet;
        json["insertTextMode"] = Modes::adjustIndentation;
    }
    json["textEdit"] = {{"range", range}, {"newText", isSnippet ? item.snippet : item.text}};
    return json;
}

} // namespace

Json completeText(Session &session, const Params &params) {
    const OpenDocument &document = session.document(params);
    const Completions found =
        completionsAt(document.document(), document.offset(params["position"]), session.client.completionMarkup);
    const Json range = document.range(found.replaced);
    Json items = Json::array();
    for (const Completion &item : found.items)
        items.push_back(itemOf(session.client, item, range, items.size()));
    return {{"isIncomplete", false}, {"items", std::move(items)}};
}

Json prepareRename(Session &session, const Params &params) {
    const OpenDocument &document = session.document(params);
    const RenamePlace place = renameAt(document.document(), document.offset(params["position"]));
    if (!place.refusal.empty())
        throw ProtocolError(ErrorCode::requestFailed, place.refusal);
    return {{"range", document.range(place.span)}, {"placeholder", place.name}};
}

Json renameName(Session &session, const Params &params) {
    const OpenDocument &document = session.document(params);
    const Renaming renaming =
        rename(document.document(), document.offset(params["position"]), params["newName"].string());
    if (!renaming.refusal.empty())
        throw ProtocolError(ErrorCode::requestFailed, renaming.refusal);
    std::vector<Replacement> edits;
    for (const RenameEdit &edit : renaming.edits)
        edits.push_back(edit.replacement);
    return workspaceEdit(session.client, document, edits);
}

Json hintText(Session &session, const Params &params) {
    Json hints = Json::array();
    if (!session.client.settings.inlayHints)
        return hints;
    const OpenDocument &document = session.document(params);
    for (const InlayHint &hint : inlayHints(document.document(), document.span(params["range"])))
        hints.push_back({{"position", document.position(hint.offset)},
                         {"label", hint.label},
                         {"tooltip", hint.tooltip},
                         {"paddingLeft", true}});
    return hints;
}

/// A lens is only read: its command does nothing.
Json lensText(Session &session, const Params &params) {
    Json lenses = Json::array();
    if (!session.client.settings.codeLenses)
        return lenses;
    const OpenDocument &document = session.document(params);
    for (const CodeLens &lens : codeLenses(document.document()))
        lenses.push_back(
            {{"range", document.range(lens.nameSpan)}, {"command", {{"title", lens.text}, {"command", ""}}}});
    return lenses;
}
