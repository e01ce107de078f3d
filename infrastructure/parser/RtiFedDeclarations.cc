#include "infrastructure/parser/RtiFedDeclarations.hh"

void RtiFedDeclarations::Tree::addMember(std::uint32_t classIndex, const RtiFedArguments &arguments) {
    const auto index = static_cast<std::uint32_t>(members.size());
    members.push_back({arguments, kNone});
    Class &owner = classes[classIndex];
    (owner.firstMember == kNone ? owner.firstMember : members[owner.lastMember].next) = index;
    owner.lastMember = index;
    ++owner.numMembers;
}
