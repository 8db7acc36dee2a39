#include "records/radio_record.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "base/text.h"

namespace quorvane {
namespace {

constexpr std::int64_t kSilentAfter = 5000;  // ms
constexpr std::size_t kMostStations = 8;     // that are read
constexpr double kMost = 999999999;

std::int64_t Figure(const std::string& text) {
  return static_cast<std::int64_t>(std::clamp(LeadingNumber(text), 0.0, kMost));
}

}  // namespace

std::vector<RadioRecord::Station> SilentStations(const RadioRecord& radio) {
  std::vector<RadioRecord::Station> silent = radio.stations;
  std::erase_if(silent, [](const auto& station) { return station.longestSilence <= kSilentAfter; });
  return silent;
}

RadioRecord Together(RadioRecord before, const RadioRecord& after) {
  before.damaged += after.damaged;
  before.lively = before.lively || after.lively;
  for (const RadioRecord::Station& station : after.stations) {
    const auto same = std::ranges::find(before.stations, station.name, &RadioRecord::Station::name);
    if (same == before.stations.end()) {
      before.stations.push_back(station);
      continue;
    }
    same->frames += station.frames;
    same->longestSilence = std::max(same->longestSilence, station.longestSilence);
  }
  return before;
}

void KeepRadio(const RadioRecord& radio, const std::function<void(const char* key, const std::string&)>& set,
               bool whole) {
  if (whole) set("Lively", radio.lively ? "1" : "0");
  if (!whole && !radio.lively) return;
  if (radio.damaged > 0) set("FramesDamaged", std::to_string(radio.damaged));
  std::vector<std::string> silent;
  for (const auto& [name, frames, silence] : whole ? radio.stations : SilentStations(radio)) {
    silent.push_back(fmt::format("{};{};{}", name, silence, frames));
  }
  if (!silent.empty()) set("SilentStations", Join(silent, ','));
}

std::optional<RadioRecord> ReadRadio(const std::function<std::string(const char* key)>& value) {
  RadioRecord radio{.damaged = Figure(value("FramesDamaged")), .lively = value("Lively") != "0"};
  for (const std::string& station : Split(value("SilentStations"), ',')) {
    const std::vector<std::string> fields = Split(station, ';');
    if (fields.size() != 3 || radio.stations.size() >= kMostStations) continue;
    radio.stations.push_back({fields[0], Figure(fields[2]), Figure(fields[1])});
  }
  return radio.damaged == 0 && radio.stations.empty() ? std::nullopt : std::optional(std::move(radio));
}

std::string RadioText(const RadioRecord& radio) {
  std::string silent;
  for (const auto& [name, frames, silence] : SilentStations(radio)) {
    silent += fmt::format("{}{} ({})", silent.empty() ? "" : ", ", name,
                          frames == 0 ? "not heard in the race" : FormatRatio(silence, 1000, 1) + " s");
  }
  return fmt::format("{} frame{} damaged; silent for more than 5 s: {}", radio.damaged,
                     radio.damaged == 1 ? "" : "s", silent.empty() ? "no station" : silent);
}

}  // namespace quorvane
