#include "tool/report/Report.hh"

#include "tool/console/Text.hh"
#include "tool/report/GithubReport.hh"
#include "tool/report/JsonReport.hh"
#include "tool/report/SarifReport.hh"
#include "tool/report/TextReport.hh"

std::string describeHidden(const Tally &tally) {
    const auto more = [](std::size_t count, const char *noun) {
        return count == 0 ? "" : counted(count, std::string("more ") + noun);
    };
    const std::string both = tally.hiddenErrors > 0 && tally.hiddenWarnings > 0 ? " and " : "";
    return more(tally.hiddenErrors, "error") + both + more(tally.hiddenWarnings, "warning") +
           (tally.hidden() == 1 ? " is" : " are") + " not shown";
}

std::unique_ptr<Report> makeReport(ReportFormat format, const Console &console) {
    switch (format) {
    case ReportFormat::text:
        break;
    case ReportFormat::json:
        return std::make_unique<JsonReport>(console.out);
    case ReportFormat::sarif:
        return std::make_unique<SarifReport>(console.out);
    case ReportFormat::github:
        return std::make_unique<GithubReport>(console.out);
    }
    return std::make_unique<TextReport>(console.out, console.color, console.width);
}
