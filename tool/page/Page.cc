#include "tool/page/Page.hh"

#include "tool/console/Console.hh"
#include "tool/console/Digest.hh"
#include "tool/console/OutputFile.hh"
#include "tool/console/Xml.hh"

#include <filesystem>
#include <fstream>

namespace {

std::string policyOf(const PageFiles &files) {
    return "default-src 'none'; script-src 'sha256-" + sha256InBase64(files.script) + "'; style-src 'sha256-" +
           sha256InBase64(files.style) + "'; base-uri 'none'; form-action 'none'";
}

/// The element by which a page is recognised, near the beginning of each template.
constexpr std::string_view kGenerator = "<meta name=\"generator\" content=\"rtifed";

/// Whether there is a file of this name that is not empty, and not a page of this program as far as it can be read.
bool isForeign(const std::string &fileName) {
    std::error_code none;
    if (!std::filesystem::is_regular_file(fileName, none))
        return false;
    std::ifstream file(fileName, std::ios::binary);
    std::string head(1024, '\0');
    if (!file) // unreached: who runs the tests may read any file
        return true;
    file.read(head.data(), static_cast<std::streamsize>(head.size()));
    head.resize(static_cast<std::size_t>(file.gcount()));
    return !head.empty() && head.find(kGenerator) == std::string::npos;
}

} // namespace

std::string asHtml(std::string_view text) {
    return xml(text, "\\x0a");
}

void writePage(const PageFiles &files, const std::string &title,
               const std::function<void(std::ostream &)> &writeContent, std::ostream &out) {
    std::string_view rest = files.html;
    for (std::size_t begin = 0; (begin = rest.find("{{")) != std::string_view::npos;) {
        const std::size_t end = rest.find("}}", begin);
        const std::string_view mark = rest.substr(begin + 2, end - begin - 2);
        out << rest.substr(0, begin);
        rest.remove_prefix(end + 2);
        if (mark == "policy")
            out << policyOf(files);
        else if (mark == "title")
            out << asHtml(title);
        else if (mark == "style")
            out << files.style;
        else if (mark == "script")
            out << files.script;
        else
            writeContent(out);
    }
    out << rest;
}

void writePageFile(const std::string &fileName, const std::string &page) {
    if (isForeign(fileName))
        throw CannotWork(fileName + ": the file is not a page of rtifed, so it is not replaced by one");
    writeFile(fileName, page.data(), page.size());
}
