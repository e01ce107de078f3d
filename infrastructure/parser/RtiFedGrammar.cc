#include "infrastructure/parser/RtiFedGrammar.hh"

#include "infrastructure/RtiStringUtility.hh"

#include <algorithm>

namespace {

using C = RtiFedClause;

// In the order of the enumeration.
// clang-format off
constexpr RtiFedClauseForm kForms[] = {
    // keyword, noun, arguments, a space may follow, named, place, clauses in it, the members of a class or space first
    {"FED", "", 0, {}, false, false, "",
     6, {C::federation, C::version, C::federate, C::spaces, C::objects, C::interactions}},
    {"Federation", "clause", 1, {"a name"}, false, false, "directly in FED", 0, {}},
    {"FEDversion", "clause", 1, {"a version"}, false, false, "directly in FED", 0, {}},
    {"Federate", "federate", 2, {"a name", "a security level"}, false, true, "directly in FED", 0, {}},
    {"spaces", "section", 0, {}, false, false, "directly in FED", 1, {C::space}},
    {"space", "space", 1, {"a name"}, false, true, "in the section \"spaces\"", 1, {C::dimension}},
    {"dimension", "dimension", 1, {"a name"}, false, true, "in a space", 0, {}},
    {"objects", "section", 0, {}, false, false, "directly in FED", 1, {C::objectClass}},
    {"class", "class", 1, {"a name"}, false, true, "in the section \"objects\" or \"interactions\"",
     3, {C::attribute, C::objectClass, C::secLevel}},
    {"attribute", "attribute", 3, {"a name", "a transportation", "an ordering"}, true, true, "in an object class",
     1, {C::secLevel}},
    {"interactions", "section", 0, {}, false, false, "directly in FED", 1, {C::interactionClass}},
    {"class", "class", 3, {"a name", "a transportation", "an ordering"}, true, true, "in the section \"interactions\"",
     3, {C::parameter, C::interactionClass, C::secLevel}},
    {"parameter", "parameter", 1, {"a name"}, false, true, "in an interaction class", 0, {}},
    {"sec_level", "clause", 1, {"a security level"}, false, false, "in a class or an attribute, after their words", 0, {}},
    {"", "clause", 0, {}, false, false, "", 0, {}},
};
// clang-format on

static_assert(std::size(kForms) == static_cast<std::size_t>(C::unknown) + 1);

} // namespace

const RtiFedClauseForm &formOf(RtiFedClause clause) {
    return kForms[static_cast<std::size_t>(clause)];
}

bool isKeywordOf(RtiFedClause clause, std::string_view word) {
    const std::string_view keyword = formOf(clause).keyword;
    if (word.size() != keyword.size())
        return false;
    const auto same = [](char a, char b) { return RtiStringUtility::toupper(a) == RtiStringUtility::toupper(b); };
    return word == keyword || std::equal(word.begin(), word.end(), keyword.begin(), same);
}

std::string_view keywordOf(std::string_view word) {
    const auto *end = std::end(kForms) - 1; // without the unknown clause
    const auto *form = std::find_if(std::begin(kForms), end, [&](const RtiFedClauseForm &f) {
        return isKeywordOf(static_cast<RtiFedClause>(&f - kForms), word);
    });
    return form == end ? std::string_view() : form->keyword;
}

RtiFedClause childOf(RtiFedClause parent, std::string_view keyword) {
    const RtiFedClauseForm &form = formOf(parent);
    const auto *end = form.children + form.numChildren;
    const auto *child = std::find_if(form.children, end, [keyword](RtiFedClause c) { return isKeywordOf(c, keyword); });
    return child == end ? RtiFedClause::unknown : *child;
}

RtiFedClause memberOf(RtiFedClause owner) {
    return isClass(owner) || owner == C::space ? formOf(owner).children[0] : C::unknown;
}

RtiFedClause classIn(RtiFedClause owner) {
    const RtiFedClause child = isClass(owner) ? owner : formOf(owner).children[0];
    return isClass(child) ? child : C::unknown;
}

bool isLeaf(RtiFedClause clause) {
    const RtiFedClauseForm &form = formOf(clause);
    return form.numChildren == 0 || form.children[0] == RtiFedClause::secLevel;
}
