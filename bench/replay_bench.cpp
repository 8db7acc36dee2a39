// How fast a session is flown again: a heat in each race mode, as the simulated field puts it on the air.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <string>

#include "field/field.h"
#include "replay/replay.h"

namespace quorvane {
namespace {

SessionJournal SixHeats() {
  field::FieldOptions options;
  options.heats = 6;
  options.mode = 0;
  field::Field field(options);
  std::string text =
      "quorvane-journal 1\n0 start 2026-11-21T09:00:00\n0 timers virtual\n"
      "0 setting frmSerialPort CommPort \"5\"\n0 ports 5\n0 answer text \"4\"\n0 answer text \"Cup\"\n0 "
      "load\n";
  field.BeginHeats(0);
  std::int64_t ms = 0;
  while (!field.Done()) {
    ms = std::max(ms + 1, field.NextDue());
    for (const field::Chunk& chunk : field.AdvanceTo(ms)) {
      text += RecordText({.ms = ms, .event = {.kind = EventKind::Bytes, .bytes = chunk.bytes}});
    }
  }
  return ReadJournal(text + std::to_string(ms) + " end\n");
}

void ReplaySixHeats(benchmark::State& state) {
  static const SessionJournal journal = SixHeats();
  for (auto _ : state) {
    Replay replay(journal, {});
    replay.Run();
    if (!replay.program().judge().HasRun(6)) state.SkipWithError("not all heats were flown");
    replay.folder().Remove();
  }
  state.counters["flown_ms"] = static_cast<double>(journal.LastMs());
}
BENCHMARK(ReplaySixHeats)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace quorvane

BENCHMARK_MAIN();
