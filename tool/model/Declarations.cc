#include "tool/model/Declarations.hh"

void Declarations::add(const void *record, unsigned long classClause) {
    Declaration declaration{{}, classClause};
    for (std::size_t i = 0; i < kMaxArguments; ++i)
        if (_text.given(i))
            declaration.arguments[i] = _text.span(i);
    _declarations.emplace(record, declaration);
}

std::optional<RtiFedSpan> Declarations::span(const void *record, Argument argument) const {
    const auto declared = _declarations.find(record);
    if (declared == _declarations.end() || declared->second.arguments.at(argument).length == 0)
        return {};
    return declared->second.arguments[argument];
}

std::optional<RtiFedPosition> Declarations::place(const void *record) const {
    const auto found = span(record);
    return found ? std::optional(_text.positionAt(found->begin)) : std::nullopt;
}

const std::vector<RtiFedSpan> &Declarations::laterSpans(const void *record) const {
    static const std::vector<RtiFedSpan> none;
    const auto later = _later.find(record);
    return later == _later.end() ? none : later->second;
}

std::vector<RtiFedPosition> Declarations::laterPlaces(const void *record) const {
    std::vector<RtiFedPosition> places;
    for (const RtiFedSpan &span : laterSpans(record))
        places.push_back(_text.positionAt(span.begin));
    return places;
}

std::string Declarations::written(const void *record, Argument argument) const {
    const auto found = span(record, argument);
    return found ? std::string(wordAt(*found)) : std::string();
}

std::string_view Declarations::wordAt(RtiFedSpan span) const {
    std::string_view word = _text.text().substr(span.begin, span.length);
    if (word.size() > 1 && word.front() == '"')
        word = word.substr(1, word.size() - 2);
    return word;
}
