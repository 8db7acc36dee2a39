// The console as controller, seen from the stations' side of the radio.

#include <gtest/gtest.h>

#include "field/plan.h"
#include "tests/support/field_link.h"

namespace quorvane {
namespace {

using Word = DialogAnswer::Word;

constexpr int kJudge1 = 0, kJudge2 = 1, kJudge3 = 2, kPylonBox = 6, kDisplay = 7;

struct Controller {
  explicit Controller(field::FieldOptions options) : rig(true), link(rig, Controlled(options)) {
    rig.Load();
    rig.Click("frmJudge.lblComm");
    rig.Answer(Word::Yes);
    rig.Click("frmSerialPort.chkSystemController");
  }
  static field::FieldOptions Controlled(field::FieldOptions options) {
    options.controlled = true;
    return options;
  }

  // What the hands do in a heat, at its times on the console clock.
  void Fly(const field::HeatPlan& plan, bool count) {
    static const char* const kCutKeys[] = {"F5",  "F6",  "F7", "F8", "F9", "F10",
                                           "F11", "F12", "7",  "8",  "9",  "0"};
    const std::int64_t start = rig.platform.ClockMs() + (count ? 60000 : 0);
    std::multimap<std::int64_t, std::string> keys;
    for (std::size_t i = 0; i < plan.lanes.size(); ++i) {
      const field::LanePlan& lane = plan.lanes[i];
      for (const int lap : lane.laps) keys.emplace(start + lane.stagger + lap, "F" + std::to_string(i + 1));
      int pause = 0;  // a second cut at the same pylon counts only a while after the first
      for (const field::PlannedCut& cut : lane.cuts) {
        keys.emplace(start + lane.stagger + cut.time + pause,
                     kCutKeys[4 * (cut.pylon - 1) + static_cast<int>(i)]);
        pause = 3100;
      }
    }
    rig.Key("F1");
    for (const auto& [ms, key] : keys) {
      link.RunUntil(ms);
      rig.Key(key);
    }
    while (!rig.race().RaceDone) link.RunUntil(rig.platform.ClockMs() + 100);
    rig.Click("frmJudge.cmdSave");
  }
  bool Red(int station) { return rig.program.link().lblStation[station].ForeColor() == kRed; }
  std::string Age(int station) { return rig.program.link().lblAge[station].Caption(); }
  std::int64_t FramesFrom(int station) { return rig.program.link().Counters().FramesFrom(station); }

