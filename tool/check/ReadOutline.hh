#pragma once

#include "tool/input/Input.hh"
#include "tool/model/Outline.hh"

class Checker;

/// Returns the outline of a text, as far as it can be understood.
Outline outlineOf(const Checker &text);

/// Returns the outline of a file; of a text with errors, as far as it can be understood. Throws RTI::Exception for an
/// image that cannot be restored.
Outline readOutline(const Input &input);
