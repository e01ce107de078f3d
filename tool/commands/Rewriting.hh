#pragma once

#include "tool/console/Console.hh"
#include "tool/input/Input.hh"

#include <functional>
#include <optional>
#include <string>
#include <vector>

/// What the commands that rewrite FED texts have in common. Without any of these options, the result of one file goes
/// to standard output.
struct RewriteOptions {
    std::vector<std::string> files; ///< Or folders.
    bool write = false;             ///< Whether the files are replaced.
    bool diff = false;              ///< Whether the changes are shown.
    bool check = false;             ///< Whether the files that would change are named, with exit status 1.
};

/// The new text of a file.
struct Rewritten {
    std::string text;
    bool isGood = true;      ///< Whether the command has nothing to complain about.
    std::string report = {}; ///< For standard error, once the file is written.
};

/// Returns the new text of a file; nothing if it is refused, with the reason on `console.err`.
using Rewrite = std::function<std::optional<Rewritten>(const Input &text)>;

/// Rewrites files. Saved images are refused, and so is a link in a folder that leads out of the folder. A file that is
/// refused or cannot be read or written stays as it is and stops no other one.
Status rewriteFiles(const RewriteOptions &options, const Console &console, const Rewrite &rewrite);
