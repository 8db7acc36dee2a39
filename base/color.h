#pragma once

#include <cstdint>
#include <string>

namespace quorvane {

// A colour of a control: red-green-blue, or one of the system's colours, which the window looks up.
class Color {
 public:
  enum class System : std::uint8_t { None, ButtonFace, ButtonText, Window, WindowText };

  constexpr Color(System system) : system_(system) {}  // NOLINT(google-explicit-constructor)
  static constexpr Color Rgb(std::uint32_t rgb) { return Color(rgb & 0xFFFFFFU); }

  constexpr System SystemColor() const { return system_; }
  // 0xRRGGBB; meaningful only when SystemColor() is None.
  constexpr std::uint32_t Rgb() const { return rgb_; }
  constexpr bool operator==(const Color&) const = default;

  // Six hexadecimal digits red-green-blue, or "buttonFace", "buttonText", "window", "windowText".
  std::string Name() const;

 private:
  constexpr explicit Color(std::uint32_t rgb) : rgb_(rgb) {}

  std::uint32_t rgb_ = 0;
  System system_ = System::None;
};

inline constexpr Color kButtonFace = Color::System::ButtonFace;
inline constexpr Color kButtonText = Color::System::ButtonText;
inline constexpr Color kWindow = Color::System::Window;
inline constexpr Color kWindowText = Color::System::WindowText;
inline constexpr Color kWhite = Color::Rgb(0xFFFFFF);
inline constexpr Color kBlack = Color::Rgb(0x000000);
inline constexpr Color kSilver = Color::Rgb(0xC0C0C0);
inline constexpr Color kDarkGrey = Color::Rgb(0x404040);
inline constexpr Color kRed = Color::Rgb(0xFF0000);
inline constexpr Color kAmber = Color::Rgb(0xFFC840);  // asks for attention
inline constexpr Color kGreen = Color::Rgb(0x00FF00);

}  // namespace quorvane
