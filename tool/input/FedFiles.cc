#include "tool/input/FedFiles.hh"

#include "fed/storage/RtiFedName.hh"
#include "tool/console/Text.hh"

#include <algorithm>
#include <filesystem>

namespace {

namespace fs = std::filesystem;

bool isFedFile(const fs::directory_entry &entry) {
    std::error_code unreadable;
    const fs::file_type type = entry.status(unreadable).type();
    // A link that leads nowhere shall be reported when it is opened.
    const bool mayBeFile =
        type == fs::file_type::regular || type == fs::file_type::not_found || type == fs::file_type::none;
    return mayBeFile && isFedName(entry.path().string());
}

/// The files in "." are named as people and reports name them. None of them is "-", which would be standard input.
std::string withoutDot(const std::string &name) {
    return beginsWith(name, "./") ? name.substr(std::min(name.find_first_not_of('/', 1), name.size())) : name;
}

/// Adds the FED files in a folder and in its folders, in the order of their names.
void addFilesIn(const fs::path &folder, const std::string &operand, std::vector<FileToRead> &files) {
    std::error_code error;
    std::vector<fs::directory_entry> entries;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
        if (entry->path().filename().string()[0] != '.')
            entries.push_back(*entry);
    if (error) // unreached: who runs the tests may read any folder
        files.push_back({folder.string(), operand, folder.string() + ": " + error.message()});
    std::sort(entries.begin(), entries.end());
    for (const fs::directory_entry &entry : entries) {
        std::error_code unreadable;
        if (entry.symlink_status(unreadable).type() == fs::file_type::directory)
            addFilesIn(entry.path(), operand, files);
        else if (isFedFile(entry))
            files.push_back({withoutDot(entry.path().string()), operand});
    }
}

} // namespace

bool isFedName(const std::string &name) {
    return RtiFedName::equal(fs::path(name).extension().string(), ".fed");
}

std::vector<FileToRead> withoutFolders(const std::vector<std::string> &operands) {
    std::vector<FileToRead> files;
    for (const std::string &operand : operands) {
        std::error_code unreadable;
        if (operand == "-" || !fs::is_directory(operand, unreadable)) {
            files.push_back({operand});
            continue;
        }
        const std::size_t before = files.size();
        addFilesIn(operand, operand, files);
        if (files.size() == before)
            files.push_back({operand, operand, operand + ": the folder has no FED files, which end in .fed"});
    }
    return files;
}
