#pragma once

#include <string_view>

/// The fonts of pictures, as a value of the property font-family.
inline constexpr const char *kFonts = "system-ui, 'Segoe UI', Roboto, 'Helvetica Neue', Arial, sans-serif";

/// Returns an upper estimate of the width of a UTF-8 text in pixels. Which of the fonts a viewer has is not known, so
/// this takes the widest common one for each character; in most others, some 15 % of the width remain empty.
int textWidth(std::string_view text, int fontSize, bool isBold);
