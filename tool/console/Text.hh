#pragma once

#include "infrastructure/RTI.hh"
#include "infrastructure/RtiFedParser.hh"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// How names, numbers and places are written in messages. Names of a file or model may hold any bytes; those that are
/// not printable UTF-8 are written as \xNN.

/// The length in bytes after which a name in a finding is cut, and a longer text elsewhere.
inline constexpr std::size_t kNameLimit = 60, kTextLimit = 300;

/// Returns a printable copy of a name, cut after `limit` bytes.
std::string shown(std::string_view name, std::size_t limit = std::string_view::npos);

/// Returns `shown(name, limit)` in double quotes.
std::string inQuotes(std::string_view name, std::size_t limit = kNameLimit);

/// Returns the reason of an exception, printable.
std::string reasonOf(const RTI::Exception &exception);

/// Returns `noun` for one, else its plural.
std::string plural(std::size_t count, const std::string &noun);

/// Returns a number and its noun, such as "2 classes".
std::string counted(std::size_t count, const std::string &noun);

std::string joined(const std::vector<std::string> &words, std::string_view separator = ", ");

bool beginsWith(std::string_view text, std::string_view beginning);

/// Returns the parts of a text that end at a separator or at the end of the text.
std::vector<std::string> split(const std::string &text, char separator);

/// Returns the words of a text, which blanks and line ends separate.
std::vector<std::string> wordsOf(std::string_view text);

/// Returns the two hexadecimal digits of a byte, in lower case.
std::string hexDigits(unsigned char byte);

/// Returns `%NN` for a byte, as URIs write it.
std::string percentEncoded(char byte);

/// Returns a path as URIs write it, encoded byte by byte.
std::string pathInUri(std::string_view path);

/// Returns `LINE:COLUMN`.
std::string textOf(RtiFedPosition place);

/// Returns `FILE:LINE:COLUMN`, or only the file name if there is no place.
std::string textOf(const std::string &fileName, const std::optional<RtiFedPosition> &place);
