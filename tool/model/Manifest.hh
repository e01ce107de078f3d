#pragma once

#include <optional>
#include <string>
#include <string_view>

/// A line of a list of checksums: the digits of a checksum or fingerprint, two blanks, and a file name.
struct ManifestLine {
    std::string digits; ///< In any letter case.
    std::string fileName;
};

/// Returns a line without its line end. Backslashes and line ends in the name are escaped by a backslash, and the line
/// then begins with a backslash.
std::string manifestText(const ManifestLine &line);

/// Returns a file name escaped in the same way, for a message that begins with it.
std::string manifestName(const std::string &fileName);

/// Parses a line: 8 or 64 digits in any letter case, a blank, a blank or "*", and the file name. Returns nothing for
/// any other line.
std::optional<ManifestLine> parseManifestLine(std::string_view text);
