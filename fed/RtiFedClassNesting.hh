#pragma once

/// Levels of classes, the root being the first, in FED texts and images alike. Real models have fewer than 20; walks
/// down a tree may recurse this deep.
inline constexpr unsigned kMaxClassNesting = 256;
