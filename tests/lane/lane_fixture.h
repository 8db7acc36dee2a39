#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "common/event_clock.h"
#include "common/forms.h"
#include "lane/frm_lane.h"

namespace quorvane {

struct FakeClock : EventClock {
  std::int64_t now = 0;
  std::int64_t Now() const override { return now; }
};

// The race as a lane sees it, with the project file as a map.
struct FakeOwner : LaneOwner {
  std::int32_t raceTime = 0;
  bool clockRunning = true;
  bool failing = false;  // broadcasts raise an error
  int lapEvents = 0;
  int raceEvents = 0;
  std::vector<int> orders;
  DialogAnswer answer;
  DialogBox asked;
  std::function<void()> whileAsking;
  std::map<std::pair<std::string, std::string>, std::string> values;

  std::int32_t RaceTime() const override { return raceTime; }
  bool ClockRunning() const override { return clockRunning; }
  void IssueLapEvent() override { Count(lapEvents); }
  void IssueRaceEvent(bool) override { Count(raceEvents); }
  void SetOrder(int place) override { orders.push_back(place); }
  DialogAnswer Ask(const DialogBox& box) override {
    asked = box;
    if (whileAsking) whileAsking();
    return answer;
  }
  std::string LaneColorName(int lane) const override { return " Lane " + std::to_string(lane); }
  Color LaneLowColor(int lane) const override { return Color::Rgb(static_cast<std::uint32_t>(lane)); }
  Color LaneHighColor(int) const override { return kButtonFace; }
  std::string GetProjectValue(const std::string& section, const std::string& key,
                              const std::string& fallback) override {
    const auto found = values.find({section, key});
    return found == values.end() ? fallback : found->second;
  }
  void SetProjectValue(const std::string& section, const std::string& key,
                       const std::string& value) override {
    values[{section, key}] = value;
  }

 private:
  void Count(int& events) const {
    if (failing) throw OverflowError();
    ++events;
  }
};

// A lane with its race on a clock that the test sets.
struct LaneRig {
  FakeClock clock;
  Forms forms{clock};
  RaceState race;
  FakeOwner owner;
  frmLane lane{forms, race, owner, 1};

  LaneRig() { lane.Form_Load(); }

  // A race on the way whose race time is the race clock.
  void Start() {
    lane.InitializeRace(60000);
    race.RaceActive = true;
    race.RaceDone = false;
    At(0);
  }

  // The race clock reads t; a timer that is due by then has fired.
  void At(std::int32_t t) {
    clock.now += t > owner.raceTime ? t - owner.raceTime : 0;
    owner.raceTime = t;
    while (forms.Timers().NextDue().value_or(clock.now + 1) <= clock.now) {
      Control* timer = forms.Timers().NextTimer();
      forms.Timers().Arm(*timer, clock.now);
      timer->onTimer();
    }
  }

  void LapAt(std::int32_t t) {
    At(t);
    lane.DoLap(t, 4000);
  }
  // So many laps from `first` on, 7 s apart; returns the time of the last.
  std::int32_t Fly(int laps, std::int32_t first) {
    for (int i = 0; i < laps; ++i) LapAt(first + 7000 * i);
    return first + 7000 * (laps - 1);
  }
  void CutAt(std::int32_t t, const std::string& code, int source) {
    At(t);
    lane.DoCut(code, source, t);
  }
  // The lane's result after it has been finished for as long as it takes.
  std::int32_t Final() {
    lane.FinalizeRace();
    std::int32_t final = 0;
    lane.GetFinal(final);
    return final;
  }

  std::string Kinds() const {
    std::string kinds;
    for (int i = 0; i < lane.EventCount(); ++i) {
      const LaneEvent& event = lane.Events()[i];
      kinds += (i > 0 ? " " : "") + event.Kind + std::to_string(event.Count);
    }
    return kinds;
  }
};

}  // namespace quorvane
