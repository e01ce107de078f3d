#include "tool/language/words/DottedNames.hh"

#include "fed/storage/RtiFedName.hh"

#include <algorithm>

namespace {

constexpr std::size_t kMostNamesakes = 100; // equivalent: a guess at what is enough
constexpr std::string_view kBoundaries = " \t\v\f;,:!?'`\"()<>[]{}|=*";

/// The components of the word that begins at an offset and ends with the text.
std::vector<RtiFedSpan> componentsOf(std::string_view text, std::uint32_t begin) {
    std::vector<RtiFedSpan> components;
    const auto end = static_cast<std::uint32_t>(text.size());
    for (std::uint32_t at = begin; at < end;) { // equivalent: nothing is at the end
        const auto dot = static_cast<std::uint32_t>(std::min<std::size_t>(text.find('.', at), end));
        if (dot > at)
            components.push_back({at, dot - at});
        at = dot + 1;
    }
    return components;
}

bool isContiguous(const std::vector<RtiFedSpan> &components) {
    for (std::size_t i = 1; i < components.size(); ++i)
        if (components[i - 1].begin + components[i - 1].length + 1 != components[i].begin)
            return false;
    return true;
}

/// Looks up the components of one dotted name.
class DottedLookup {
public:
    DottedLookup(const Entities &entities, std::string_view text, const DottedWord &word)
        : _entities(entities), _text(text), _components(word.components) {}

    std::vector<DottedMeaning> meanings() {
        const std::size_t last = _components.size() - 1;
        for (const Entities::Index found : _entities.named(component(last), kMostNamesakes))
            if (!isMember(_entities[found].kind) || _entities[found].kind == ClauseKind::dimension)
                addPath(found, last);
        for (const Entities::Index found : _entities.named(component(last - 1), kMostNamesakes))
            if (isClass(_entities[found].kind))
                addMember(found, last);
        return std::move(_meanings);
    }

private:
    std::string_view component(std::size_t index) const {
        return _text.substr(_components[index].begin, _components[index].length);
    }

    /// Fills `meaning` with an entity and those around it for the components up to `last`. Returns whether all match.
    bool matchPath(Entities::Index entity, std::size_t last, DottedMeaning &meaning) const {
        for (std::size_t i = last + 1; i-- > 0; entity = _entities[entity].owner) {
            if (entity == Entities::kNone || !RtiFedName::equal(_entities[entity].name, component(i)))
                return false;
            meaning[i] = {entity, Entities::kNone};
        }
        return true;
    }

    void addPath(Entities::Index entity, std::size_t last) {
        DottedMeaning meaning(_components.size());
        if (matchPath(entity, last, meaning))
            _meanings.push_back(std::move(meaning));
    }

    void addMember(Entities::Index via, std::size_t last) {
        DottedMeaning meaning(_components.size());
        if (!matchPath(via, last - 1, meaning))
            return;
        for (Entities::Index owner = via; owner != Entities::kNone; owner = _entities[owner].owner)
            if (const Entities::Index member = _entities.member(owner, component(last)); member != Entities::kNone) {
                meaning[last] = {member, via};
                _meanings.push_back(std::move(meaning));
                return;
            }
    }

    const Entities &_entities;
    const std::string_view _text;
    const std::vector<RtiFedSpan> &_components;
    std::vector<DottedMeaning> _meanings;
};

} // namespace

std::vector<DottedWord> dottedWordsIn(std::string_view text, RtiFedSpan comment) {
    std::vector<DottedWord> words;
    const std::uint32_t end = comment.begin + comment.length;
    for (std::uint32_t at = comment.begin; at < end;) { // equivalent: nothing is at the end
        const auto stop = static_cast<std::uint32_t>(std::min<std::size_t>(text.find_first_of(kBoundaries, at), end));
        DottedWord word{componentsOf(text.substr(0, stop), at)};
        if (word.components.size() > 1 && isContiguous(word.components))
            words.push_back(std::move(word));
        at = stop + 1;
    }
    return words;
}

std::vector<DottedMeaning> meaningsOf(const Entities &entities, std::string_view text, const DottedWord &word) {
    return DottedLookup(entities, text, word).meanings();
}
