#include "infrastructure/parser/RtiFedDeclarations.hh"

void RtiFedDeclarations::add(RtiFedClause kind, std::uint32_t owner, const RtiFedArguments &arguments) {
    if (kind == RtiFedClause::attribute) {
        objects.addMember(owner, arguments);
    } else if (kind == RtiFedClause::parameter) {
        interactions.addMember(owner, arguments);
    } else if (kind == RtiFedClause::dimension) {
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
