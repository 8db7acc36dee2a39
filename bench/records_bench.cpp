// What saving a race and opening a project cost, beside the other ways to do the same: one rewrite of the
// file per value, a bare replacement of the same bytes, and the INI libraries that are installed. The
// argument of each benchmark is the number of races in the file. Times are wall-clock times: the disk counts.

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

#include "records/project_store.h"

#ifdef BENCH_GLIB_2_0
#include <glib.h>
#endif
#ifdef BENCH_INIREADER
#include <INIReader.h>
#endif
#ifdef BENCH_SIMPLEINI
#define SI_NO_CONVERSION  // plain bytes, as in the other libraries
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wold-style-cast"
#pragma GCC diagnostic ignored "-Wcast-qual"
#pragma GCC diagnostic ignored "-Wshadow"
#include <SimpleIni.h>
#pragma GCC diagnostic pop
#endif

namespace quorvane {
namespace {

using SetValue =
    std::function<void(const std::string& section, const std::string& key, const std::string& value)>;

// A race as it is saved: four lanes, of which each flew ten laps with all its turns reported.
void WriteRace(int race, const SetValue& set) {
  constexpr int kEvents = 36;
  const std::string section = "Race" + std::to_string(race);
  set(section, "Timestamp", "46347.3754861111, 11/21/2026 9:00:42 AM");
  set(section, "CurrentRace", std::to_string(race) + " (h=3, r=2)");
  set(section, "RaceMode", "3, Ten laps, two pylons");
  set(section, "Comments", "No comments");
  for (int lane = 1; lane <= 4; ++lane) {
    const std::string of_lane = section + "_Lane" + std::to_string(lane);
    set(of_lane, "NumEvents", std::to_string(kEvents));
    set(of_lane, "NumCuts", "1");
    set(of_lane, "NumLaps", "10");
    set(of_lane, "Placing", "1:02.35");
    set(of_lane, "Position", std::to_string(lane));
    set(of_lane, "Time", "62.35");
    set(of_lane, "Laps", "6.1,6.2,6.3,6.2,6.1,6.4,6.2,6.3,6.2,6.3,,,,");
    set(of_lane, "Cuts", "P2");
    for (int event = 0; event < kEvents; ++event) {
      const std::string number = std::to_string(event);
      set(of_lane, "Event" + number, number + ",2,L,P2," + std::to_string(6000 + event * 1710) + ",0");
    }
  }
}

std::string ContestText(int races) {
  std::string text = "[Current]\r\nTitle=Autumn Cup\r\nRace=1\r\nHeatsPerRound=4\r\nNumberReflys=0\r\n";
  std::string current;
  for (int race = 1; race <= races; ++race) {
    WriteRace(race, [&](const std::string& section, const std::string& key, const std::string& value) {
      if (section != current) text += "[" + section + "]\r\n";
      current = section;
      text += key + "=" + value + "\r\n";
    });
  }
  return text;
}

// A contest of so many races in a file of its own.
class Contest {
 public:
  explicit Contest(int64_t races) : races_(static_cast<int>(races)), bytes_(ContestText(races_)) {
    std::string pattern = (std::filesystem::temp_directory_path() / "quorvane-bench-XXXXXX").string();
    folder_ = mkdtemp(pattern.data());
    path_ = (folder_ / "contest.ini").string();
    std::ofstream(path_, std::ios::binary) << bytes_;
  }
  ~Contest() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }
  Contest(const Contest&) = delete;
  Contest& operator=(const Contest&) = delete;

  int races() const { return races_; }
  const std::string& bytes() const { return bytes_; }
  const std::string& path() const { return path_; }

  void Report(benchmark::State& state) const {
    state.counters["MB"] = static_cast<double>(bytes_.size()) / 1e6;
    state.SetComplexityN(races_);
  }

