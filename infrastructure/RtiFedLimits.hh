#pragma once

#include "fed/RtiFedClassNesting.hh"

#include <cstddef>

/// Every bound on what a FED text may ask of us, each with its reason; the levels of classes, which bound images as
/// well, stand in fed/RtiFedClassNesting.hh. SECURITY.md tells people of them.

/// Bytes of a name, a class's full dotted name included: 256 levels of 63 bytes and their dots. A full name is stored
/// with its class, so a long path makes every class below it large.
inline constexpr std::size_t kMaxNameLength = 16384;

/// Bytes that the full names of all classes of one text may have together. A model of a million declarations needs
/// some 10 MiB; the bound keeps a small text of long paths from asking for gigabytes.
inline constexpr std::size_t kMaxFullNames = std::size_t(64) << 20;

/// Syntax errors of one text, behind which it is not read on, and findings of `rtifed check` beside them: nobody reads
/// so many, and each takes memory.
inline constexpr std::size_t kMaxErrors = 100000;

/// Bytes of a FED text. Offsets into it are kept in 32 bits; the largest text known has less than 1 MiB.
inline constexpr std::size_t kMaxTextSize = std::size_t(1) << 30;
