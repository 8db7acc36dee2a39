#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "results/race_records.h"

namespace quorvane {

// A project file as a test writes it down: what is not set is missing.
class Book {
 public:
  Book& Set(const std::string& section, const std::string& key, const std::string& value) {
    values_[{section, key}] = value;
    return *this;
  }

  // A race or a refly that has run, all lanes empty.
  Book& Flight(const std::string& section, int race, int mode = 2) {
    Set(section, "Timestamp", "46347.375, 11/21/2026 9:00:00 AM");
    Set(section, "CurrentRace", std::to_string(race) + " (h=" + std::to_string(race) + ", r=1)");
    return Set(section, "RaceMode", std::to_string(mode) + ", as it was");
  }
  // A lane's log; entries are "1,4,L,TM,6000,0".
  Book& Lane(const std::string& section, int lane, const std::vector<std::string>& events) {
    const std::string name = section + "_Lane" + std::to_string(lane);
    Set(name, "NumEvents", std::to_string(events.size()));
    for (std::size_t i = 0; i < events.size(); ++i) Set(name, "Event" + std::to_string(i), events[i]);
    return *this;
  }
  Book& Placed(const std::string& section, int lane, const std::string& placing) {
    return Set(section + "_Lane" + std::to_string(lane), "Placing", placing);
  }

  ProjectSource Source() const {
    return {[this](const std::string& section, const std::string& key, const std::string& fallback) {
              const auto found = values_.find({section, key});
              return found == values_.end() ? fallback : found->second;
            },
            "folder/cup.ini"};
  }
  ContestRecord Contest() const { return ReadContest(Source()); }

 private:
  std::map<std::pair<std::string, std::string>, std::string> values_;
};

inline std::string Lap(int count, std::int32_t time) {
  return std::to_string(count) + ",4,L,TM," + std::to_string(time) + ",0";
}
inline std::string Cut(int lap, int pylon, std::int32_t time) {
  return std::to_string(lap) + "," + std::to_string(pylon - 1) + ",C,P" + std::to_string(pylon) + "," +
         std::to_string(time) + "," + std::to_string(time);
}

// Laps first..last, one every `split` ms, the first at `split`.
inline std::vector<std::string> Laps(int last, std::int32_t split) {
  std::vector<std::string> events;
  for (int i = 1; i <= last; ++i) events.push_back(Lap(i, split * i));
  return events;
}
inline std::vector<std::string> With(std::vector<std::string> events, const std::vector<std::string>& more) {
  events.insert(events.end(), more.begin(), more.end());
  return events;
}

}  // namespace quorvane
