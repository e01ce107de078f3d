#pragma once

/// Marks what the library exports when it is built with hidden visibility.
#if defined(__GNUC__)
#define RTIFED_EXPORT __attribute__((visibility("default")))
#else
#define RTIFED_EXPORT
#endif
