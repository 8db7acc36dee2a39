#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

#include "field/compare.h"
#include "field/line.h"

namespace quorvane {

// What a console makes of the frames, in as few lines as will do: the receive path with its double discard,
// the race clock set by the starter, laps, cuts, turns and finals. It is no second console; it is here so
// that the field's predictions are held against an account of their own.
class PlainConsole {
 public:
  void Receive(const field::Chunk& chunk) {
    now_ = chunk.DueMs();
    for (const std::uint8_t byte : chunk.bytes) {
      if (skip_ > 0) {
        --skip_;
      } else {
        buffer_.push_back(byte);
        if (buffer_.size() >= 36) ReadFrame();
      }
    }
  }

  const std::vector<field::ToldHeat>& heats() const { return heats_; }
  int laps_outside_races() const { return laps_outside_races_; }
  int resets() const { return resets_; }

 private:
  struct Lane {
    bool flies = false;
    int time_base = 0;
    int last_lap = 0;
    int cuts_before_finish = 0;
    std::int64_t refuse_laps_until = 0;
    std::int64_t refuse_turns_until = 0;
    field::ToldLane told;
  };

  int RaceTime() const { return static_cast<int>(now_ - clock_zero_) + clock_offset_; }

  void ReadFrame() {
    std::uint8_t check = 0;
    for (std::size_t i = 3; i < 36; ++i) check ^= buffer_[i];
    const bool sync = buffer_[0] == 0x55 && buffer_[1] == 0xAA;
    if (sync && buffer_[2] == check) {
      std::copy_n(buffer_.begin(), 36, frame_.begin());
      buffer_.clear();
      Process();
      return;
    }
    const auto found = std::find(buffer_.begin() + 1, buffer_.end(), 0x55);
    skip_ = 36 - static_cast<int>(buffer_.end() - found);
    buffer_.clear();
  }

  void Process() {
    const int clock = frame_[7] * 65536 + frame_[8] * 256 + frame_[9];
    const int from = frame_[5];
    const int to = frame_[4];
    corrected_ = clock - frame_[33] * (from == 255 ? 2 : 1);
    if (to == 254) return;
    if (from == 4 || (from == 255 && to == 4)) Laps();
    if (from == 0 && to == 6) Turns();
    if (from == 3) Starter();
  }

  int Target(const Lane& lane) const { return lane.cuts_before_finish > 0 && mode_ < 4 ? 11 : 10; }

  bool IsFinished(const Lane& lane) const {
    if (!lane.flies) return true;
    const int since = RaceTime() + lane.time_base - lane.last_lap;
    const bool done = static_cast<int>(lane.told.laps.size()) >= Target(lane) || lane.told.cuts.size() >= 2;
    return (since >= 10000 && done) || since >= 30001;
  }

  void Laps() {
    for (std::size_t i = 0; i < 4; ++i) {
      Lane& lane = lanes_[i];
      const bool ahead = frame_[29 + i] > lane.told.laps.size();
      if (frame_[24 + i] == 0 || !ahead || IsFinished(lane) || now_ < lane.refuse_laps_until) continue;
      if (!active_) ++laps_outside_races_;
      const int time = RaceTime() + lane.time_base;
      if (time < 5000) continue;
      lane.last_lap = time;
      lane.told.laps.push_back(time);
      lane.refuse_laps_until = now_ + frame_[24 + i] * 8;
    }
  }

  void Turns() {
    for (std::size_t i = 0; i < 4; ++i) {
      Lane& lane = lanes_[i];
      if (frame_[24 + i] == 0 || IsFinished(lane) || now_ < lane.refuse_turns_until) continue;
      lane.refuse_turns_until = now_ + frame_[24 + i] * 8;
      lane.refuse_laps_until = 0;
      lane.told.turns = *lane.told.turns + 1;
    }
  }

