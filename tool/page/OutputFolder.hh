#pragma once

#include <string>

/// A folder that a command fills with files. Nothing is written outside of it, even if symbolic links in it lead out.
class OutputFolder {
public:
    /// Creates the folder if there is none. Throws CannotWork.
    explicit OutputFolder(const std::string &name);

    /// Returns the name of the file at a path in the folder, after it has created the folders on the path. Throws
    /// CannotWork, also for a path that leads out of the folder.
    std::string fileAt(const std::string &path) const;

private:
    std::string _name;
    std::string _canonical;
};
