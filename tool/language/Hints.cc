#include "tool/language/Hints.hh"

#include "tool/console/Text.hh"
#include "tool/language/Document.hh"

namespace {

std::string inheritedText(const Entities &entities, Entities::Index index) {
    const ClauseKind member = formOf(entities[index].kind).children[0];
    return counted(entities.numInherited(index), std::string("inherited ") + formOf(member).noun);
}

} // namespace

std::vector<InlayHint> inlayHints(const Document &document, RtiFedSpan span) {
    const Entities &entities = document.entities();
    const bool loads = document.checker().findsNoError();
    const std::string tooltip =
        loads ? "The handle of this declaration." : "The handle would be this one, but the file does not load.";
    std::vector<InlayHint> hints;
    for (auto place = entities.placeFrom(span.begin);
         place != entities.places().end() && place->span.begin < span.begin + span.length; ++place) {
        const Entities::Entity &entity = entities[place->entity];
        if (place->isRepeated)
            continue;
        const std::uint32_t end = place->span.begin + place->span.length;
        hints.push_back(
            {InlayHint::Kind::handle, end, "#" + std::to_string(entity.handle) + (loads ? "" : "?"), tooltip});
        if (const std::size_t inherited = isClass(entity.kind) ? entities.numInherited(place->entity) : 0)
            hints.push_back({InlayHint::Kind::inherited, end, "+" + std::to_string(inherited) + " inherited",
                             "The class has " + inheritedText(entities, place->entity) + "."});
    }
    return hints;
}

std::vector<CodeLens> codeLenses(const Document &document) {
    const Entities &entities = document.entities();
    std::vector<CodeLens> lenses;
    for (const Entities::Place &place : entities.places()) {
        const Entities::Entity &entity = entities[place.entity];
        if (place.isRepeated || !isClass(entity.kind))
            continue;
        std::string text;
        if (entity.numDescendants > 0)
            text = counted(entity.numDescendants, "subclass");
        if (entities.numInherited(place.entity) > 0)
            text += (text.empty() ? "" : ", ") + inheritedText(entities, place.entity);
        if (!text.empty())
            lenses.push_back({place.span, text});
    }
    return lenses;
}
