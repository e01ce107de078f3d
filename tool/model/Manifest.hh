#pragma once

#include <optional>
#include <string>
#include <string_view>

/// A line of a manifest: the hexadecimal digits of a checksum or fingerprint, two blanks, and the name of a file.
struct ManifestLine {
    std::string digits; ///< In lower case.
    std::string fileName;
};

/// A line as text, without its end. If a backslash or line end is in the name, it is escaped by a backslash, and the
/// text begins with one.
std::string manifestText(const ManifestLine &line);

/// A file name escaped likewise, to begin another line with.
std::string manifestName(const std::string &fileName);

/// Reads a line. Nothing if it is not in that form: 8 or 64 digits in any letter case, a blank, and a blank or "*".
std::optional<ManifestLine> parseManifestLine(std::string_view text);
