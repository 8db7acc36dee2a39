// A program that dies in the middle of a race, and the next one that takes the race up again.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <random>

#include "files/file_ops.h"
#include "tests/support/field_link.h"
#include "tests/support/scratch_folder.h"

namespace quorvane {
namespace {

using Word = DialogAnswer::Word;

// The race by hand of a test: laps on two lanes, a cut, a comment, 21 s flown.
void FlyThreeLaps(ConsoleRig& rig) {
  rig.Load();
  rig.At(1000);
  rig.Click("frmLane2.chkNovice");
  rig.Type("frmJudge.txtComments", "Gusts at pylon 1");
  rig.Click("frmJudge.cmdStart");
  for (const int second : {7, 14, 21}) {
    rig.At(1000 + second * 1000);
    rig.Key("F1");
    if (second > 7) rig.Key("F2");
    if (second == 14) rig.Key("F5");
  }
  rig.At(22000);
}

std::vector<std::string> Logs(ConsoleRig& rig) {
  std::vector<std::string> logs;
  for (int i = 0; i < 4; ++i) {
    for (const LaneEvent& event : rig.lane(i).Events().Entries()) {
      logs.push_back(std::to_string(i + 1) + ": " + EventText(event));
    }
  }
  return logs;
}

// Forward and back, in the race and while the program is down. Where the computer was not started anew, its
// clock counts for nothing; otherwise a race that cannot be in the air comes back stopped.
TEST(Recovery, OutlivesAClockThatIsSetByHours) {
  for (const std::int64_t hours : {-9, -1, 2, 30}) {
    for (const bool newBoot : {false, true}) {
      SCOPED_TRACE(std::to_string(hours) + (newBoot ? " h, another boot" : " h"));
      ConsoleRig rig(false, SystemFiles(), ConsoleRig::Way::AtOnce);
      const auto set = [&](std::int64_t by) {
        rig.platform.start += std::chrono::hours(by);
        rig.platform.computer.utcMs += by * 3600000;
      };
      rig.platform.computer = {1795251600000, "one", 50000};
      FlyThreeLaps(rig);
      const auto logs = Logs(rig);
      set(hours);
      rig.At(23000);
      EXPECT_EQ(rig.judge().lblStatus.Caption(), "21.9");
      rig.Crash(4000);
      set(-2 * hours);
      if (newBoot) rig.platform.computer.boot = "two";
      rig.LoadAgain();
      EXPECT_EQ(Logs(rig), logs);
      EXPECT_EQ(rig.race().RaceDone, newBoot);
      EXPECT_EQ(rig.program.clock().RaceTime(), newBoot ? 21000 : 26000);
      rig.At(120000);
      rig.Click("frmJudge.cmdSave");
      EXPECT_EQ(rig.Value("Race1_Lane1", "NumLaps"), "3");
    }
  }
}

// The project cannot be replaced, what lies beside it can.
struct ProjectRefused : FileOps {
  bool refused = false;
  std::error_code Rename(const std::string& from, const std::string& to) override {
    if (refused && to.ends_with(".ini")) return std::make_error_code(std::errc::permission_denied);
    return FileOps::Rename(from, to);
  }
};

TEST(Recovery, SavesWhatCouldNotBeSavedBefore) {
  for (const std::string now : {"there", "another contest", "damaged"}) {
    SCOPED_TRACE(now);
    const bool another = now == "another contest";
    ProjectRefused files;
    ConsoleRig rig(false, files, ConsoleRig::Way::AtOnce);
    const std::string unsaved = BesideProject(rig.file, kUnsavedEnding);
    FlyThreeLaps(rig);
    files.refused = true;
    rig.At(70000);
    rig.Click("frmJudge.cmdSave");
    rig.Click("frmJudge.cmdStart");
    rig.At(77000);
    rig.Key("F1");
    if (another) PutFile(rig.file, "[Current]\r\nTitle=Reno\r\nHeatsPerRound=4\r\n");
    if (now == "damaged") PutFile(unsaved, Replaced(FileBytes(unsaved), "Change0=", "Chang"));
    const std::string before = FileBytes(unsaved);
    rig.Crash(1000);
    rig.LoadAgain();
    EXPECT_EQ(rig.race().RaceNumber, 2);
    EXPECT_EQ(rig.lane(0).CountLaps(), 1);
    EXPECT_EQ(rig.Value("Race1_Lane1", "NumLaps"), now == "there" ? "3" : "-");
    EXPECT_EQ(rig.Value("Race1", "Comments"), now == "there" ? "Gusts at pylon 1" : "-");
    EXPECT_FALSE(FileExists(unsaved));
    EXPECT_EQ(FileBytes(unsaved + "-1"), now == "there" ? "" : before);
  }
}

// A folder: nobody can read that, nor write a file in its place.
TEST(Recovery, KeepsUnderAnotherNameWhatItCannotRead) {
  for (const char* ending : kKeptRaces) {
    SCOPED_TRACE(ending);
    ProjectRefused files;
    ConsoleRig rig(false, files, ConsoleRig::Way::AtOnce);
    const std::string path = BesideProject(rig.file, ending);
    ASSERT_TRUE(std::filesystem::create_directory(path));
    FlyThreeLaps(rig);
    bool written = FileExists(path);
    files.refused = true;
    rig.At(70000);
    for (const char* hand : {"cmdSave", "cmdStart", "cmdReset"}) {
      rig.Answer(Word::No);
      rig.Click(std::string("frmJudge.") + hand);
      written |= FileExists(path);
    }
    EXPECT_TRUE(written);
    EXPECT_TRUE(FolderExists(path + "-1"));
  }
}

// A turn is reported three times. A program that was held up hears the last of them when its own light is
// out; so does one that died.
TEST(Recovery, CountsATurnOnceHoweverLateItIsReportedAgain) {
  for (const bool byHand : {false, true}) {
    ConsoleRig rig(true, SystemFiles(), ConsoleRig::Way::AtOnce);
    rig.Load();
    byHand ? rig.Click("frmJudge.cmdStart") : rig.Starter(60000, true);
    const auto turnsAfter = [&](int ms, int sentAt, int light) {
      rig.At(rig.platform.ClockMs() + ms);
      rig.Receive(Frame(0, 6, 60000 + sentAt).Lane(0, 0, light));
      return std::ranges::count(rig.lane(0).Events().Entries(), "T", &LaneEvent::Kind);
    };
    EXPECT_EQ(turnsAfter(7000, 7000, 100), 1);
    EXPECT_EQ(turnsAfter(1500, 7300, 62), 1);
    EXPECT_EQ(turnsAfter(2500, 11000, 100), 2);
    rig.Crash(300);
    rig.LoadAgain();
    EXPECT_EQ(turnsAfter(100, 11400, 50), 2);
    EXPECT_EQ(turnsAfter(3900, 15300, 100), 3);
    rig.lane(0).Strike(rig.lane(0).Events()[2].Serial);
    EXPECT_EQ(turnsAfter(300, 15600, 62), 2);
    EXPECT_EQ(turnsAfter(5000, 20600, 100), 3);
  }
}

int Laps(const field::ToldHeat& heat) {
  int laps = 0;
  for (const auto& [number, lane] : heat.lanes) laps += static_cast<int>(lane.laps.size());
  return laps;
}

// ms that a lap of the lanes that have kept all of theirs is away from the time at which it was flown.
std::int64_t WorstOf(const field::ToldHeat& flown, const field::ToldHeat& kept) {
  std::int64_t worst = 0;
  for (const auto& [number, lane] : flown.lanes) {
    const auto& laps = kept.lanes.at(number).laps;
    for (std::size_t i = 0; laps.size() == lane.laps.size() && i < laps.size(); ++i) {
      worst = std::max<std::int64_t>(worst, std::llabs(std::int64_t{laps[i]} - lane.laps[i]));
    }
  }
  return worst;
}

// Whole contests of the simulated field, with the program killed at random moments, in the count, in flight
// and after the finish. What was on the air while it was down is lost, nothing else.
TEST(Recovery, LosesNoHeatThroughKillsAtRandomMoments) {
  const int wanted = std::getenv("QUORVANE_LONG") != nullptr ? 500 : 20;
  std::mt19937 random(7);
  const auto between = [&](int low, int high) { return std::uniform_int_distribution(low, high)(random); };
  int kills = 0, recovered = 0, laps = 0, lapsKept = 0;
  std::int64_t worst = 0;
  for (int contest = 0; kills < wanted; ++contest) {
    SCOPED_TRACE("contest " + std::to_string(contest));
    ConsoleRig rig(true, SystemFiles(), ConsoleRig::Way::AtOnce);
    rig.Load();
    field::FieldOptions options{
        .heats = 4, .mode = contest % 7, .seed = static_cast<std::uint32_t>(random())};
    options.count = contest % 2 == 0;
    FieldLink link(rig, options);
    link.field.AdvanceTo(rig.platform.ClockMs());
    link.field.BeginHeats(rig.platform.ClockMs());
    std::vector<field::ToldHeat> flown, kept;
    std::int64_t nextKill = rig.platform.ClockMs() + between(1000, 90000);
    while (!link.field.Done()) {
      link.RunUntil(std::max(std::min(link.field.NextDue(), nextKill), rig.platform.ClockMs() + 1));
      if (rig.platform.ClockMs() >= nextKill) {
        rig.Crash(between(200, 3000));
        rig.LoadAgain();
        if (rig.platform.answers.empty()) ++recovered;
        rig.platform.answers.clear();
        link.field.AdvanceTo(rig.platform.ClockMs());
        nextKill = rig.platform.ClockMs() + between(1000, 60000);
        ++kills;
      }
      for (const auto& heat : link.field.TakeResults()) flown.push_back(ToldByField(heat));
    }
    for (const auto& heat : flown) {
      kept.push_back(ToldByProject(rig, heat.heat));
      laps += Laps(heat);
      lapsKept += Laps(kept.back());
      worst = std::max(worst, WorstOf(heat, kept.back()));
    }
    ASSERT_EQ(flown.size(), 4U);
    EXPECT_EQ(field::CompareHeats(flown, kept, {.lossy = true}), std::vector<std::string>());
  }
  std::printf("%d kills, %d races recovered, %d of %d laps, the latest by %d ms\n", kills, recovered,
              lapsKept, laps, static_cast<int>(worst));
  EXPECT_GT(recovered, wanted / 2);
  EXPECT_GT(lapsKept, laps * 9 / 10);  // it was down for a twentieth of the time
}

}  // namespace
}  // namespace quorvane
