#include "tool/language/ClauseForm.hh"

#include <algorithm>
#include <iterator>

namespace {

using K = ClauseKind;
using R = WordRole;

// In the order of the enumeration.
// clang-format off
constexpr ClauseForm kForms[] = {
    {"", "clause", {}, 0, false, {}, ""}, // equivalent: it is not offered, and nothing in it
    // equivalent: FED is offered only where it is not yet
    {"FED", "FED clause", {}, 0, true, {K::federation, K::version, K::federate, K::spaces, K::objects, K::interactions},
     "The whole file: the federation, its routing spaces, and both class trees."},
    {"Federation", "federation", {R::name}, 1, true, {}, "The name of the federation."},
    {"FEDversion", "version", {R::value}, 1, true, {}, "The version of the FED format, usually v1.3."},
    {"Federate", "federate", {R::name, R::value}, 2, false, {},
     "A federate and its security level. It is read, but has no effect."},
    {"spaces", "section", {}, 0, true, {K::space}, "The routing spaces, in which regions limit who receives what."},
    {"space", "routing space", {R::name}, 1, false, {K::dimension},
     "A routing space: federates exchange only data whose regions in it overlap."},
    {"dimension", "dimension", {R::name}, 1, false, {}, "A coordinate of the routing space; a region has a range of it."},
    {"objects", "section", {}, 0, true, {K::objectClass}, "The tree of object classes, below ObjectRoot."},
    {"class", "object class", {R::name}, 1, false, {K::attribute, K::objectClass, K::secLevel},
     "An object class: it has the attributes that it declares, and those of its superclasses."},
    {"attribute", "attribute", {R::name, R::transportation, R::ordering, R::space}, 3, false, {K::secLevel},
     "An attribute of the object class and of all its subclasses: name, transportation, ordering, perhaps a space."},
    {"interactions", "section", {}, 0, true, {K::interactionClass},
     "The tree of interaction classes, below InteractionRoot."},
    {"class", "interaction class", {R::name, R::transportation, R::ordering, R::space}, 3, false,
     {K::parameter, K::interactionClass, K::secLevel},
     "An interaction class: name, transportation, ordering, perhaps a space. It has the parameters that it declares, "
     "and those of its superclasses."},
    {"parameter", "parameter", {R::name}, 1, false, {}, "A parameter of the interaction class and of all its subclasses."},
    {"sec_level", "security level", {R::value}, 1, true, {}, "A security level. It is read, but has no effect."},
};
// clang-format on

static_assert(std::size(kForms) == static_cast<std::size_t>(K::secLevel) + 1);

} // namespace

const ClauseForm &formOf(ClauseKind kind) {
    return kForms[static_cast<std::size_t>(kind)];
}

WordRole roleOf(ClauseKind kind, std::size_t word) {
    const auto &words = formOf(kind).words;
    if (word == 0)
        return kind == K::unknown ? R::none : R::keyword;
    return word <= words.size() ? words.at(word - 1) : R::none;
}

ClauseKind kindOf(std::string_view keyword, bool inInteractions) {
    if (keyword.empty())
        return K::unknown;
    if (keyword == formOf(K::interactionClass).keyword && inInteractions)
        return K::interactionClass;
    const auto *form = std::find_if(std::begin(kForms), std::end(kForms),
                                    [keyword](const ClauseForm &f) { return f.keyword == keyword; });
    return static_cast<K>(form - std::begin(kForms)); // each keyword has a form
}
