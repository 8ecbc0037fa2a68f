#pragma once

// The gallery's colors, 32-bit ARGB.
namespace gallery::palette {

inline constexpr unsigned kPaper = 0xFFF1EEE8;
inline constexpr unsigned kCard = 0xFFFFFFFF;
inline constexpr unsigned kEdge = 0xFFDDD8CE;
inline constexpr unsigned kInk = 0xFF22303C;
inline constexpr unsigned kCaption = 0xFF6B7680;
inline constexpr unsigned kFaint = 0xFFB9C2C9;
inline constexpr unsigned kCoral = 0xFFF2545B;
inline constexpr unsigned kAmber = 0xFFF5A623;
inline constexpr unsigned kTeal = 0xFF19A7A0;
inline constexpr unsigned kBlue = 0xFF2F6FDE;
inline constexpr unsigned kViolet = 0xFF7A5CD6;
inline constexpr unsigned kGreen = 0xFF5BB85B;

}  // namespace gallery::palette
