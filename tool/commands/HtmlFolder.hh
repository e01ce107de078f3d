#pragma once

#include "tool/commands/Commands.hh"

/// Writes a page for each FED file in a folder, and an index of them.
Status htmlOfFolder(const HtmlOptions &options, const Console &console);
