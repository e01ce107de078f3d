#pragma once

#include "tool/control/Settings.hh"

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

/// The contents of one configuration file; docs/configuration.md describes it for its authors.
struct Configuration {
    /// What it sets for all files, or for those of one section.
    struct Part {
        std::vector<std::pair<const Rule *, Setting<Level>>> levels;
        std::vector<std::pair<NameKind, Setting<Pattern>>> patterns;
        std::vector<Subtree> subtrees;
    };
    /// A [[files]] section.
    struct Section {
        std::vector<Pattern> paths; ///< Relative to the folder of the configuration.
        std::string origin;
        Part part;
    };

    /// Applies what holds for a file of this absolute path: first what holds for all files, then each section of which
    /// a path matches, so that a later section counts more.
    void applyTo(Settings &settings, const std::filesystem::path &file) const;

    std::string name;             ///< Of the file, for people.
    std::filesystem::path folder; ///< Absolute.
    Part all;
    std::vector<Section> sections;
};

/// Reads a configuration file of this absolute path; messages call it `name`. Throws CannotWork with every fault of the
/// file, as FILE:LINE:COLUMN: TEXT.
Configuration readConfiguration(const std::filesystem::path &path, const std::string &name);
