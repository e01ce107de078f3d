#pragma once

/// Marks what the shared library exports. Everything else is built with hidden visibility.
#if defined(__GNUC__)
#define RTI_EXPORT __attribute__((visibility("default")))
#else
#define RTI_EXPORT
#endif
