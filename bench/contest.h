#pragma once

#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <string_view>

#include "records/project_store.h"

namespace quorvane {

inline constexpr int kRaces = 200;  // of a contest of two days

using SetValue =
    std::function<void(const std::string& section, const std::string& key, const std::string& value)>;

// A race as it is saved: four lanes, of which each flew ten laps with its turns reported, and one cut.
inline void WriteRace(int race, const SetValue& set) {
  constexpr int kEvents = 36;
  const std::string section = "Race" + std::to_string(race);
  set(section, "Timestamp", "46347.3754861111, 11/21/2026 9:00:42 AM");
  set(section, "CurrentRace", std::to_string(race) + " (h=3, r=2)");
  set(section, "RaceMode", "3, AMA 2413");
  set(section, "Comments", "No comments");
  for (int lane = 1; lane <= 4; ++lane) {
    const std::string of_lane = section + "_Lane" + std::to_string(lane);
    set(of_lane, "NumEvents", std::to_string(kEvents));
    set(of_lane, "NumCuts", "1");
    set(of_lane, "NumLaps", "10");
    set(of_lane, "Placing", lane == 1 ? "First" : "1:02.35");
    set(of_lane, "Position", std::to_string(lane));
    set(of_lane, "Time", "62.35");
    set(of_lane, "Laps", "6.1,6.2,6.3,6.2,6.1,6.4,6.2,6.3,6.2,6.3,,,,");
    set(of_lane, "Cuts", "P2");
    int laps = 0;
    for (int event = 0; event < kEvents; ++event) {
      const std::string time = std::to_string(5000 + event * 1710 + lane * 13);
      const bool lap = event % 3 == 2 && laps < 10;
      if (lap) ++laps;
      const std::string what = lap ? ",4,L,TM," : event == 10 ? ",1,C,P2," : ",6,T,PY,";
      set(of_lane, "Event" + std::to_string(event),
          std::to_string(laps) + what + time + "," + (event == 10 ? time : "0"));
    }
  }
}

inline std::string ContestText(int races) {
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

// A folder of its own for each, below the temporary one, which is to be on a disk.
class BenchFolder {
 public:
  BenchFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "quorvane-bench-XXXXXX").string();
    folder_ = mkdtemp(pattern.data());
  }
  ~BenchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }
  BenchFolder(const BenchFolder&) = delete;
  BenchFolder& operator=(const BenchFolder&) = delete;

  std::string operator/(const std::string& name) const { return (folder_ / name).string(); }

 private:
  std::filesystem::path folder_;
};

// A contest of so many races in a file of its own.
class Contest {
 public:
  explicit Contest(std::int64_t races)
      : races_(static_cast<int>(races)), bytes_(ContestText(races_)), path_(folder_ / "contest.ini") {
    std::ofstream(path_, std::ios::binary) << bytes_;
  }

  int races() const { return races_; }
  const std::string& bytes() const { return bytes_; }
  const std::string& path() const { return path_; }

 private:
  const int races_;
  const std::string bytes_;
  const BenchFolder folder_;
  const std::string path_;
};

// The least that keeps the file whole through a power failure: a new one, on the disk, in the old one's
// place.
inline bool ReplaceBarely(const std::string& path, std::string_view bytes) {
  FileOps& files = SystemFiles();
  TempFile temp;
  FileStamp stamp;
  return !files.CreateTemp(path, temp) && !files.Write(temp, bytes) && !files.Sync(temp) &&
         !files.Close(temp, stamp) && !files.Rename(temp.path, path);
}

// Another race each time, as in a contest; the file grows a little with it.
inline void SaveRaces(benchmark::State& state, bool as_group) {
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
}

// Opens the project and goes to the first race that has not been run, the way the console starts.
template <typename Open>
void OpenProject(benchmark::State& state, Open open) {
  const Contest contest(state.range(0));
  for (auto _ : state) {
    if (open(contest.path()) != contest.races() + 1) state.SkipWithError("landed on another race");
  }
}

template <typename Timestamp>
int FirstRaceNotRun(Timestamp timestamp) {
  int race = 1;
  while (std::strtod(timestamp("Race" + std::to_string(race)).c_str(), nullptr) != 0) ++race;
  return race;
}

inline int OpenWithStore(const std::string& path) {
  ProjectStore store(path);
  return FirstRaceNotRun([&](const std::string& section) { return store.Read(section, "Timestamp", "0.0"); });
}

// A library that reads such files: Load, Get, Set and Save. Its save rewrites the whole file.
template <typename Library>
int OpenWith(const std::string& path) {
  Library file(path);
  return FirstRaceNotRun([&](const std::string& section) { return file.Get(section, "Timestamp"); });
}

template <typename Library>
void SaveWith(benchmark::State& state) {
  const Contest contest(state.range(0));
  Library file(contest.path());
  int race = contest.races();
  for (auto _ : state) {
    WriteRace(++race, [&](const auto& section, const auto& key, const auto& value) {
      file.Set(section, key, value);
    });
    if (!file.Save(contest.path())) state.SkipWithError("cannot write");
  }
}

// Enough saves for a mean, not so many that the disk changes its mood between two ways that are compared.
inline void DiskTimes(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(kRaces)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(10);
}

}  // namespace quorvane
