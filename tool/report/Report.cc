#include "tool/report/Report.hh"

#include "tool/console/Text.hh"

std::string describeHidden(const Tally &tally) {
    std::vector<std::string> hidden;
    if (tally.errors > tally.shownErrors())
        hidden.push_back(counted(tally.errors - tally.shownErrors(), "more error"));
    if (tally.warnings > tally.shownWarnings())
        hidden.push_back(counted(tally.warnings - tally.shownWarnings(), "more warning"));
    return joined(hidden, " and ") + (tally.hidden() == 1 ? " is" : " are") + " not shown";
}

std::string describeFixable(const Tally &tally) {
    const std::size_t all = tally.errors + tally.warnings;
    return tally.fixable == 0
               ? ""
               : std::to_string(tally.fixable) + " of " + std::to_string(all) + " can be fixed by rtifed fix";
}
