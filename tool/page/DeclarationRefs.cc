#include "tool/page/DeclarationRefs.hh"

#include <array>
#include <string_view>
#include <utility>

namespace {

/// The clauses whose comments are about all classes or spaces, and how the script knows these.
constexpr std::array<std::pair<std::string_view, const char *>, 3> kSections = {
    {{"spaces", "space"}, {"objects", "object"}, {"interactions", "interaction"}}};

Json asJson(const DeclarationRef &declaration) {
    const ClauseKind kind = declaration.kind;
    const bool ofObjects = kind == ClauseKind::objectClass || kind == ClauseKind::attribute;
    const bool ofSpaces = kind == ClauseKind::space || kind == ClauseKind::dimension;
    Json ref{ofObjects ? "object" : ofSpaces ? "space" : "interaction", declaration.owner};
    if (declaration.member != DeclarationRef::kNone)
        ref.push_back(declaration.member);
    return ref;
}

} // namespace

Json DeclarationRefs::at(std::uint32_t offset) const {
    const auto declaration = _clauses.at(offset);
    return declaration ? asJson(*declaration) : Json();
}

void DeclarationRefs::forEachDocumentation(const std::function<void(const Json &, const std::string &)> &visit) const {
    const auto visitUnlessEmpty = [&visit](const Json &ref, const std::string &text) {
        if (!text.empty())
            visit(ref, text);
    };
    visitUnlessEmpty(Json(), _clauses.documentationOfFile());
    for (const auto &[keyword, section] : kSections)
        visitUnlessEmpty(Json::array({section}), _clauses.documentationOfSections(keyword));
    _clauses.forEachDocumentation(
        [&visit](const DeclarationRef &ref, const std::string &text) { visit(asJson(ref), text); });
}
