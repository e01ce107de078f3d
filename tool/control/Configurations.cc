#include "tool/control/Configurations.hh"

#include "tool/console/Console.hh"
#include "tool/console/Text.hh"

namespace fs = std::filesystem;

namespace {

fs::path absolute(const fs::path &path) {
    std::error_code error;
    fs::path found = fs::absolute(path, error).lexically_normal();
    if (error)
        throw CannotWork("the current directory: " + error.message());
    return found;
}

/// Returns how messages name a configuration: relative to the current directory if it is in there.
std::string nameOf(const fs::path &path) {
    const std::string relative = path.lexically_relative(absolute(".").parent_path()).string();
    return beginsWith(relative, "..") ? path.string() : relative;
}

/// Whether there is a configuration in a folder. Throws CannotWork for one that is not a regular file, such as a folder
/// or a broken link: it was meant to be one.
bool hasConfiguration(const fs::path &path) {
    std::error_code error;
    const fs::file_type type = fs::symlink_status(path, error).type();
    if (type == fs::file_type::not_found || error) // a folder that cannot be searched has none for this user
        return false;
    if (type == fs::file_type::regular || fs::is_regular_file(path, error))
        return true;
    throw CannotWork(nameOf(path) + ": " + (error ? error.message() : "expected a regular file"));
}

} // namespace

Configurations::Configurations(ConfigurationOptions options) : _options(std::move(options)) {
    if (!_options.file.empty())
        _given = std::make_shared<const Configuration>(readConfiguration(absolute(_options.file), _options.file));
}

Settings Configurations::settingsFor(const std::string &fileName) {
    const fs::path file = absolute(fileName);
    const Known configuration = _given || _options.ignoreAll ? _given : nearest(file.parent_path());
    Settings settings;
    if (configuration)
        configuration->applyTo(settings, file);
    for (const auto &[rule, level] : _options.levels)
        settings.setLevel(*rule, level, "--rule");
    return settings;
}

/// Each folder is looked into once: what is found holds for all folders that were passed.
Configurations::Known Configurations::nearest(fs::path folder) {
    std::vector<fs::path> passed;
    Known found;
    for (;; folder = folder.parent_path()) {
        const auto known = _byFolder.find(folder);
        if (known != _byFolder.end()) {
            found = known->second;
            break; // equivalent: only for speed, since the same is found again
        }
        passed.push_back(folder); // equivalent: only for speed
        const fs::path path = folder / kConfigurationName;
        if (hasConfiguration(path)) {
            found = std::make_shared<const Configuration>(readConfiguration(path, nameOf(path)));
            break;
        }
        if (folder == folder.root_path())
            break;
    }
    for (fs::path &each : passed)
        _byFolder.emplace(std::move(each), found); // equivalent: only for speed
    return found;
}
