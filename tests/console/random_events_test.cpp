// Anything at all, in any order, at any time: the console neither stops nor loses what a lane has logged.

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <random>
#include <set>
#include <utility>

#include "tests/support/console_rig.h"

namespace quorvane {
namespace {

// Thousands of races are saved here; no power failure threatens them.
struct HastyFiles : FileOps {
  std::error_code Sync(const TempFile&) override { return {}; }
  std::error_code SyncFolder(const std::string&) override { return {}; }
};

// Everything that is kept of a lane and shows on its panel.
std::vector<std::string> Shown(const frmLane& lane) {
  const LapRecount& counts = lane.Counts();
  std::vector<std::string> shown = {
      lane.Status(), lane.Position(),
      fmt::format("{} {} {} {} {} {}", counts.finalTime, counts.laps, counts.lapTarget, counts.cutCount,
                  counts.cutsBeforeFinish, fmt::join(counts.pylonCuts, " "))};
  for (const LaneEvent& event : lane.Events().Entries()) shown.push_back(EventText(event));
  for (const Control* cell : lane.lblLap) shown.push_back(cell->Caption());
  for (const Control* mark : lane.lblCut) {
    shown.push_back(mark->Visible() ? mark->Caption() + "/" + mark->Anchor()->Name() : "");
  }
  return shown;
}

class Monkey {
 public:
  explicit Monkey(unsigned seed) : random_(seed), rig_(true, files_) {
    rig_.Load();
    for (const Form* form : rig_.program.door().AllForms().All()) {
      for (const Control& control : form->Controls()) {
        if (control.Kind() != ControlKind::Timer) controls_.push_back(control.FullName());
      }
    }
  }

  void Step() {
    Rest();
    const bool flown = rig_.judge().RaceBeingFlown();
    const auto before = Laps();
    const int race = rig_.race().RaceNumber;
    Act();
    CheckAgainst(flown, race, before);
    if (rig_.judge().cmdSave.Enabled() && Below(4) == 0) SaveAndShow();
  }
  int saved = 0;  // races that were saved and shown again

 private:
  int Below(int n) { return static_cast<int>(random_() % static_cast<unsigned>(n)); }
  template <typename T, std::size_t N>
  T Pick(const T (&values)[N]) {
    return values[Below(N)];
  }

  void Rest() {
    const int rests[] = {1, 20, 500, 3000, 11000};
    rig_.At(rig_.platform.ClockMs() + Below(Pick(rests)) + 1);
    // Boxes are answered, now and then with nonsense; the one that insists gets its number.
    rig_.platform.answers.clear();
    using enum DialogAnswer::Word;
    const DialogAnswer::Word words[] = {Yes, No, Cancel, Ok, Text};
    const char* const texts[] = {"", "3", "x", "99999", "-1", " z"};
    for (int i = 0; i < 3; ++i) rig_.Answer(Pick(words), Pick(texts));
    for (int i = 0; i < 3; ++i) rig_.Answer(Text, "4");
  }

  void Act() {
    const int act = Below(10);
    if (act == 0) return Noise();
    if (act == 1) return Click();
    if (act == 2) return rig_.Key(Pick({"F1", "F2", "F3", "F4", "F5", "F9", "F12", "7", "0"}));
    if (act == 3) return rig_.program.door().Enter(Oddity());
    Station();
  }

  void Click() {
    const std::string name = controls_[static_cast<std::size_t>(Below(static_cast<int>(controls_.size())))];
    if (name == "frmJudge.mnuExit" || name == "frmJudge.mnuSelectFile" || name == "frmPractice.cmdBegin")
      return;
    rig_.Click(name);
  }

  void Noise() {
    Event event{.kind = EventKind::Bytes};
    for (int n = Below(80); n >= 0; --n)
      event.bytes.push_back(Below(4) == 0 ? 0x55 : static_cast<std::uint8_t>(random_()));
    rig_.program.door().Enter(event);
  }

  Event Oddity() {
    const Event oddities[] = {
        {.kind = EventKind::Ports, .numbers = Below(2) == 0 ? std::vector<int>{} : std::vector{5}},
        {.kind = EventKind::LineError, .number = 1000 + Below(14)},
        {EventKind::Type, Pick({"frmJudge.txtHeat", "frmJudge.txtRound", "frmJudge.txtComments"}),
         Pick({"", "1", "-3", "5", "99999", "a,b\r"})},
        {.kind = EventKind::Choose, .target = "frmJudge.cboRaceMode", .number = Below(8) - 1},
        {EventKind::Hover, "frmLane2.lblCut(" + std::to_string(Below(41)) + ")"},
        {EventKind::Activate, "frmSerialPort"}};
    return Pick(oddities);
  }

