#pragma once

// The gallery's colors, 32-bit ARGB.
namespace gallery::palette {

inline constexpr unsigned paper = 0xFFF1EEE8;
inline constexpr unsigned card = 0xFFFFFFFF;
inline constexpr unsigned edge = 0xFFDDD8CE;
inline constexpr unsigned ink = 0xFF22303C;
inline constexpr unsigned caption = 0xFF6B7680;
inline constexpr unsigned faint = 0xFFB9C2C9;
inline constexpr unsigned coral = 0xFFF2545B;
inline constexpr unsigned amber = 0xFFF5A623;
inline constexpr unsigned teal = 0xFF19A7A0;
inline constexpr unsigned blue = 0xFF2F6FDE;
inline constexpr unsigned violet = 0xFF7A5CD6;
inline constexpr unsigned green = 0xFF5BB85B;

}  // namespace gallery::palette
