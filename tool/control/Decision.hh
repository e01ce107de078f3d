#pragma once

#include "tool/check/CheckedFile.hh"
#include "tool/control/Baseline.hh"
#include "tool/control/Settings.hh"

/// Decides what becomes of the findings of a file: adds those about its habits and about the comments that allow rules;
/// then marks those that a comment allows, that the settings switch off, or that the baseline knows; and sets the
/// severities. `baseline` is null if there is none.
void decide(CheckedFile &file, const Settings &settings, Baseline *baseline);
