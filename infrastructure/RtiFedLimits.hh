#pragma once

#include "fed/loading/RtiFedParserCodegen.hh" // with kMaxClassNesting

#include <cstddef>

/// The limits on a FED text, each with its reason, so that a hostile text cannot exhaust memory or time. The limit on
/// class nesting, which applies to images as well, is kMaxClassNesting. SECURITY.md lists all of them for users.

/// Bytes of a name and of a class's full dotted name: 256 levels of 63 bytes and their dots. A full name is stored
/// with its class, so a long path makes every class below it large.
inline constexpr std::size_t kMaxNameLength = 16384;

/// Bytes of the full names of all classes of one text together. A model of a million declarations needs some 10 MiB;
/// the limit keeps a small text with long paths from allocating gigabytes.
inline constexpr std::size_t kMaxFullNames = std::size_t(64) << 20;

/// Syntax errors of one text, after which the rest of it is not read, and findings of `rtifed check` besides them.
/// Nobody reads more, and each of them allocates.
inline constexpr std::size_t kMaxErrors = 100000;

/// Bytes of a FED text. Offsets into it are stored in 32 bits; the largest text known is smaller than 1 MiB.
inline constexpr std::size_t kMaxTextSize = std::size_t(1) << 30;
