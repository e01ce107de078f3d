#pragma once

#include <cstddef>

/// Prepares the heap for a file of `fileSize` bytes and its model. Call it before the file is read.
///
/// A third of the time that a large file takes would be the kernel's, which provides memory page by page. So the heap
/// grows at once by what the file will need, and the kernel is asked for huge pages there. Memory that is not used
/// stays unoccupied, and if there is not so much, the heap grows as usual. Does nothing for small files and without the
/// GNU C library.
void reserveHeap(std::size_t fileSize);
