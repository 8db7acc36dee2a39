// What keeping the race costs: how long an entry by hand holds up the window's thread, and when it is on the
// disk. Without a window, which costs the same with and without it.

#include <benchmark/benchmark.h>
#include <stdlib.h>
#include <time.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "console/program.h"
#include "replay/virtual_platform.h"

namespace quorvane {
namespace {

using Clock = std::chrono::steady_clock;
using Ms = std::chrono::duration<double, std::milli>;

// A console with a project in a folder of its own, on which a heat is judged by hand.
class Heat {
 public:
  explicit Heat(BackgroundFiles::Way way) : program(platform, serial, SystemFiles(), way) {
    std::string pattern = (std::filesystem::temp_directory_path() / "quorvane-bench-XXXXXX").string();
    folder_ = mkdtemp(pattern.data());
    const std::string project = (folder_ / "contest.ini").string();
    std::ofstream(project, std::ios::binary) << "[Current]\r\nTitle=Cup\r\nHeatsPerRound=4\r\n";
    program.judge().SetStartupProject(project);
    program.door().Enter({EventKind::Load});
  }
  ~Heat() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }

  // A lap of the next lane; a new race when all have flown.
  void Lap() {
    if (!program.race().BeingFlown()) {
      program.door().Enter({EventKind::Click, "frmJudge.cmdSave"});
      program.door().Enter({EventKind::Click, "frmJudge.cmdStart"});
      lap_ = 0;
    }
    platform.RunUntil(program.door(), platform.ClockMs() + 2000);
    if (!program.race().BeingFlown()) return Lap();
    key_ = "F" + std::to_string(lap_++ % 4 + 1);
  }
  void Enter() { program.door().Enter({.kind = EventKind::Key, .text = key_}); }

  VirtualPlatform platform;
  VirtualSerial serial;
  Program program;

 private:
  std::filesystem::path folder_;
  std::string key_;
  int lap_ = 0;
};

// What this thread itself has worked, whatever else the computer does.
double WorkedMs() {
  timespec worked{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &worked);
  return static_cast<double>(worked.tv_sec) * 1e3 + static_cast<double>(worked.tv_nsec) / 1e6;
}

void Tell(benchmark::State& state, const std::string& what, std::vector<double> ms) {
  std::ranges::sort(ms);
  state.counters[what + "_median_ms"] = ms[ms.size() / 2];
  state.counters[what + "_worst_ms"] = ms.back();
}

void Entry(benchmark::State& state, BackgroundFiles::Way way) {
  Heat heat(way);
  std::vector<double> held, worked, kept;
  for (auto _ : state) {
    heat.Lap();
    heat.program.keeper().Wait(5000);
    const auto begun = Clock::now();
    const double before = WorkedMs();
    heat.Enter();
    worked.push_back(WorkedMs() - before);
    held.push_back(Ms(Clock::now() - begun).count());
    heat.program.keeper().Wait(5000);
    kept.push_back(Ms(Clock::now() - begun).count());
    state.SetIterationTime(held.back() / 1000);
  }
  Tell(state, "window", held);
  Tell(state, "work", worked);
  if (way == BackgroundFiles::Way::OwnThread) Tell(state, "disk", kept);
}
BENCHMARK_CAPTURE(Entry, NotOnTheDisk, BackgroundFiles::Way::InMemory)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(200);
BENCHMARK_CAPTURE(Entry, Kept, BackgroundFiles::Way::OwnThread)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(200);

}  // namespace
}  // namespace quorvane

BENCHMARK_MAIN();
