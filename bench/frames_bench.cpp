// How fast station frames are cut from the byte stream and handed on. The radio line carries 27 frames a
// second.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "forms/door.h"
#include "link/frm_serial_port.h"
#include "link/station_message.h"
#include "race/race_state.h"
#include "replay/virtual_platform.h"

namespace quorvane {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr int kFramesInStream = 1000;

Bytes Stream() {
  Bytes stream;
  for (int i = 0; i < kFramesInStream; ++i) {
    StationMessage frame;
    frame.Wig1 = kWig1;
    frame.Wig2 = kWig2;
    frame.To = kConsole;
    frame.From = static_cast<std::uint8_t>(i % 8);
    frame.Lap[0] = static_cast<std::uint8_t>(i);
    frame.Ecc = ComputeEcc(frame);
    const FrameBytes bytes = EncodeFrame(frame);
    stream.insert(stream.end(), bytes.begin(), bytes.end());
  }
  return stream;
}

void InChunks(const Bytes& stream, std::size_t size, const auto& take) {
  std::span<const std::uint8_t> rest(stream);
  while (!rest.empty()) {
    const std::span<const std::uint8_t> chunk = rest.first(std::min(size, rest.size()));
    take(chunk);
    rest = rest.subspan(chunk.size());
  }
}

void BM_GoodFrames(benchmark::State& state) {
  const Bytes stream = Stream();
  FrameReceiver receiver;
  std::int64_t laps = 0;
  const auto count = [&](Found, const StationMessage& frame) { laps += frame.Lap[0]; };
  for (auto _ : state) {
    InChunks(stream, static_cast<std::size_t>(state.range(0)),
             [&](std::span<const std::uint8_t> chunk) { receiver.Receive(chunk, count); });
  }
  benchmark::DoNotOptimize(laps);
  state.SetItemsProcessed(state.iterations() * kFramesInStream);
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(stream.size()));
}
BENCHMARK(BM_GoodFrames)->Arg(1)->Arg(7)->Arg(36)->Arg(4096)->Arg(1 << 20);

// What nobody can do without who wants to know whether the frames are whole: look at each byte.
void BM_PlainXor(benchmark::State& state) {
  const Bytes stream = Stream();
  for (auto _ : state) {
    std::uint8_t sum = 0;
    for (const std::uint8_t byte : stream) sum ^= byte;
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * kFramesInStream);
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(stream.size()));
}
BENCHMARK(BM_PlainXor);

// A bad line at any speed: every third frame is damaged, and noise stands before every fifth, so that the
// beginning of a frame has to be found again and again.
Bytes BadStream() {
  Bytes stream;
  std::uint32_t random = 1;
  const Bytes good = Stream();
  for (int i = 0; i < kFramesInStream; ++i) {
    const auto next = [&random] { return random = random * 1664525U + 1013904223U, random >> 24; };
    for (std::uint32_t noise = i % 5 == 0 ? 1 + next() % 20 : 0; noise > 0; --noise) {
      stream.push_back(static_cast<std::uint8_t>(next()));
    }
    const auto frame = good.begin() + i * static_cast<std::ptrdiff_t>(kFrameSize);
    stream.insert(stream.end(), frame, frame + kFrameSize);
    if (i % 3 == 0) stream[stream.size() - 1 - next() % kFrameSize] ^= 0x10;
  }
  return stream;
}

void BM_Flood(benchmark::State& state) {
  const Bytes stream = BadStream();
  FrameReceiver receiver;
  std::int64_t good = 0;
  for (auto _ : state) {
    InChunks(stream, kFrameSize, [&](std::span<const std::uint8_t> chunk) {
      receiver.Receive(chunk, [&](Found found, const StationMessage&) { good += found == Found::Good; });
    });
  }
  if (good == 0) state.SkipWithError("no frame came through");
  state.SetItemsProcessed(state.iterations() * kFramesInStream);
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(stream.size()));
}
BENCHMARK(BM_Flood);

// Noise without end: nothing of it may cost more than a good frame.
void BM_Noise(benchmark::State& state) {
  const Bytes stream(36 * kFramesInStream, static_cast<std::uint8_t>(state.range(0)));
  FrameReceiver receiver;
  std::int64_t found = 0;
  for (auto _ : state) receiver.Receive(stream, [&](Found, const StationMessage&) { ++found; });
  benchmark::DoNotOptimize(found);
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(stream.size()));
}
BENCHMARK(BM_Noise)->Arg(0)->Arg(kWig1);

class IdleRace : public LinkOwner {
 public:
  void ProcessMessage(const StationMessage& frame) override { laps += frame.Lap[0]; }
  void FillRaceData(StationMessage&) override {}
  void IssueRaceEvent() override {}
  void ShowPort(const std::string&, bool) override {}
  void ShowTraffic(Traffic, bool) override {}
  void ShowRadioState(const std::string&, bool) override {}

  std::int64_t laps = 0;
};

// The same stream through the door and the link form; with the argument 1 its window is open.
void BM_FramesThroughTheForm(benchmark::State& state) {
  const Bytes stream = Stream();
  VirtualPlatform platform;
  Door door(platform);
  VirtualSerial serial;
  RaceState race;
  IdleRace owner;
  frmSerialPort link(door, race, owner, serial);
  serial.ports = {3};
  platform.settings.SaveSetting("frmSerialPort", "CommPort", "3");
  link.Form_Load();
  door.AllForms().Show(link);
  link.SetVisible(state.range(0) == 1);
  for (auto _ : state) {
    InChunks(stream, 36, [&](std::span<const std::uint8_t> chunk) {
      link.BytesArrived(Bytes(chunk.begin(), chunk.end()));
    });
  }
  if (owner.laps == 0) state.SkipWithError("no frame came through");
  state.SetItemsProcessed(state.iterations() * kFramesInStream);
}
BENCHMARK(BM_FramesThroughTheForm)->Arg(0)->Arg(1);

}  // namespace
}  // namespace quorvane

BENCHMARK_MAIN();
