#pragma once

#include <cstdint>
#include <initializer_list>
#include <utility>
#include <vector>

namespace quorvane::testing_frames {

using Bytes = std::vector<std::uint8_t>;
using Fields = std::initializer_list<std::pair<std::size_t, int>>;  // byte of the frame -> value

inline std::uint8_t Check(const Bytes& frame) {
  std::uint8_t check = 0;
  for (std::size_t i = 3; i < frame.size(); ++i) check ^= frame[i];
  return check;
}

// A good frame, put together byte by byte and without the program's encoder.
inline Bytes Frame(int to, int from, Fields fields = {}) {
  Bytes frame(36, 0);
  frame[0] = 0x55;
  frame[1] = 0xAA;
  frame[4] = static_cast<std::uint8_t>(to);
  frame[5] = static_cast<std::uint8_t>(from);
  for (const auto& [index, value] : fields) frame[index] = static_cast<std::uint8_t>(value);
  frame[2] = Check(frame);
  return frame;
}

inline Bytes operator+(Bytes a, const Bytes& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

}  // namespace quorvane::testing_frames