 private:
  int races_;
  std::string bytes_;
  std::filesystem::path folder_;
  std::string path_;
};

// Another race each time, as in a contest; the file grows a little with it.
void SaveRaces(benchmark::State& state, bool as_group) {
  const Contest contest(state.range(0));
  ProjectStore store(contest.path());
  int race = contest.races();
  for (auto _ : state) {
    if (as_group) store.Begin();
    WriteRace(++race, [&](const auto& section, const auto& key, const auto& value) {
      store.Write(section, key, value);
    });
    if (as_group) store.End();
    if (!store.Saved()) state.SkipWithError(store.Problem().c_str());
  }
  contest.Report(state);
}

void SaveRace(benchmark::State& state) {
  SaveRaces(state, true);
}
BENCHMARK(SaveRace)
    ->Arg(125)
    ->Arg(500)
    ->Arg(2000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(40);

void SaveRaceKeyByKey(benchmark::State& state) {
  SaveRaces(state, false);
}
BENCHMARK(SaveRaceKeyByKey)->Arg(500)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

void BareReplacement(benchmark::State& state) {
  const Contest contest(state.range(0));
  FileOps& files = SystemFiles();
  for (auto _ : state) {
    TempFile temp;
    FileStamp stamp;
    const bool failed = files.CreateTemp(contest.path(), temp) || files.Write(temp, contest.bytes()) ||
                        files.Sync(temp) || files.Close(temp, stamp) ||
                        files.Rename(temp.path, contest.path());
    if (failed) state.SkipWithError("cannot write");
  }
  contest.Report(state);
}
BENCHMARK(BareReplacement)
    ->Arg(125)
    ->Arg(500)
    ->Arg(2000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->MinTime(1);

// Opens the project and goes to the first race that has not been run, the way the console starts.
template <typename Open>
void OpenProject(benchmark::State& state, Open open) {
  const Contest contest(state.range(0));
  for (auto _ : state) {
    if (open(contest.path()) != contest.races() + 1) state.SkipWithError("landed on another race");
  }
  contest.Report(state);
}

template <typename Timestamp>
int FirstRaceNotRun(Timestamp timestamp) {
  int race = 1;
  while (timestamp("Race" + std::to_string(race)) != 0) ++race;
  return race;
}

double Number(const char* text) {
  return text == nullptr ? 0 : std::strtod(text, nullptr);
}

int OpenWithStore(const std::string& path) {
  ProjectStore store(path);
  return FirstRaceNotRun(
      [&](const std::string& section) { return Number(store.Read(section, "Timestamp", "0.0").c_str()); });
}
BENCHMARK_CAPTURE(OpenProject, here, OpenWithStore)
    ->Arg(125)
    ->Arg(500)
    ->Arg(2000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

#ifdef BENCH_GLIB_2_0
int OpenWithGLib(const std::string& path) {
  GKeyFile* file = g_key_file_new();
  g_key_file_load_from_file(file, path.c_str(), G_KEY_FILE_KEEP_COMMENTS, nullptr);
  const int race = FirstRaceNotRun([&](const std::string& section) {
    gchar* text = g_key_file_get_string(file, section.c_str(), "Timestamp", nullptr);
    const double number = Number(text);
    g_free(text);
    return number;
  });
  g_key_file_free(file);
  return race;
}
BENCHMARK_CAPTURE(OpenProject, GLib, OpenWithGLib)->Arg(500)->Unit(benchmark::kMillisecond)->UseRealTime();
#endif

#ifdef BENCH_INIREADER
int OpenWithInih(const std::string& path) {
  const INIReader file(path);
  return FirstRaceNotRun(
      [&](const std::string& section) { return Number(file.Get(section, "Timestamp", "0.0").c_str()); });
}
BENCHMARK_CAPTURE(OpenProject, inih, OpenWithInih)->Arg(500)->Unit(benchmark::kMillisecond)->UseRealTime();
#endif

#ifdef BENCH_SIMPLEINI
int OpenWithSimpleIni(const std::string& path) {
  CSimpleIniA file;
  file.LoadFile(path.c_str());
  return FirstRaceNotRun(
      [&](const std::string& section) { return Number(file.GetValue(section.c_str(), "Timestamp", "0.0")); });
}
BENCHMARK_CAPTURE(OpenProject, simpleini, OpenWithSimpleIni)
    ->Arg(500)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
#endif

// One value out of a section that has been asked for before; must not depend on the size of the file.
void LookUp(benchmark::State& state) {
  const ProfileFile file(ContestText(static_cast<int>(state.range(0))));
  const std::string section = "Race" + std::to_string(state.range(0)) + "_Lane4";
  for (auto _ : state) benchmark::DoNotOptimize(file.Read(section, "Event35"));
}
BENCHMARK(LookUp)->RangeMultiplier(4)->Range(32, 8192);

}  // namespace
}  // namespace quorvane

BENCHMARK_MAIN();
