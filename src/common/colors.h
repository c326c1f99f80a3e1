#pragma once

#include <cstdint>

// Colours as the views exchange them: plain RGB numbers with red in the lowest byte, or a
// system colour (high bit set, index in the low byte).
namespace colors {

constexpr std::uint32_t kGreen = 65280;  // 0x00FF00
constexpr std::uint32_t kYellow = 65535; // 0x00FFFF: red and green
constexpr std::uint32_t kRed = 255;      // 0x0000FF
constexpr std::uint32_t kWindowBackground = 0x80000005;
constexpr std::uint32_t kButtonFace = 0x8000000F;
constexpr std::uint32_t kButtonText = 0x80000012;
constexpr std::uint32_t kWindowText = 0x80000008;

// The element's own colour, as its kind of element has it.
constexpr std::uint32_t kDefault = 0xFFFFFFFF;

constexpr std::uint32_t rgb(int red, int green, int blue) {
    return static_cast<std::uint32_t>(red) | static_cast<std::uint32_t>(green) << 8 |
           static_cast<std::uint32_t>(blue) << 16;
}

constexpr bool isSystemColor(std::uint32_t color) {
    return color != kDefault && (color & 0x80000000u) != 0;
}

} // namespace colors
