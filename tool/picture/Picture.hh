#pragma once

#include "tool/picture/ClassPicture.hh"

#include <ostream>

/// The formats of pictures. Each takes time and memory in proportion to the number of names that it shows.

/// Writes a whole SVG document. It needs no script and no other file, and suits light and dark surroundings.
void writeSvg(const ClassPicture &picture, std::ostream &os);

/// Writes a graph in the DOT language of Graphviz.
void writeDot(const ClassPicture &picture, std::ostream &os);

/// Writes a flowchart of Mermaid, which Markdown shows on many hosts.
void writeMermaid(const ClassPicture &picture, std::ostream &os);

/// Mermaid draws no diagram with more edges or a longer text, unless the page that shows it raises these limits.
inline constexpr std::size_t kMermaidEdges = 500, kMermaidSize = 50000;
