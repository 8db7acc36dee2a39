// The results of a large contest in every format, and reading it.

#include "bench/contest.h"
#include "results/race_records.h"
#include "results/results_formats.h"

namespace quorvane {
namespace {

constexpr int kManyRaces = 2000;

const ContestRecord& ManyRaces() {
  static const ContestRecord contest = [] {
    const Contest file(kManyRaces);
    ContestRecord record;
    ReadProject(SystemFiles(), file.path(), record);
    return record;
  }();
  return contest;
}

void Read(benchmark::State& state) {
  const Contest file(kManyRaces);
  for (auto _ : state) {
    ContestRecord record;
    ReadProject(SystemFiles(), file.path(), record);
    if (record.races.size() != kManyRaces) state.SkipWithError("not all races");
  }
}
BENCHMARK(Read)->Unit(benchmark::kMillisecond);

template <typename Write>
void Results(benchmark::State& state, Write write) {
  std::size_t size = ManyRaces().races.size();
  for (auto _ : state) size = write(ManyRaces()).size();
  state.counters["size"] = static_cast<double>(size);
}
BENCHMARK_CAPTURE(Results, text, ResultsText)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Results, csv, [](const ContestRecord& contest) {
  return ResultsCsv(contest, false);
})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Results, json, ResultsJson)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Results, html, [](const ContestRecord& contest) {
  return ResultsHtml(contest, "bench");
})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Results, table, ResultsRows)->Unit(benchmark::kMillisecond);

// From the file to the page, as quorvane-results does it.
void FileToPage(benchmark::State& state) {
  const Contest file(kManyRaces);
  for (auto _ : state) {
    ContestRecord record;
    ReadProject(SystemFiles(), file.path(), record);
    benchmark::DoNotOptimize(ResultsHtml(record, "bench"));
  }
}
BENCHMARK(FileToPage)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quorvane

BENCHMARK_MAIN();
