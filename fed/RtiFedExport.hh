#pragma once

/// Marks what the library hands to others when it is built with hidden visibility.
#if defined(__GNUC__)
#define RTIFED_EXPORT __attribute__((visibility("default")))
#else
#define RTIFED_EXPORT
#endif
