#include "infrastructure/parser/RtiFedRepair.hh"

/// Where ")" are missing, each suspect explains one of them. Where there are too many, the indentation is trusted only
/// if it shows exactly that many: with more or fewer places it does not follow the nesting.
std::optional<RtiFedBalance::Suspect> RtiFedRepair::takeSuspect(RtiFedOffset end) {
    const auto surplus = static_cast<std::size_t>(-balance().missingCloses);
    const bool trusted = missingCloses() > 0 || balance().suspects.size() == surplus;
    if (!trusted || !hasSuspect() || balance().suspects[_nextSuspect].at >= end)
        return std::nullopt;
    return balance().suspects[_nextSuspect++];
}
