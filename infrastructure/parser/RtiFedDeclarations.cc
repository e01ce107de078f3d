#include "infrastructure/parser/RtiFedDeclarations.hh"

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
