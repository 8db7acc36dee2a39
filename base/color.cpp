#include "base/color.h"

#include <fmt/format.h>

#include <array>

namespace quorvane {

std::string Color::Name() const {
  static constexpr std::array kNames = {"", "buttonFace", "buttonText", "window", "windowText"};
  return system_ == System::None ? fmt::format("{:06X}", rgb_) : kNames[static_cast<std::size_t>(system_)];
}

}  // namespace quorvane
