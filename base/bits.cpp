#include "base/bits.h"

namespace quorvane {

std::string BitString(std::uint8_t byte) {
  std::string text(8, 'o');
  for (std::size_t i = 0; i < text.size(); ++i) {
    if ((byte & BitMask[7 - i]) != 0) text[i] = '1';
  }
  return text;
}

}  // namespace quorvane
