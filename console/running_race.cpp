#include "console/running_race.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "base/text.h"
#include "records/race_record.h"

namespace quorvane {
namespace {

// Each value with its key, once for writing and once for reading.
template <typename Race, typename Use>
void Values(Race& race, const Use& use) {
  use("Race", race.number);
  use("Refly", race.refly);
  use("Heat", race.heat);
  use("Round", race.round);
  use("RaceMode", race.mode);
  use("ByHand", race.byHand);
  use("SixtySecondCount", race.sixtySecondCount);
  use("Done", race.done);
  use("LaneStart", race.starter.laneStart);
  use("StarterRan", race.starter.ran);
  for (std::size_t lane = 0; lane < race.starter.cuts.size(); ++lane) {
    use(fmt::format("StarterCuts{}", lane + 1), race.starter.cuts[lane]);
  }
  use("Comments", race.comments);
  use("Recovered", race.recovered);
  use("Amends", race.amends);
  use("Version", race.version);
}

template <typename At, typename Use>
void ValuesAt(At& at, const Use& use) {
  use("RaceTime", at.raceTime);
  use("UtcMs", at.computer.utcMs);
  use("Boot", at.computer.boot);
  use("SinceBootMs", at.computer.sinceBootMs);
}

auto Writing(ProfileFile& file) {
  return [&file]<typename Value>(const std::string& key, const Value& value) {
    constexpr const char* kForm = std::is_same_v<Value, std::string> ? "{}" : "{:d}";
    const std::string text = fmt::format(fmt::runtime(kForm), value);
    if (!text.empty()) file.Write(kRunningSection, key, text);
  };
}

// As far as the type and the precision of the file's numbers go.
template <typename Number>
void Take(const std::string& text, Number& number) {
  using Limits = std::numeric_limits<Number>;
  constexpr double kExact = 9007199254740992.0;
  const double highest = std::min(static_cast<double>(Limits::max()), kExact);
  const double lowest = std::max(static_cast<double>(Limits::min()), -kExact);
  number = static_cast<Number>(std::clamp(std::nearbyint(LeadingNumber(text)), lowest, highest));
}
void Take(const std::string& text, bool& flag) {
  flag = text == "1";
}
void Take(const std::string& text, std::string& value) {
  value = text;
}

}  // namespace

void WriteRunning(ProfileFile& file, const RunningRace& race, const KeptAt& at) {
  Values(race, Writing(file));
  WriteMoment(file, at);
}

void WriteMoment(ProfileFile& file, const KeptAt& at) {
  ValuesAt(at, Writing(file));
  if (at.radio) KeepRadio(*at.radio, Writing(file), true);
}

ReadValue KeptRace::Reader() const {
  return [this](const std::string& section, const std::string& key, const std::string& fallback) {
    return file.Read(section, key).value_or(fallback);
  };
}

std::optional<KeptRace> ReadRunning(const std::string& text) {
  KeptRace kept{{}, {}, ProfileFile(text)};
  if (!kept.file.Read(kRunningSection, "Race")) return std::nullopt;
  const auto use = [&](const std::string& key, auto& value) {
    if (const auto found = kept.file.Read(kRunningSection, key)) Take(*found, value);
  };
  Values(kept.race, use);
  ValuesAt(kept.at, use);
  kept.at.radio =
      ReadRadio([&](const char* key) { return kept.file.Read(kRunningSection, key).value_or(""); });
  kept.race.number = std::clamp(kept.race.number, 1, kLastRace);
  kept.race.mode = std::clamp(kept.race.mode, 1, 6);
  return kept;
}

std::string AgoText(std::int64_t ms) {
  struct Unit {
    const char* name;
    std::int64_t ms;
  };
  static constexpr std::array kUnits = {Unit{"day", 86400000}, Unit{"hour", 3600000}, Unit{"minute", 60000},
                                        Unit{"second", 1000}};
  if (ms < 0) return "some time ago";
  const auto unit = std::ranges::find_if(kUnits, [&](const Unit& u) { return ms >= u.ms; });
  if (unit == kUnits.end()) return "just now";
  const std::int64_t number = ms / unit->ms;
  return fmt::format("{} {}{} ago", number, unit->name, number == 1 ? "" : "s");
}

}  // namespace quorvane
