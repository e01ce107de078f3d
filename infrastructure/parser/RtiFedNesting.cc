#include "infrastructure/parser/RtiFedNesting.hh"

#include "infrastructure/RtiFedLimits.hh"

#include <algorithm>

bool RtiFedNesting::isKeywordNearby(std::string_view word) const {
    return childOf(kind(), word) != RtiFedClause::unknown || childOf(parent().name.kind, word) != RtiFedClause::unknown;
}

RtiFedOffset RtiFedNesting::ownerOfInnermost() const {
    for (std::size_t i = _open.size(); i > 1; --i) // equivalent: the outermost clause is no class
        if (isClass(_open[i - 2].name.kind))
            return _open[i - 2].name.label.begin;
    return 0;
}

RtiFedSyntaxError &RtiFedNesting::addError(Problem problem, RtiFedOffset at) {
    if (errors.size() > kMaxErrors)
        return errors.back();
    if (errors.size() == kMaxErrors) {
        problem = Problem::tooManyErrors;
        stopped = true;
    }
    RtiFedSyntaxError error;
    error.problem = problem;
    error.at = at;
    error.clause = _open.empty() ? RtiFedClauseName{RtiFedClause::fed, fed, fedKeyword} : _open.back().name;
    error.afterFirst = !_open.empty() && _open.back().hasClauses;
    errors.push_back(error);
    return errors.back();
}

void RtiFedNesting::stop(Problem problem, RtiFedOffset at) {
    addError(problem, at);
    stopped = true;
}

bool RtiFedNesting::insertSuspectedClose(RtiFedOffset at, RtiFedOffset next) {
    const auto *suspect = depth() > 0 ? repair.takeSuspect(RtiFedRepair::Suspect::missingClose, at) : nullptr;
    if (!suspect)
        return false;
    addError(Problem::leftOpen, next).suspect = *suspect;
    known = false;
    return true;
}

bool RtiFedNesting::dropSuspected(RtiFedRepair::Suspect::Change change, RtiFedOffset at) {
    const auto *suspect = repair.takeSuspect(change, at);
    if (!suspect)
        return false;
    addError(Problem::expectedClose, at).suspect = *suspect;
    known = false;
    return true;
}

void RtiFedNesting::insertForgottenCloses(std::string_view keyword, RtiFedOffset at) {
    const auto allows = [keyword](const Clause &clause) { // a sec_level does not show which clause it was meant for
        const RtiFedClause child = childOf(clause.name.kind, keyword);
        return child != RtiFedClause::unknown && child != RtiFedClause::secLevel;
    };
    const auto parent = std::find_if(_open.rbegin(), _open.rend(), allows);
    const auto forgotten = static_cast<std::size_t>(parent - _open.rbegin());
    if (parent == _open.rend() || !repair.mayInsertClose(forgotten))
        return;
    addError(Problem::leftOpen, at);
    if (!isLeaf(kind()) || forgotten > 1)
        known = false;
    repair.insertClose(forgotten);
    drop(forgotten);
}

bool RtiFedNesting::reopenLastClosed(Problem problem, RtiFedOffset at) {
    if (!repair.mayDropClose())
        return false;
    addError(problem, at);
    known = false;
    repair.dropClose();
    _open.push_back(lastClosed);
    return true;
}
