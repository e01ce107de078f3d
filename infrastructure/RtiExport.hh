#pragma once

/// Marks what a shared library hands to others. Everything else is built with hidden visibility.
#if defined(__GNUC__)
#define RTI_EXPORT __attribute__((visibility("default")))
#else
#define RTI_EXPORT
#endif
