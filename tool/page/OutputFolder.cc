#include "tool/page/OutputFolder.hh"

#include "tool/console/Console.hh"

#include <algorithm>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

/// Returns a path without symbolic links, as far as it exists.
fs::path resolved(const fs::path &path) {
    std::error_code error;
    fs::path found = fs::weakly_canonical(path, error);
    if (error)
        throw CannotWork(path.string() + ": " + error.message());
    return found;
}

void create(const fs::path &folder) {
    std::error_code error;
    if (fs::exists(folder, error) && !fs::is_directory(folder, error))
        throw CannotWork(folder.string() + ": expected a folder, found a file");
    fs::create_directories(folder, error);
    if (error)
        throw CannotWork(folder.string() + ": " + error.message());
}

bool isIn(const fs::path &path, const fs::path &folder) {
    return std::mismatch(folder.begin(), folder.end(), path.begin(), path.end()).first == folder.end();
}

} // namespace

OutputFolder::OutputFolder(const std::string &name) : _name(name) {
    create(name);
    _canonical = resolved(name).string();
}

/// The folders on the path are looked at before any is created: one of them may be a link that leads out.
std::string OutputFolder::fileAt(const std::string &path) const {
    const fs::path file = fs::path(_name) / path;
    const auto checkInside = [this](const fs::path &inside) {
        if (!isIn(resolved(inside), _canonical))
            throw CannotWork(inside.string() + ": leads out of the folder " + _name + ", so nothing is written there");
    };
    checkInside(file.parent_path());
    create(file.parent_path());
    checkInside(file);
    return file.string();
}
