#include "programs/countdown.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <string_view>

namespace quorvane {
namespace {

// A tone with harmonics. It fades in and out over a few milliseconds, so that no speaker clicks.
struct Tone {
  double at;        // s
  double length;    // s
  double pitch;     // Hz
  double loudness;  // 0..1
  int harmonics;    // 1: a pure tone
};

constexpr double kFade = 0.005;  // s
constexpr double kFullScale = 30000;

void Add(std::vector<std::int16_t>& samples, const Tone& tone) {
  const auto first = static_cast<std::size_t>(std::lround(tone.at * kSoundRate));
  const auto count = static_cast<std::size_t>(std::lround(tone.length * kSoundRate));
  const double fade = kFade * kSoundRate;
  double weights = 0;
  for (int k = 1; k <= tone.harmonics; ++k) weights += 1.0 / k;
  for (std::size_t i = 0; i < count && first + i < samples.size(); ++i) {
    const double edge = static_cast<double>(std::min(i, count - 1 - i)) / fade;
    const double envelope = edge < 1 ? 0.5 - 0.5 * std::cos(std::numbers::pi * edge) : 1.0;
    const double phase = 2 * std::numbers::pi * tone.pitch * static_cast<double>(i) / kSoundRate;
    double wave = 0;
    for (int k = 1; k <= tone.harmonics; ++k) wave += std::sin(k * phase) / k;
    const double value = kFullScale * tone.loudness * envelope * wave / weights;
    samples[first + i] = static_cast<std::int16_t>(std::lround(value));
  }
}

void Put(std::ostream& out, std::uint32_t value, int bytes) {
  for (int i = 0; i < bytes; ++i) out.put(static_cast<char>(value >> (8 * i) & 0xFFU));
}

}  // namespace

std::vector<std::int16_t> SynthesizeCountdown() {
  std::vector<std::int16_t> samples(static_cast<std::size_t>(kSoundRate) * kSoundSeconds);
  for (int second = 0; second < 50; second += 10) Add(samples, {1.0 * second, 0.06, 1500, 0.7, 1});
  for (int second = 50; second < 57; ++second) Add(samples, {1.0 * second, 0.12, 880, 0.8, 1});
  for (int second = 57; second < 60; ++second) Add(samples, {1.0 * second, 0.12, 1175, 0.9, 1});
  Add(samples, {kSoundSeconds - kHornSeconds, kHornSeconds, 392, 1.0, 6});
  return samples;
}

void WriteWave(std::ostream& out, const std::vector<std::int16_t>& samples) {
  const auto bytes = static_cast<std::uint32_t>(samples.size() * 2);
  out << "RIFF";
  Put(out, 36 + bytes, 4);
  out << "WAVEfmt ";
  Put(out, 16, 4);
  Put(out, 1, 2);  // PCM
  Put(out, 1, 2);  // one channel
  Put(out, kSoundRate, 4);
  Put(out, kSoundRate * 2, 4);  // bytes a second
  Put(out, 2, 2);               // bytes a sample
  Put(out, 16, 2);              // bits a sample
  out << "data";
  Put(out, bytes, 4);
  for (const std::int16_t sample : samples) Put(out, static_cast<std::uint16_t>(sample), 2);
}

}  // namespace quorvane
