// What saving a race and opening a project cost, beside the other ways to do the same: one rewrite of the
// file per value, and a bare replacement of the same bytes. The argument of each benchmark is the number of
// races in the file. Times are wall-clock times: the disk counts.

#include "bench/contest.h"

namespace quorvane {
namespace {

void SaveRace(benchmark::State& state) {
  SaveRaces(state, true);
}
BENCHMARK(SaveRace)->Apply(DiskTimes)->Arg(2000);

void SaveRaceKeyByKey(benchmark::State& state) {
  SaveRaces(state, false);
}
BENCHMARK(SaveRaceKeyByKey)->Arg(kRaces)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);

// It grows as the project does.
void BareReplacement(benchmark::State& state) {
  const Contest contest(state.range(0));
  std::string bytes = contest.bytes();
  const std::string race = ContestText(1);
  for (auto _ : state) {
    bytes += race;
    if (!ReplaceBarely(contest.path(), bytes)) state.SkipWithError("cannot write");
  }
}
BENCHMARK(BareReplacement)->Apply(DiskTimes)->Arg(2000);

BENCHMARK_CAPTURE(OpenProject, here, OpenWithStore)
    ->Arg(kRaces)
    ->Arg(2000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

// The same bytes from the disk, and nothing done with them.
int ReadBarely(const std::string& path) {
  const std::string bytes = ContentOf(path, kLargestProject).value_or("");
  return bytes.empty() ? 0 : kRaces + 1;
}
BENCHMARK_CAPTURE(OpenProject, bare, ReadBarely)->Arg(kRaces)->Unit(benchmark::kMillisecond)->UseRealTime();

// One value out of a section that has been asked for before; must not depend on the size of the file.
void LookUp(benchmark::State& state) {
  const ProfileFile file(ContestText(static_cast<int>(state.range(0))));
  const std::string section = "Race" + std::to_string(state.range(0)) + "_Lane4";
  for (auto _ : state) benchmark::DoNotOptimize(file.Read(section, "Event35"));
}
BENCHMARK(LookUp)->Arg(32)->Arg(8192);

}  // namespace
}  // namespace quorvane

BENCHMARK_MAIN();