  void Starter() {
    const bool holding = (frame_[18] & 16) != 0;
    const bool running = frame_[3] != 0;
    if (!holding) mode_ = frame_[28];
    if (running) {
      if (corrected_ < 60000) {
        clock_zero_ = now_;
        clock_offset_ = corrected_;
      }
      if (!active_) BeginRace();
    } else if (active_) {
      if (corrected_ <= 65000) {
        ++resets_;
      } else {
        SaveRace();
      }
    }
    active_ = running;
    if (active_ && !holding && corrected_ >= 60000) Cuts();
    std::copy_n(frame_.begin() + 11, 4, last_cuts_.begin());
  }

  void Cuts() {
    for (std::size_t i = 0; i < 4; ++i) {
      for (int pylon = 1; pylon <= 3; ++pylon) {
        const int now = (frame_[11 + i] >> (2 * (pylon - 1))) & 3;
        const int before = (last_cuts_[i] >> (2 * (pylon - 1))) & 3;
        if (now == before) continue;
        std::vector<field::ToldCut>& cuts = lanes_[i].told.cuts;
        int have = static_cast<int>(
            std::count_if(cuts.begin(), cuts.end(), [&](auto& c) { return c.pylon == pylon; }));
        for (; have < (now == 3 ? 2 : now == 0 ? 0 : 1); ++have) {
          cuts.push_back({pylon, RaceTime() + lanes_[i].time_base});
          if (static_cast<int>(lanes_[i].told.laps.size()) < Target(lanes_[i]))
            ++lanes_[i].cuts_before_finish;
        }
      }
    }
  }

  void BeginRace() {
    static constexpr int kLate[3][4] = {{0, 1, 2, -1}, {2, 0, 1, -1}, {1, 2, 0, -1}};
    clock_zero_ = now_;
    for (std::size_t i = 0; i < 4; ++i) {
      const int late = mode_ < 4 ? 0 : kLate[mode_ - 4][i];
      lanes_[i] = {};
      lanes_[i].flies = late >= 0;
      lanes_[i].time_base = corrected_ - late * 1000 - 60000;
      lanes_[i].told.lane = static_cast<int>(i) + 1;
      lanes_[i].told.turns = 0;
    }
  }

  void SaveRace() {
    static constexpr const char* kPlaces[] = {"First", "Second", "Third", "Fourth"};
    field::ToldHeat heat;
    heat.heat = static_cast<int>(heats_.size()) + 1;
    std::vector<std::size_t> order = {0, 1, 2, 3};
    for (Lane& lane : lanes_) {
      const auto target = static_cast<std::size_t>(Target(lane));
      const bool finished = lane.told.laps.size() >= target && lane.cuts_before_finish < 2;
      lane.told.final_time = finished ? lane.told.laps[target - 1] : field::kNoResult;
      lane.told.place = "DNF";
    }
    const auto final_of = [this](std::size_t i) { return lanes_[i].told.final_time; };
    std::stable_sort(order.begin(), order.end(), [&](auto a, auto b) { return final_of(a) < final_of(b); });
    for (std::size_t k = 0; k < 4; ++k) {
      if (final_of(order[k]) < field::kNoResult) lanes_[order[k]].told.place = kPlaces[k];
    }
    for (Lane& lane : lanes_) {
      heat.lanes.push_back(lane.told);
      lane.told.laps.clear();
    }
    heats_.push_back(heat);
  }

  std::vector<std::uint8_t> buffer_;
  std::array<std::uint8_t, 36> frame_{};
  std::array<std::uint8_t, 4> last_cuts_{};
  std::array<Lane, 4> lanes_{};
  std::vector<field::ToldHeat> heats_;
  std::int64_t now_ = 0;
  std::int64_t clock_zero_ = 0;
  int clock_offset_ = 0;
  int corrected_ = 0;
  int skip_ = 0;
  int mode_ = 2;
  int laps_outside_races_ = 0;
  int resets_ = 0;
  bool active_ = false;
};

}  // namespace quorvane
