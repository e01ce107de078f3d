#pragma once

#include <string>
#include <string_view>

/// How a text for the editor is marked up: not at all, for an editor that shows it as it is, or as Markdown.
enum class Markup : unsigned char { none, markdown };

/// Returns a word that is emphasised.
std::string strong(Markup markup, std::string_view word);

/// Returns a name, whatever its characters; in Markdown, in a monospaced font.
std::string code(Markup markup, std::string_view name);

/// Returns a text of several lines with these lines, and in Markdown without any markup.
std::string plainText(Markup markup, std::string_view text);

/// What ends a line within a paragraph.
const char *lineEnd(Markup markup);

/// What separates two parts of a text; each is a paragraph or more.
const char *separator(Markup markup);
