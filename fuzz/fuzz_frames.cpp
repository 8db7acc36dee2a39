// Arbitrary bytes in arbitrary chunks: the receiver must find exactly what the plain algorithm finds.
//
// The input is a list of chunks: a byte with the chunk's length (255: the port has just been opened), then
// its bytes.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

#include "fuzz/require.h"
#include "link/station_message.h"
#include "tests/support/naive_receiver.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quorvane;
  FrameReceiver receiver;
  std::vector<std::string> found;
  NaiveReceiver naive;
  std::span<const std::uint8_t> rest(data, size);
  while (!rest.empty()) {
    const std::size_t length = rest[0];
    rest = rest.subspan(1);
    if (length == 255) {
      receiver.PortOpened();
      naive.PortOpened();
      continue;
    }
    const std::span<const std::uint8_t> chunk = rest.first(std::min(length, rest.size()));
    rest = rest.subspan(chunk.size());
    receiver.Receive(chunk, [&](Found what, const auto& frame) { found.push_back(FoundText(what, frame)); });
    for (const std::uint8_t byte : chunk) naive.Byte(byte);
    Require(receiver.RxCount() == naive.Count());
  }
  for (const std::string& text : found) Tell(text);
  Require(found == naive.TakeFound());
  return 0;
}
