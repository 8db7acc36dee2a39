#include "base/color.h"

#include "base/text.h"

namespace quorvane {

std::string Color::Name() const {
  switch (system_) {
    case System::ButtonFace:
      return "buttonFace";
    case System::ButtonText:
      return "buttonText";
    case System::Window:
      return "window";
    case System::WindowText:
      return "windowText";
    case System::None:
      break;
  }
  const auto byte = [this](int shift) { return Hex2(static_cast<std::uint8_t>(rgb_ >> shift)); };
  return byte(16) + byte(8) + byte(0);
}

}  // namespace quorvane
