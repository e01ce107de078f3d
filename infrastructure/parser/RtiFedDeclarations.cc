#include "infrastructure/parser/RtiFedDeclarations.hh"

void RtiFedDeclarations::add(RtiFedClause kind, std::uint32_t owner, const RtiFedArguments &arguments) {
    switch (kind) {
    case RtiFedClause::federation:
        federation = arguments[0];
        return;
    case RtiFedClause::version:
        version = arguments[0];
        return;
    case RtiFedClause::space:
        spaces.push_back({arguments[0]});
        return;
    case RtiFedClause::dimension:
        dimensions.push_back(arguments[0]);
        ++spaces.back().numDimensions;
        return;
    case RtiFedClause::attribute:
        return objects.addMember(owner, arguments);
    case RtiFedClause::parameter:
        return interactions.addMember(owner, arguments);
    default: // federates, sections and security levels
        return;
    }
}
