#pragma once

#include <string>
#include <string_view>

/// Returns a name as Markdown shows it in a monospaced font, whatever its characters.
std::string markdownCode(std::string_view name);

/// Returns a text of several lines so that Markdown shows it as it is, with its lines and without any markup.
std::string markdownText(std::string_view text);