  // Frames with a right check byte, half of them like those of a real field, half of them of random bytes.
  void Station() {
    Frame frame(Below(5) == 0 ? Below(256) : 3 + Below(2), Below(5) == 0 ? Below(256) : 6, clock_);
    clock_ = Below(40) == 0 ? Below(70000) : clock_ + Below(600);
    frame.With(3, Below(30) == 0 ? 0 : 1).With(28, Below(10) == 0 ? Below(256) : 2);
    for (int lane = 0; lane < 4; ++lane) {
      frame.Lane(lane, rig_.lane(lane).CountLaps() + Below(3), Below(2) * Below(256));
      if (Below(6) == 0) frame.With(11 + static_cast<std::size_t>(lane), Below(256));
    }
    if (Below(2) == 0) {
      for (int n = Below(34); n >= 0; --n) frame.With(3 + static_cast<std::size_t>(Below(33)), Below(256));
    }
    rig_.Receive(frame);
  }

  std::array<std::vector<std::int32_t>, 4> Laps() {
    std::array<std::vector<std::int32_t>, 4> laps;
    for (int lane = 0; lane < 4; ++lane) {
      for (const LaneEvent& event : rig_.lane(lane).Events().Entries()) {
        if (event.Kind == "L") laps[static_cast<std::size_t>(lane)].push_back(event.EventTime);
      }
    }
    return laps;
  }

  // Laps of a race that is still being flown, under the same number, with no answer and no correction in
  // between, are still there; all have moved alike when the clock was set.
  void CheckAgainst(bool flown, int race, const std::array<std::vector<std::int32_t>, 4>& before) {
    std::size_t corrections = 0;
    for (int lane = 0; lane < 4; ++lane) corrections += rig_.lane(lane).Events().Corrections().size();
    if (std::exchange(corrections_, corrections) != corrections) return;
    if (!flown || !rig_.judge().RaceBeingFlown() || rig_.race().RaceNumber != race) return;
    const auto after = Laps();
    if (std::ranges::all_of(after, [](const auto& laps) { return laps.empty(); }))
      return;  // reset and started anew within one event
    std::set<std::int32_t> moves;
    for (std::size_t lane = 0; lane < 4; ++lane) {
      ASSERT_LE(before[lane].size(), after[lane].size());
      for (std::size_t i = 0; i < before[lane].size(); ++i) moves.insert(after[lane][i] - before[lane][i]);
    }
    ASSERT_LE(moves.size(), 1U);
  }

  // The race comes back from the file as it stood on the console.
  void SaveAndShow() {
    const auto before = Lanes();
    const std::int16_t race = rig_.race().RaceNumber;
    rig_.Click("frmJudge.cmdSave");
    ASSERT_FALSE(rig_.judge().cmdSave.Enabled());
    rig_.race().RaceNumber = race;
    rig_.judge().ShowCurrentRace();
    ASSERT_TRUE(rig_.judge().HasRun(race));
    ASSERT_EQ(Lanes(), before) << "race " << race;
    ++saved;
  }
  std::vector<std::vector<std::string>> Lanes() {
    std::vector<std::vector<std::string>> lanes;
    for (int i = 0; i < 4; ++i) lanes.push_back(Shown(rig_.lane(i)));
    return lanes;
  }

  std::mt19937 random_;
  HastyFiles files_;
  ConsoleRig rig_;
  std::vector<std::string> controls_;
  std::int32_t clock_ = 0;
  std::size_t corrections_ = 0;
};

TEST(RandomEvents, NothingStopsTheConsole) {
  const bool longer = std::getenv("QUORVANE_LONG") != nullptr;
  const int steps = longer ? 10000 : 5000;
  const unsigned seeds = longer ? 8 : 4;
  int saved = 0;
  for (unsigned seed = 1; seed <= seeds; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Monkey monkey(seed);
    for (int i = 0; i < steps && !testing::Test::HasFatalFailure(); ++i) monkey.Step();
    saved += monkey.saved;
  }
  EXPECT_GT(saved, 15);
}

TEST(RandomEvents, SendersLanesAndModesOutOfRangeChangeNothing) {
  ConsoleRig rig(true);
  rig.Load();
  rig.Starter(66000, true);
  for (int i = 0; i < 1024; ++i) {
    const int to[] = {0, 6, 254, 255};
    rig.Receive(Frame(i / 4, to[i % 4], 0xFFFFFF).With(3, 255).With(28, 255).With(33, 255).With(18, 255));
  }
  EXPECT_EQ(rig.program.door().ErrorsContained(), 0);
  EXPECT_EQ(std::pair(rig.race().RaceMode, rig.race().RaceNumber),
            (std::pair<std::int16_t, std::int16_t>(2, 1)));
}

}  // namespace
}  // namespace quorvane
