#pragma once

#include "tool/control/Configuration.hh"

#include <map>
#include <memory>

/// What the command line says about configurations.
struct ConfigurationOptions {
    std::string file;       ///< The configuration of all files; empty to look for the one of each file.
    bool ignoreAll = false; ///< Whether no configuration is read.
    std::vector<std::pair<const Rule *, Level>> levels; ///< They count more than any configuration.
};

/// The name of the files that are found.
inline constexpr const char *kConfigurationName = ".rtifed.toml";

/// Finds and reads the configurations of files.
///
/// The configuration of a file is the nearest `.rtifed.toml` in its folder and the folders around it, and no other:
/// they are not merged, so that one file has all that holds. Paths are those that a person wrote, made absolute;
/// symbolic links are not followed to other folders.
class Configurations {
public:
    explicit Configurations(ConfigurationOptions options);

    /// Returns what holds for a file, which need not exist. Throws CannotWork if its configuration cannot be used.
    Settings settingsFor(const std::string &fileName);

private:
    using Known = std::shared_ptr<const Configuration>;

    Known nearest(std::filesystem::path folder);

    ConfigurationOptions _options;
    Known _given;
    std::map<std::filesystem::path, Known> _byFolder; // null where there is none
};
