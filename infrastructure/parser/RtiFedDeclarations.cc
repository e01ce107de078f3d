#include "infrastructure/parser/RtiFedDeclarations.hh"

void RtiFedDeclarations::Tree::addMember(std::uint32_t classIndex, const RtiFedArguments &arguments) {
    const auto index = static_cast<std::uint32_t>(members.size());
    members.push_back({arguments, kNone});
    Class &owner = classes[classIndex];
    (owner.firstMember == kNone ? owner.firstMember : members[owner.lastMember].next) = index;
    owner.lastMember = index;
    ++owner.numMembers;
}

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
