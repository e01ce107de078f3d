#pragma once

#include "tool/lsp/Session.hh"
#include "tool/syntax/Replacement.hh"

#include <string_view>
#include <vector>

/// Returns what turns one text into another, as small as lines and the ends of changed lines show it, in the order of
/// the text: an editor keeps its cursor, folds and marks where nothing changes. No replacement divides a character or a
/// CR LF, since the positions of a client cannot.
std::vector<Replacement> differences(std::string_view before, std::string_view after);

/// Returns replacements as edits of a document. Throws ProtocolError if they would insert bytes that are not UTF-8,
/// which no message can hold.
Json textEdits(const OpenDocument &document, const std::vector<Replacement> &replacements);

/// Returns them as an edit of the workspace.
Json workspaceEdit(const Client &client, const OpenDocument &document, const std::vector<Replacement> &replacements);
