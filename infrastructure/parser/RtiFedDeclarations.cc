#include "infrastructure/parser/RtiFedDeclarations.hh"

RtiFedSpan withQuotes(const RtiFedText &text, const RtiFedArguments &arguments, std::size_t index) {
    const RtiFedSpan word = arguments[index], quoted = text.withQuotes(word);
    if (index == 0 || quoted.begin == word.begin)
        return quoted;
    // In `class "A"reliable"receive"`, the quotes around the second word are those of its neighbours.
    const RtiFedSpan before = withQuotes(text, arguments, index - 1);
    return before.begin + before.length > quoted.begin ? word : quoted;
}

void RtiFedDeclarations::addOther(RtiFedClause kind, const RtiFedArguments &arguments) {
    if (kind == RtiFedClause::dimension) {
        dimensions.push_back(arguments[0]);
        ++spaces.back().numDimensions;
    } else if (kind == RtiFedClause::space) {
        spaces.push_back({arguments[0]});
    } else if (kind == RtiFedClause::federation) {
        federation = arguments[0];
    } else if (kind == RtiFedClause::version) {
        version = arguments[0];
    }
}
