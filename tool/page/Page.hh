#pragma once

#include "tool/page/PageFiles.hh"

#include <functional>
#include <ostream>
#include <string>
#include <string_view>

/// Returns a text as HTML shows it, in an element or in an attribute in double quotes: whatever is in it stays text.
/// Bytes that are not printable UTF-8 are written as \xNN.
std::string asHtml(std::string_view text);

/// Writes a page: its template, in which marks such as {{title}} are replaced. `writeContent` writes what replaces
/// {{data}} or {{rows}}.
///
/// The content security policy in the page names the digests of its style and script, so that a browser runs nothing
/// else and fetches nothing, even if something in the content were taken for markup.
void writePage(const PageFiles &files, const std::string &title,
               const std::function<void(std::ostream &)> &writeContent, std::ostream &out);

/// Writes a page to a file, as writeFile does. Throws CannotWork, also if the file exists and is not a page of this
/// program, such as the FED file itself or a start page that a person wrote.
void writePageFile(const std::string &fileName, const std::string &page);
