#pragma once

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "forms/forms.h"
#include "forms/platform.h"
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
  std::string calls;     // what the lane has asked for
  DialogAnswer answer;
  std::vector<unsigned> byHand;
  std::function<void()> whileAsking;
  std::map<std::pair<std::string, std::string>, std::string> values;

  void Call(const std::string& call) {
    calls += "  calls " + call + "\n";
    if (failing) throw OverflowError();
  }
  std::int32_t RaceTime() const override { return raceTime; }
  bool ClockRunning() const override { return clockRunning; }
  void IssueRaceEvent() override { Call("IssueRaceEvent"); }
  void IssueLapEvent() override { Call("IssueLapEvent"); }
  void SetOrder(int place) override { Call("SetOrder " + std::to_string(place)); }
  void TakePlace(int, int place) override { Call("TakePlace " + std::to_string(place)); }
  void ResultChanged() override { Call("ResultChanged"); }
  void EnteredByHand(int, const std::vector<unsigned>& serials) override { byHand = serials; }
  void ShowLog(int) override {}
  void Corrected(int, const Correction& c) override { Call("Corrected " + CorrectionText(c)); }
  std::string Timestamp() const override { return "46347.375, 11/21/2026 9:00:00 AM"; }
  DialogAnswer Ask(const DialogBox& box) override {
    Call("Ask " + box.title + ", " + box.text + ", \"" + box.preset + "\"");
    if (whileAsking) whileAsking();
    return answer;
  }
  LaneMarking Marking(int lane) const override { return {" Lane " + std::to_string(lane), kRed, kGreen}; }
  ReadValue read = [this](const std::string& section, const std::string& key, const std::string& fallback) {
    const auto found = values.find({section, key});
    return found == values.end() ? fallback : found->second;
  };
  KeepValue keep = [this](const std::string& section, const std::string& key, const std::string& value) {
    values[{section, key}] = value;
  };
};

// A lane with its race on a clock that the test sets.
struct LaneRig {
  FakeClock clock;
  Forms forms{clock};
  RaceState race;
  FakeOwner owner;
  frmLane lane{forms, race, owner, 1};

  LaneLog::Taken taken;

  LaneRig() { lane.InitializeRace(0); }

