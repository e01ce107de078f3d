#pragma once

#include "tool/check/CheckedFile.hh"

/// Adds the fixes that change clauses. Fixes that replace words came with the findings.
void addFixes(CheckedFile &file);
