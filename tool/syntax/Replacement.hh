#pragma once

#include "infrastructure/RtiFedPosition.hh"

#include <string>

/// A span of a text, and the text to replace it with.
struct Replacement {
    RtiFedSpan span;
    std::string text;
};
