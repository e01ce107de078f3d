#pragma once

#include <string>
#include <string_view>

/// Returns a text as content of an XML element or of an attribute in double quotes. Bytes that no XML document may
/// contain, such as control characters and bytes that are not UTF-8, become \xNN. `lineEnd` takes the place of line
/// ends, which an attribute cannot have.
std::string xml(std::string_view text, std::string_view lineEnd = "\n");
