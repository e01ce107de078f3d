// Answers about the name at a position: what it is, where it is declared and used, what is above and below a class.

#include "tool/language/Hover.hh"
#include "tool/language/NameUses.hh"
#include "tool/language/TypeHierarchy.hh"
#include "tool/lsp/SymbolKind.hh"
#include "tool/lsp/methods/Methods.hh"

namespace {

std::uint32_t offsetIn(const OpenDocument &document, const Params &params) {
    return document.offset(params["position"]);
}

bool isDeclaration(NameUse use) {
    return use == NameUse::declaration || use == NameUse::repeatedDeclaration;
}

Json itemOf(const OpenDocument &document, const HierarchyItem &item) {
    Json json = {{"name", item.name}, {"kind", symbolKindOf(item.kind)}};
    if (!item.detail.empty())
        json["detail"] = item.detail;
    json["uri"] = document.uri();
    json["range"] = document.range(item.span);
    json["selectionRange"] = document.range(item.nameSpan);
    json["data"] = {{"class", item.fullName}, {"isInteraction", item.kind == ClauseKind::interactionClass}};
    return json;
}

/// An item that the client got before and gives back.
struct KnownItem {
    const OpenDocument *document; ///< Null if it is not open any more.
    ClauseKind kind;
    std::string fullName;

    KnownItem(Session &session, const Params &params)
        : document(session.find(params["item"]["uri"].string())),
          kind(params["item"]["data"]["isInteraction"].boolean() ? ClauseKind::interactionClass
                                                                 : ClauseKind::objectClass),
          fullName(params["item"]["data"]["class"].string()) {}
};

} // namespace

Json hoverName(Session &session, const Params &params) {
    const OpenDocument &document = session.document(params);
    const auto hover = hoverAt(document.document(), offsetIn(document, params), session.client.hoverMarkup);
    if (!hover)
        return nullptr;
    return {{"contents", {{"kind", nameOf(session.client.hoverMarkup)}, {"value", hover->text}}},
            {"range", document.range(hover->span)}};
}

Json findDefinition(Session &session, const Params &params) {
    const OpenDocument &document = session.document(params);
    Json places = Json::array();
    for (const RtiFedSpan span : definitionsAt(document.document(), offsetIn(document, params)))
        places.push_back(document.location(span));
    return places;
}

Json findReferences(Session &session, const Params &params) {
    const OpenDocument &document = session.document(params);
    const bool withDeclarations = params["context"].flag("includeDeclaration");
    Json places = Json::array();
    for (const Reference &reference : referencesAt(document.document(), offsetIn(document, params)))
        if (withDeclarations || !isDeclaration(reference.use))
            places.push_back(document.location(reference.span));
    return places;
}

Json highlightName(Session &session, const Params &params) {
    enum Kinds { text = 1, read = 2, write = 3 };
    const OpenDocument &document = session.document(params);
    Json places = Json::array();
    for (const Reference &reference : referencesAt(document.document(), offsetIn(document, params)))
        places.push_back({{"range", document.range(reference.span)},
                          {"kind", isDeclaration(reference.use)    ? Kinds::write
                                   : reference.use == NameUse::use ? Kinds::read
                                                                   : Kinds::text}});
    return places;
}

Json prepareHierarchy(Session &session, const Params &params) {
    const OpenDocument &document = session.document(params);
    const auto item = hierarchyItemAt(document.document(), offsetIn(document, params));
    return item ? Json::array({itemOf(document, *item)}) : Json();
}

Json findSupertypes(Session &session, const Params &params) {
    const KnownItem known(session, params);
    const auto item = known.document ? superclassOf(known.document->document(), known.kind, known.fullName)
                                     : std::optional<HierarchyItem>();
    return item ? Json::array({itemOf(*known.document, *item)}) : Json::array();
}

Json findSubtypes(Session &session, const Params &params) {
    const KnownItem known(session, params);
    Json items = Json::array();
    if (known.document)
        for (const HierarchyItem &item : subclassesOf(known.document->document(), known.kind, known.fullName))
            items.push_back(itemOf(*known.document, item));
    return items;
}
