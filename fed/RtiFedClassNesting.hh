#pragma once

/// The greatest number of class levels, the root being the first, in FED texts, in images and in calls. Real models
/// have fewer than 20. Some walks down a class tree recurse this deep.
inline constexpr unsigned kMaxClassNesting = 256;
