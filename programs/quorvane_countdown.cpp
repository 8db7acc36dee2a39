// quorvane-countdown FILE writes the sound of the 60-second count while the program is built: a tick at each
// ten seconds, a beep for each of the last ten, the last three higher, and a horn for the last half second.
//
// The file ends exactly where the count does, so the horn breaks off at zero, and that is the start signal.
// It is short: whoever starts on hearing it is early by its length at most.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <initializer_list>
#include <numbers>
#include <string>
#include <vector>

#include "base/text.h"
#include "files/file_ops.h"
#include "programs/arguments.h"

namespace {

constexpr int kRate = 22050;  // samples a second, one channel
constexpr int kSeconds = 60;
constexpr double kHorn = 0.5;  // s

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
  const auto first = static_cast<std::size_t>(std::lround(tone.at * kRate));
  const auto count = static_cast<std::size_t>(std::lround(tone.length * kRate));
  const double fade = kFade * kRate;
  double weights = 0;
  for (int k = 1; k <= tone.harmonics; ++k) weights += 1.0 / k;
  for (std::size_t i = 0; i < count && first + i < samples.size(); ++i) {
    const double edge = static_cast<double>(std::min(i, count - 1 - i)) / fade;
    const double envelope = edge < 1 ? 0.5 - 0.5 * std::cos(std::numbers::pi * edge) : 1.0;
    const double phase = 2 * std::numbers::pi * tone.pitch * static_cast<double>(i) / kRate;
    double wave = 0;
    for (int k = 1; k <= tone.harmonics; ++k) wave += std::sin(k * phase) / k;
    const double value = kFullScale * tone.loudness * envelope * wave / weights;
    samples[first + i] = static_cast<std::int16_t>(std::lround(value));
  }
}

void Put(std::ostream& out, int bytes, std::initializer_list<std::uint32_t> values) {
  for (const std::uint32_t value : values) {
    for (int i = 0; i < bytes; ++i) out.put(static_cast<char>(value >> (8 * i) & 0xFFU));
  }
}

std::vector<std::int16_t> SynthesizeCountdown() {
  std::vector<std::int16_t> samples(static_cast<std::size_t>(kRate) * kSeconds);
  for (int second = 0; second < 50; second += 10) Add(samples, {1.0 * second, 0.06, 1500, 0.7, 1});
  for (int second = 50; second < 57; ++second) Add(samples, {1.0 * second, 0.12, 880, 0.8, 1});
  for (int second = 57; second < 60; ++second) Add(samples, {1.0 * second, 0.12, 1175, 0.9, 1});
  Add(samples, {kSeconds - kHorn, kHorn, 392, 1.0, 6});
  return samples;
}

void WriteWave(std::ostream& out, const std::vector<std::int16_t>& samples) {
  const auto bytes = static_cast<std::uint32_t>(samples.size() * 2);
  out << "RIFF";
  Put(out, 4, {36 + bytes});
  out << "WAVEfmt ";
  Put(out, 4, {16});
  Put(out, 2, {1, 1});              // PCM, one channel
  Put(out, 4, {kRate, kRate * 2});  // samples and bytes a second
  Put(out, 2, {2, 16});             // bytes and bits a sample
  out << "data";
  Put(out, 4, {bytes});
  for (const std::int16_t sample : samples) Put(out, 2, {static_cast<std::uint16_t>(sample)});
}

}  // namespace

int main(int argc, char** argv) {
  return quorvane::RunProgram("quorvane-countdown", [&] {
    std::string name;
    quorvane::Arguments app("quorvane-countdown", "Writes the sound of the 60-second count.\n");
    app.AddFile("FILE.wav", name, "to be written")->required();
    app.Read(quorvane::CommandLineWords(argc, argv));
    std::ofstream file(quorvane::PathOf(name), std::ios::binary);
    WriteWave(file, SynthesizeCountdown());
    file.close();
    if (file) return 0;
    throw quorvane::Ending{1, "quorvane-countdown: cannot write " + name + "\n"};
  });
}