  ConsoleRig rig;
  FieldLink link;
};

TEST(Controller, TheStationsSeeTheRacesThatTheProjectKeeps) {
  for (const auto& [mode, count] : {std::pair{1, true}, {2, false}, {4, false}, {5, true}}) {
    SCOPED_TRACE("mode " + std::to_string(mode));
    Controller c({.heats = 4});
    if (count) c.rig.Click("frmJudge.chkSixtySecondCount");
    c.rig.program.door().Enter(
        {.kind = EventKind::Choose, .target = "frmJudge.cboRaceMode", .number = mode == 1 ? 0 : mode});
    std::vector<field::ToldHeat> seen, kept;
    for (int heat = 1; heat <= 4; ++heat) {
      c.link.RunUntil(c.rig.platform.ClockMs() + 5000);
      const std::int64_t start = c.rig.platform.ClockMs();
      const field::HeatPlan plan = field::PlanHeat(31, heat, mode, false);
      c.Fly(plan, count);
      const auto results = c.link.field.TakeResults();
      ASSERT_EQ(results.size(), 1U);
      const field::HeatResult& race = results[0];
      EXPECT_EQ(race.mode, mode);
      EXPECT_EQ(race.count, count);
      EXPECT_EQ(race.followed->from, start);
      EXPECT_EQ(race.followed->to, c.rig.platform.ClockMs());
      EXPECT_EQ(race.followed->first_clock, count ? 0 : 59999);
      EXPECT_LE(race.followed->drift, count ? 60 : 1);  // the countdown has a head start of 60 ms
      for (const field::LaneResult& lane : race.lanes) {
        EXPECT_EQ(lane.expected.size(), plan.lanes[static_cast<std::size_t>(lane.lane - 1)].laps.size());
        EXPECT_EQ(lane.lights, std::vector<int>(lane.expected.size(), 255));
      }
      seen.push_back(ToldByField(race));
      kept.push_back(ToldByProject(c.rig, heat));
    }
    EXPECT_EQ(field::CompareHeats(seen, kept, {.tolerance = 0}), std::vector<std::string>());
    c.link.RunUntil(c.rig.platform.ClockMs() + 5000);
    EXPECT_TRUE(c.link.field.Done());
    const field::ConsoleHeard heard = c.link.field.Heard();
    EXPECT_EQ(heard.odd, 0);
    EXPECT_EQ(heard.stations[kPylonBox].frames, heard.frames);
    EXPECT_FALSE(heard.stations[kDisplay].race.running);
    EXPECT_EQ(c.rig.program.link().Counters().FramesSent(), heard.frames + heard.polls);
    EXPECT_EQ(c.rig.program.link().Counters().GoodFrames(), c.link.field.counters().sent);
    EXPECT_EQ(c.rig.program.door().ErrorsContained(), 0);
  }
}

TEST(Controller, StandsDownWhenAStarterComesOnTheAir) {
  Controller c({.starter_at = 30000});
  c.link.RunUntil(20000);
  c.rig.Key("F1");
  c.link.RunUntil(29900);
  EXPECT_TRUE(c.link.field.Heard().stations[kPylonBox].race.running);
  const std::size_t boxes = c.rig.platform.shown.size();
  c.link.RunUntil(45000);
  ASSERT_EQ(c.rig.platform.shown.size(), boxes + 2);  // and the question of an idle starter, cancelled
  EXPECT_EQ(c.rig.platform.shown[boxes].box.title + ", " + c.rig.platform.shown[boxes + 1].box.title,
            "Cancel CONTROLLER mode, Reset Race");
  EXPECT_EQ(c.rig.program.link().chkSystemController.Value(), 0);
  EXPECT_EQ(c.rig.platform.settings.GetSetting("frmSerialPort", "chkSystemController", ""), "0");
  const field::ConsoleHeard heard = c.link.field.Heard();
  ASSERT_TRUE(heard.starter_ms && heard.last_ms);
  EXPECT_GE(*heard.starter_ms, 30000);
  EXPECT_LE(*heard.last_ms, *heard.starter_ms);
  EXPECT_TRUE(c.rig.judge().RaceBeingFlown());
}

TEST(Controller, SilentLateAndTwofoldStationsShow) {
  Controller c(
      {.silent = {{kDisplay, 20000}, {kJudge1, 70000}}, .late = {0, 1500}, .twice = {false, false, true}});
  std::int64_t red = 0, longestRed = 0;  // judge 2
  for (std::int64_t ms = 100; ms <= 64000; ms += 100) {
    c.link.RunUntil(ms);
    red = c.Red(kJudge2) ? red + 100 : 0;
    longestRed = std::max(longestRed, red);
    if (ms == 48000) {
      EXPECT_NE(c.Age(kDisplay), "Off");
    }
  }
  EXPECT_GE(longestRed, 1000);
  EXPECT_LE(longestRed, 1600);
  EXPECT_EQ(c.Age(kDisplay), "Off");
  EXPECT_TRUE(c.Red(kDisplay));
  EXPECT_FALSE(c.Red(kJudge3));
  EXPECT_EQ(c.FramesFrom(kJudge1), 22 + 4);  // its state every three seconds, and four polls
  EXPECT_EQ(c.FramesFrom(kJudge3), 21 + 2 * 4);

  c.rig.Key("F1");
  const std::pair<std::int64_t, const char*> kMarks[] = {
      {68900, ""}, {71000, "Silent: Display"}, {73000, "Silent: Display"}, {77000, "Silent: P1 DS"}};
  for (const auto& [ms, names] : kMarks) {
    c.link.RunUntil(ms);
    EXPECT_EQ(c.rig.judge().lblSilent.Caption(), names) << ms;
    EXPECT_EQ(c.rig.judge().lblSilent.Visible(), *names != '\0') << ms;
  }
  // Who is switched off hears nothing either: of the display's, there is only the frame that took control.
  EXPECT_EQ(c.link.field.Heard().stations[kDisplay].frames, 1);
  EXPECT_GT(c.link.field.Heard().stations[kPylonBox].frames, c.link.field.Heard().stations[kJudge1].frames);
}

TEST(Broadcasts, OnlyAControllerSends) {
  for (const bool controls : {false, true}) {
    ConsoleRig rig(true);
    rig.Load();
    if (controls) {
      rig.Answer(Word::No);
      rig.Click("frmSerialPort.chkSystemController");
    }
    rig.serial.sent.clear();
    rig.Click("frmJudge.cmdStart");
    EXPECT_EQ(rig.serial.sent.size(), controls ? 1U : 0U);
    rig.At(6000);
    rig.Key("F2");
    rig.Key("F6");
    const auto sentTo = [&](int to, int from) {
      return std::count_if(rig.serial.sent.begin(), rig.serial.sent.end(),
                           [&](const auto& f) { return f[4] == to && f[5] == from; });
    };
    EXPECT_EQ(sentTo(3, 4), controls ? 1 : 0);
    EXPECT_EQ(sentTo(6, 3) >= 7, controls);
    if (!controls) continue;
    // The first frame announces the start: 59999, as there is no count; the last one the lap and the cut.
    EXPECT_EQ(rig.serial.sent.front()[8] * 256 + rig.serial.sent.front()[9], 59999);
    const auto& last = rig.serial.sent.back();
    EXPECT_EQ(last[3], 1);
    EXPECT_EQ((last[7] << 16) + (last[8] << 8) + last[9], 66000);
    EXPECT_EQ(last[30], 1);
    EXPECT_EQ(last[28], 2);
    rig.serial.sent.clear();
    rig.At(70000);
    EXPECT_FALSE(rig.serial.sent.empty());
    for (const auto& f : rig.serial.sent) EXPECT_EQ(f[4], 6);
  }
}

TEST(Broadcasts, TheCountIsToldFor54SecondsAndTheSignalOnce) {
  ConsoleRig rig(true);
  rig.Load();
  rig.Click("frmJudge.chkSixtySecondCount");
  rig.Answer(Word::No);
  rig.Click("frmSerialPort.chkSystemController");
  rig.Click("frmJudge.cmdStart");
  int told = 0, atSignal = 0;
  for (int ms = 1; atSignal == 0; ++ms) {
    ASSERT_LT(ms, 60100);
    rig.serial.sent.clear();
    rig.At(ms);
    const auto frames = static_cast<int>(std::count_if(rig.serial.sent.begin(), rig.serial.sent.end(),
                                                       [](const auto& f) { return f[5] == 3; }));
    const std::int32_t t = rig.program.clock().RaceTime();
    EXPECT_TRUE(frames == 0 || t < 54000 || t >= 60000) << t;
    (t < 60000 ? told : atSignal) += frames;
  }
  EXPECT_NEAR(told, 51, 3);
  EXPECT_EQ(atSignal, 1);
}

}  // namespace
}  // namespace quorvane
