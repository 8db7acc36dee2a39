#pragma once

#include <cctype>
#include <cstdint>
#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "forms/event_clock.h"
#include "forms/forms.h"
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
  int broadcasts = 0;
  std::vector<int> orders;
  DialogAnswer answer;
  DialogBox asked;
  std::function<void()> whileAsking;
  std::map<std::pair<std::string, std::string>, std::string> values;

  std::int32_t RaceTime() const override { return raceTime; }
  bool ClockRunning() const override { return clockRunning; }
  void IssueRaceEvent(bool) override { IssueLapEvent(); }
  void IssueLapEvent() override {
    if (failing) throw OverflowError();
    ++broadcasts;
  }
  void SetOrder(int place) override { orders.push_back(place); }
  DialogAnswer Ask(const DialogBox& box) override {
    asked = box;
    if (whileAsking) whileAsking();
    return answer;
  }
  std::string LaneColorName(int lane) const override { return " Lane " + std::to_string(lane); }
  Color LaneLowColor(int) const override { return kRed; }
  Color LaneHighColor(int) const override { return kGreen; }
  std::string GetProjectValue(const std::string& section, const std::string& key,
                              const std::string& fallback) override {
    const auto found = values.find({section, key});
    return found == values.end() ? fallback : found->second;
  }
  void SetProjectValue(const std::string& section, const std::string& key,
                       const std::string& value) override {
    values[{section, key}] = value;
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
  explicit LaneRig(const std::string& script, bool fai = false) : LaneRig() {
    race.IsFaiMode = fai;
    Start();
    Play(script);
  }

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
  void CutAt(std::int32_t t, const std::string& code, int source) {
    At(t);
    lane.DoCut(code, source, t);
  }
  // "9L C2+3999 T": nine laps, then, 3999 ms later, a cut that station 2 reports, then a turn; 7 s from one
  // to the next unless it says otherwise. D is a double cut of a station, W withdraws a station's cuts, P is
  // a cut of the operator. Returns the time of the last.
  std::int32_t Play(const std::string& script) {
    std::istringstream tokens(script);
    for (std::string text; tokens >> text;) {
      std::istringstream token(text);
      const auto number = [&](bool given, int otherwise) {
        if (given) token >> otherwise;
        return otherwise;
      };
      const int times = number(std::isdigit(token.peek()) != 0, 1);
      const char kind = static_cast<char>(token.get());
      const int source = number(std::isdigit(token.peek()) != 0, 0);
      const int after = number(token.peek() == '+', 7000);
      for (int i = 0; i < times; ++i) {
        const std::int32_t now = owner.raceTime + after;
        if (kind == 'L') LapAt(now);
        if (kind == 'C') CutAt(now, "1o", source);
        if (kind == 'D') CutAt(now, "11", source);
        if (kind == 'W') CutAt(now, "oo", source);
        At(now);
        if (kind == 'P') lane.cmdCut_Click();
        if (kind == 'T') lane.DoTurn(4, now, 80);
      }
    }
    return owner.raceTime;
  }
  // The lane's result at the end of the race.
  std::int32_t Final() {
    lane.FinalizeRace();
    return lane.GetFinal();
  }

  std::string Kinds() const {
    std::string kinds;
    for (int i = 0; i < lane.EventCount(); ++i) {
      kinds += (i > 0 ? " " : "") + lane.Events()[i].Kind + std::to_string(lane.Events()[i].Count);
    }
    return kinds;
  }
  std::string Cell(int i) const { return lane.lblLap[i].Visible() ? lane.lblLap[i].Caption() : "hidden"; }
  // Laps and light, as a frame of ours would say.
  std::pair<int, int> Info() const {
    std::uint8_t laps = 99;
    std::uint8_t lit = 99;
    std::array<std::int16_t, 4> cuts = {};
    lane.GetInfo(laps, lit, cuts);
    return {laps, lit};
  }
};

// A lane as it is kept and as its panel shows it, one item an entry. `plain`: of the cells only their texts.
inline std::vector<std::string> Shown(const frmLane& lane, bool plain = false) {
  std::vector<std::string> shown = {lane.lblStatus.Caption() + "/" + lane.lblStatus.Tag()};
  for (int i = 0; i < lane.EventCount(); ++i) shown.push_back(EventText(lane.Events()[i]));
  for (const int n : lane.PylonCuts()) shown.push_back(std::to_string(n));
  for (const int n : {lane.FinalTime(), std::int32_t{lane.Laps()}, std::int32_t{lane.LapTarget()},
                      std::int32_t{lane.CutCount()}, std::int32_t{lane.CutsBeforeFinish()}}) {
    shown.push_back(std::to_string(n));
  }
  for (const Control* cell : lane.lblLap) shown.push_back(cell->Caption());
  for (const Control& control : lane.Controls()) {
    const bool mark = control.Name().starts_with("lblCut");
    const bool off = control.Kind() == ControlKind::Timer ? !control.Enabled() : !control.Visible();
    if (off || (plain && !mark)) continue;
    shown.push_back(control.Name() + " " + control.Caption() + control.Text() + " " +
                    control.BackColor().Name() + (control.ForeColor() == kRed ? " red " : " ") +
                    (mark ? control.Tag() + " " + control.Anchor()->Name() : ""));
  }
  return shown;
}

}  // namespace quorvane
