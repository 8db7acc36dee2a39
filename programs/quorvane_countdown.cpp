#include <cstdio>
#include <fstream>

#include "programs/countdown.h"

// quorvane-countdown FILE writes the countdown sound. Runs while the program is built.
int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs("usage: quorvane-countdown FILE.wav\n", stderr);
    return 2;
  }
  std::ofstream file(argv[1], std::ios::binary);
  quorvane::WriteWave(file, quorvane::SynthesizeCountdown());
  file.close();
  if (!file) {
    std::fprintf(stderr, "quorvane-countdown: cannot write %s\n", argv[1]);
    return 1;
  }
  return 0;
}
