#pragma once

#include <cstdint>
#include <ostream>
#include <vector>

namespace quorvane {

// The sound of the 60-second count, which starts with the count: a tick at each ten seconds, a beep for each
// of the last ten seconds, the last three higher, and a horn for the last half second.
//
// The file ends exactly where the count does, so the horn cannot begin there: it breaks off at zero, and
// where it breaks off is the start signal. It is kept short, because whoever starts on hearing the horn
// itself is then never early by more than its length.
inline constexpr int kSoundRate = 22050;  // samples a second, one channel
inline constexpr int kSoundSeconds = 60;
inline constexpr double kHornSeconds = 0.5;

std::vector<std::int16_t> SynthesizeCountdown();

// Writes the samples as a wave file: RIFF, PCM, 16 bits. The stream tells of a failure.
void WriteWave(std::ostream& out, const std::vector<std::int16_t>& samples);

}  // namespace quorvane