  // A race on the way whose race time is the race clock.
  void Start() {
    race.RaceActive = false;
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

  // One step, at the race clock's time: a procedure of the lane, or something that happens to its race. `n`
  // is its number, `text` what it is about, both as the step needs them.
  void Do(const std::string& step, int n = 0, const std::string& text = {}) {
    const std::int32_t now = owner.raceTime;
    const std::map<std::string, std::function<void()>> steps = {
        {"L", [&] { lane.DoLap(now, n == 0 ? 4000 : n); }},
        {"C", [&] { lane.DoCut("1o", n, now); }},
        {"D", [&] { lane.DoCut("11", n, now); }},
        {"W", [&] { lane.DoCut("oo", n, now); }},
        {"code", [&] { lane.DoCut(text, n, now); }},
        {"T", [&] { lane.DoTurn(4, now, n == 0 ? 80 : n); }},
        {"lap", [&] { lane.cmdLap.onClick(); }},
        {"cut", [&] { lane.cmdCut.onClick(); }},
        {"turn", [&] { lane.cmdTurn.onClick(); }},
        {"key", [&] { lane.cntrCut(n); }},
        {"strike", [&] { taken = lane.Strike(lane.Events()[n].Serial).value(); }},
        {"undo", [&] { taken = lane.Strike(owner.byHand.back(), "undone").value(); }},
        {"redo", [&] { lane.PutBack(taken); }},
        {"insert", [&] { lane.InsertLap(n); }},
        {"move", [&] { lane.MoveCut(lane.Events()[n / 10].Serial, n % 10); }},
        {"station", [&] { lane.DoStationLap(static_cast<std::uint8_t>(n), now, 400); }},
        {"keep", [&] { lane.KeepRunning("Running", owner.keep); }},
        {"resume", [&] { lane.ResumeRace("Running", owner.read); }},
        {"tick", [&] { lane.UpdateLapTime(now); }},
        {"at", [&] { At(n); }},
        {"adjust", [&] { lane.AdjustTime(n); }},
        {"join", [&] { lane.JoinRace(); }},
        {"start", [&] { Start(); }},
        {"init", [&] { lane.InitializeRace(n); }},
        {"active", [&] { race.RaceActive = n != 0; }},
        {"done", [&] { race.RaceDone = n != 0; }},
        {"manual", [&] { race.ManualStart = n != 0; }},
        {"fai", [&] { race.IsFaiMode = n != 0; }},
        {"clock", [&] { owner.clockRunning = n != 0; }},
        {"failing", [&] { owner.failing = n != 0; }},
        {"link", [&] { race.CommActive = n != 0, lane.FollowLink(); }},
        {"novice", [&] { lane.chkNovice.SetValue(n); }},
        {"final", [&] { lane.FinalizeRace(), lane.GetFinal(); }},
        {"order", [&] { lane.LaneOrder(n); }},
        {"offer", [&] { lane.OfferPlace(n); }},
        {"place", [&] { lane.cmdOrder.onClick(); }},
        {"giveup", [&] { lane.GiveUpPlace(); }},
        {"rank", [&] { lane.Rank(n); }},
        {"cancel", [&] { owner.answer = {}, lane.lblStatus.onClick(); }},
        {"status", [&] { Answer(text), lane.lblStatus.onClick(); }},
        {"meanwhile", [&] { owner.whileAsking = [this] { lane.InitializeRace(60000); }; }},
        {"hover", [&] { lane.lblCut[n].onHover(); }},
        {"leave", [&] { lane.fraLane.onHover(); }},
        {"parent", [&] { lane.SetFormParent(lane.fraLane); }},
        {"save", [&] { lane.SaveLane("Race" + std::to_string(n), owner.keep); }},
        {"load", [&] { lane.LoadLane("Race" + std::to_string(n), owner.read); }},
        {"set", [&] { Set(text); }}};
    steps.at(step)();
  }
  void Answer(const std::string& text) { owner.answer = {DialogAnswer::Word::Text, text}; }
  void Set(const std::string& text) {  // "section/key=value"
    const std::size_t key = text.find('/'), value = text.find('=');
    owner.values[{text.substr(0, key), text.substr(key + 1, value - key - 1)}] = text.substr(value + 1);
  }

  // "9L C2+3999 set:a/b=c": nine times L, seven seconds after the step before it each; C with the number 2,
  // 3999 ms after it; set, at once, with a text in which "~" is a blank. Capitals come after seven seconds
  // unless they say otherwise, the others at once.
  void Play(const std::string& script) {
    std::istringstream tokens(script);
    for (std::string token; tokens >> token;) {
      const std::string text = token.find(':') == std::string::npos ? "" : token.substr(token.find(':') + 1);
      std::istringstream in(token.substr(0, token.find(':')));
      int times = 1;
      if (std::isdigit(in.peek()) != 0) in >> times;
      std::string step;
      while (std::isalpha(in.peek()) != 0) step += static_cast<char>(in.get());
      int n = 0;
      int after = std::isupper(step[0]) != 0 ? 7000 : 0;
      if (std::isdigit(in.peek()) != 0 || in.peek() == '-') in >> n;
      if (in.peek() == '+') in >> after;
      for (int i = 0; i < times; ++i) {
        if (after != 0) At(owner.raceTime + after);
        std::string blanks = text;
        std::replace(blanks.begin(), blanks.end(), '~', ' ');
        Do(step, n, blanks);
      }
    }
  }

  // What is kept of the lane and what its panel shows, by name. `kept`: only what comes back from a file.
  std::map<std::string, std::string> Look(bool kept = false) const {
    std::map<std::string, std::string> look;
    const auto numbers = [](const auto&... each) { return ((std::to_string(each) + " ") + ...); };
    const auto& cuts = lane.Counts().pylonCuts;
    look["counts"] =
        numbers(lane.Counts().laps, lane.Counts().lapTarget, lane.Counts().cutCount,
                lane.Counts().cutsBeforeFinish, lane.Counts().finalTime, cuts[0], cuts[1], cuts[2], cuts[3]);
    for (int i = 0; i < lane.EventCount(); ++i)
      look["log " + std::to_string(i)] = EventText(lane.Events()[i]);
    for (const Control& c : lane.Controls()) {
      const bool mark = c.Name().starts_with("lblCut") && c.Visible();
      if (kept && !mark && c.Name() != "lblStatus" && !c.Name().starts_with("lblLap")) continue;
      std::string& text = look[c.Name()];
      text = "\"" + c.Caption() + c.Text() + "\" " + c.Tag();
      if (c.Anchor() != nullptr) text += " at " + c.Anchor()->Name();
      if (kept && !mark) continue;
      if (c.ForeColor() != kButtonText) text += " " + c.ForeColor().Name();
      text += " on " + c.BackColor().Name() + (c.Visible() ? "" : ", hidden") + (c.Enabled() ? "" : ", off") +
              (c.Interval() == 0 ? "" : " " + std::to_string(c.Interval()));
    }
    if (kept) return look;
    int lapFrom = 0;  // that a station must have counted
    while (lapFrom < 255 && !lane.CanDoLap(static_cast<std::uint8_t>(lapFrom))) ++lapFrom;
    look["radio"] = numbers(lane.Counts().laps, lane.LightLeft()) + "laps from " + std::to_string(lapFrom) +
                    (lane.CanDoTurn() ? ", turns" : "") + (lane.IsFinished() ? ", finished" : "");
    const auto& missed = lane.MissedPylonTimes();
    look["variables"] = numbers(lane.TimeBase(), lane.LastLapTime(), lane.MissedPylon(), missed[0], missed[1],
                                missed[2], lane.Turns(), lane.TurnTimerEnd()) +
                        (lane.NeedsCutDisplay() ? "cuts to display " : "") + lane.Status() + "/" +
                        lane.Position() + " " + std::to_string(lane.PlaceByHand());
    return look;
  }
};

}  // namespace quorvane
