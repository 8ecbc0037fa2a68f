#pragma once

#include "Look.h"

// The gallery's colors.
namespace gallery::palette {

inline constexpr Color kPaper{0xFFF1EEE8, 0xFF191C20};
inline constexpr Color kCard{0xFFFFFFFF, 0xFF24282E};
inline constexpr Color kEdge{0xFFDDD8CE, 0xFF3A4049};
inline constexpr Color kInk{0xFF22303C, 0xFFECEFF3};
inline constexpr Color kCaption{0xFF6B7680, 0xFF9AA4B0};
inline constexpr Color kFaint{0xFFB9C2C9, 0xFF5A6470};
inline constexpr Color kRail{0xFF22303C, 0xFF101317};
inline constexpr Color kAccent = Color::accent();

// The same in the light and in the dark.
inline constexpr unsigned kWhite = 0xFFFFFFFF;
inline constexpr unsigned kCoral = 0xFFF2545B;
inline constexpr unsigned kAmber = 0xFFF5A623;
inline constexpr unsigned kTeal = 0xFF19A7A0;
inline constexpr unsigned kBlue = 0xFF2F6FDE;
inline constexpr unsigned kViolet = 0xFF7A5CD6;
inline constexpr unsigned kGreen = 0xFF5BB85B;

}  // namespace gallery::palette
