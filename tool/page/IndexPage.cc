#include "tool/page/IndexPage.hh"

#include "tool/console/Text.hh"
#include "tool/model/Model.hh"
#include "tool/page/Page.hh"

#include <array>

namespace {

using State = IndexRow::State;

std::size_t numMembers(const Outline::Classes &classes) {
    std::size_t count = 0;
    for (const Outline::Class &node : classes)
        count += node.members.size();
    return count;
}

/// The columns with counts of a model.
struct NumberColumn {
    const char *key, *heading;
    std::size_t IndexRow::*count;
};
constexpr std::array<NumberColumn, 6> kNumbers = {
    {{"warnings", "Warnings", &IndexRow::warnings},
     {"objects", "Object classes", &IndexRow::objectClasses},
     {"attributes", "Attributes", &IndexRow::attributes},
     {"interactions", "Interaction classes", &IndexRow::interactionClasses},
     {"parameters", "Parameters", &IndexRow::parameters},
     {"spaces", "Spaces", &IndexRow::spaces}}};

const char *nameOf(State state) {
    constexpr const char *kNames[] = {"loads", "refused", "unreadable", "removed"};
    return kNames[static_cast<std::size_t>(state)];
}

std::string describeState(const IndexRow &row) {
    const std::string errors = row.errors > 0 ? ", " + counted(row.errors, "error") : "";
    switch (row.state) {
    case State::loads:
        return "loads" + errors;
    case State::refused:
        return "refused" + errors;
    case State::unreadable:
        return row.failure;
    case State::removed:
        break; // equivalent: this is the last one
    }
    return "removed";
}

class TableWriter {
public:
    TableWriter(bool withVerdicts, std::ostream &out) : _withVerdicts(withVerdicts), _out(out) {}

    void writeCaption(const std::string &old) {
        _out << "<caption>Compared with <span class=\"old\">" << asHtml(old) << "</span></caption>\n";
    }

    void writeHead() {
        _out << "<thead>\n<tr>";
        writeHeading("file", "File");
        writeHeading("federation", "Federation");
        writeHeading("state", "State");
        if (_withVerdicts)
            writeHeading("verdict", "Changes");
        for (const NumberColumn &column : kNumbers)
            writeHeading(std::string("number ") + column.key, column.heading);
        writeHeading("checksum", "Checksum");
        writeHeading("fingerprint", "SHA-256");
        _out << "</tr>\n</thead>\n";
    }

    void write(const IndexRow &row) {
        _out << "<tr data-state=\"" << nameOf(row.state) << "\">";
        writeFile(row);
        writeCell("federation", asHtml(row.federation));
        const bool hasModel = row.state == State::loads || row.state == State::refused;
        writeCell(std::string("state ") + nameOf(row.state),
                  linked(row.errors > 0, row, "#findings", asHtml(describeState(row))));
        if (_withVerdicts)
            writeCell("verdict " + row.verdict, linked(row.isCompared, row, "#changes", asHtml(row.verdict)),
                      asHtml(row.meaning));
        for (const NumberColumn &column : kNumbers)
            writeCell(std::string("number ") + column.key, hasModel ? std::to_string(row.*column.count) : "");
        writeCode("checksum", row.checksum);
        writeFingerprint(row.fingerprint);
        _out << "</tr>\n";
    }

private:
    void writeHeading(const std::string &classes, const char *heading) {
        _out << "<th scope=\"col\" class=\"" << classes << "\">" << heading << "</th>";
    }

    void writeFile(const IndexRow &row) {
        const bool hasPage = row.state == State::loads || row.state == State::refused;
        _out << "<th scope=\"row\" class=\"file\">" << linked(hasPage, row, "", asHtml(row.path)) << "</th>";
    }

    /// Returns the HTML as a link to a part of the model's page, if it is one.
    static std::string linked(bool isLink, const IndexRow &row, const char *part, const std::string &html) {
        return isLink ? "<a href=\"" + pathInUri(pageOf(row.path)) + part + "\">" + html + "</a>" : html;
    }

    void writeCell(const std::string &classes, const std::string &html, const std::string &title = "") {
        _out << "<td class=\"" << classes << '"' << (title.empty() ? "" : " title=\"" + title + '"') << '>' << html
             << "</td>";
    }

    void writeCode(const std::string &column, const std::string &code) {
        writeCell(column, code.empty() ? "" : "<code>" + code + "</code>");
    }

    /// The first digits are enough to see that two models differ. The style hides the others, which the filter finds.
    void writeFingerprint(const std::string &digits) {
        writeCell("fingerprint", digits.empty()
                                     ? ""
                                     : "<code title=\"" + digits + "\">" + digits.substr(0, kShownDigits) +
                                           "<span class=\"rest\">" + digits.substr(kShownDigits) + "</span></code>");
    }

    static constexpr std::size_t kShownDigits = 12;

    bool _withVerdicts;
    std::ostream &_out;
};

} // namespace

IndexRow IndexRow::of(const std::string &path, const ModelToShow &model) {
    const Outline &outline = model.file.outline;
    IndexRow row{path, outline.loads ? State::loads : State::refused};
    row.federation = outline.federation;
    if (const RtiFedDatabase *database = model.database()) {
        row.checksum = checksumText(*database);
        row.fingerprint = ::fingerprint(*database);
    }
    row.objectClasses = outline.objects.size();
    row.attributes = numMembers(outline.objects);
    row.interactionClasses = outline.interactions.size();
    row.parameters = numMembers(outline.interactions);
    row.spaces = outline.spaces.size();
    return row;
}

void writeIndexPage(const std::string &title, const std::vector<IndexRow> &rows, const std::string &old,
                    std::ostream &out) {
    const auto writeTable = [&](std::ostream &page) {
        TableWriter table(!old.empty(), page);
        if (!old.empty())
            table.writeCaption(old);
        table.writeHead();
        page << "<tbody>\n";
        for (const IndexRow &row : rows)
            table.write(row);
        page << "</tbody>";
    };
    writePage(kIndexPage, title, writeTable, out);
}
