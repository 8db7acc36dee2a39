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

void LoadAgain(ConsoleRig& rig) {
  rig.program.door().Enter({EventKind::Load});
}

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

// That race saved, and its third lap on lane 2 struck in an amendment.
void AmendThreeLaps(ConsoleRig& rig) {
  FlyThreeLaps(rig);
  rig.At(70000);
  for (const char* click : {"frmJudge.cmdSave", "frmJudge.cmdDecHeat", "frmJudge.mnuAmend", "frmLane1.mnuLog",
                            "frmLog.cmdStrike"}) {
    rig.Click(click);
  }
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

TEST(Recovery, GoesOnAsIfNothingHadHappened) {
  ConsoleRig rig(false, SystemFiles(), ConsoleRig::Way::AtOnce);
  FlyThreeLaps(rig);
  const auto logs = Logs(rig);
  const std::string cell = rig.lane(0).lblLap[2].Caption();
  rig.Crash(4000);
  rig.Answer(Word::Yes);
  LoadAgain(rig);
  EXPECT_EQ(
      rig.platform.shown.back().box.text,
      "Race 1, heat 1, round 1, 3 laps on lane 1, 3 laps on lane 2, 4 seconds ago\r\rRecover this race?");
  EXPECT_EQ(Logs(rig), logs);
  EXPECT_EQ(rig.program.clock().RaceTime(), 25000);
  EXPECT_EQ(rig.judge().lblStatus.Caption(), "25.0");
  EXPECT_EQ(rig.judge().txtComments.Text(), "Gusts at pylon 1");
  EXPECT_EQ(rig.lane(0).lblLap[2].Caption(), cell);
  EXPECT_TRUE(rig.lane(0).lblLap[3].Visible());
  EXPECT_EQ(rig.lane(1).chkNovice.Value(), 1);
  EXPECT_FALSE(rig.judge().cmdStart.Enabled());
  for (int lap = 4; lap <= 11; ++lap) {  // the first of them at once
    rig.At(26100 + (lap - 4) * 7000);
    rig.Key("F1");
    rig.Key("F2");
  }
  rig.At(26100 + 7 * 7000 + 40000);
  EXPECT_EQ(rig.lane(0).Counts().laps, 11);
  EXPECT_EQ(rig.lane(0).Status(), "Second");  // a cut
  rig.Click("frmJudge.cmdSave");
  EXPECT_EQ(rig.Value("Race1", "Recovered"), "4.00 s not judged");
  EXPECT_TRUE(rig.judge().lblNotice.Caption().starts_with("Race 1 saved: "));  // the recovery is over
  EXPECT_EQ(rig.Value("Race1", "Comments"), "Gusts at pylon 1");
  EXPECT_FALSE(FileExists(rig.folder / "contest.running"));
  rig.Crash();
  LoadAgain(rig);
  EXPECT_EQ(rig.platform.shown.back().box.title, "Open Project");
}

// Long after the heat it comes back stopped; the places that were given stay.
TEST(Recovery, StandsStillWhenNothingCanBeInTheAir) {
  for (const bool finished : {false, true}) {
    ConsoleRig rig(false, SystemFiles(), ConsoleRig::Way::AtOnce);
    FlyThreeLaps(rig);
    if (finished) {
      rig.At(70000);
      rig.Answer(Word::Text, "Protest");
      rig.Click("frmLane2.lblStatus");
    }
    rig.Crash(720000);
    rig.Answer(Word::Yes);
    LoadAgain(rig);
    EXPECT_NE(rig.platform.shown.back().box.text.find(", 12 minutes ago"), std::string::npos);
    EXPECT_TRUE(rig.race().RaceDone);
    EXPECT_EQ(rig.lane(0).Counts().laps, 3);
    EXPECT_EQ(rig.lane(0).Status(), "DNF");
    EXPECT_EQ(rig.lane(1).Status(), finished ? "Protest" : "DNF");
    rig.Click("frmJudge.cmdSave");
    EXPECT_EQ(rig.Value("Race1", "Recovered"), finished ? "after its end" : "stopped at 21.00");
    EXPECT_EQ(rig.Value("Race1_Lane1", "NumLaps"), "3");
  }
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
      rig.Answer(Word::Yes);
      LoadAgain(rig);
      EXPECT_EQ(Logs(rig), logs);
      EXPECT_EQ(rig.race().RaceDone, newBoot);
      EXPECT_EQ(rig.program.clock().RaceTime(), newBoot ? 21000 : 26000);
      rig.At(120000);
      rig.Click("frmJudge.cmdSave");
      EXPECT_EQ(rig.Value("Race1_Lane1", "NumLaps"), "3");
    }
  }
}

TEST(Recovery, IsAskedOnceAndThrowsNothingAway) {
  ConsoleRig rig(false, SystemFiles(), ConsoleRig::Way::AtOnce);
  FlyThreeLaps(rig);
  const auto kept = ContentOf(rig.folder / "contest.running", 100000);
  ASSERT_TRUE(kept.has_value());
  rig.Crash();
  rig.Answer(Word::No);
  LoadAgain(rig);
  EXPECT_FALSE(rig.race().RaceActive);
  EXPECT_EQ(ContentOf(rig.folder / "contest.running-1", 100000), kept);
  rig.Crash();
  LoadAgain(rig);
  EXPECT_EQ(rig.platform.shown.back().box.title, "Open Project");
}

// Killed between the save and the removal of the file, which may be older than what was saved.
TEST(Recovery, DoesNotOfferARaceThatWasSaved) {
  for (const std::string another : {"", "F5", "F2"}) {
    ConsoleRig rig(false, SystemFiles(), ConsoleRig::Way::AtOnce);
    FlyThreeLaps(rig);
    if (!another.empty()) rig.Key(another);
    const std::string running = FileBytes(rig.folder / "contest.running");
    if (another == "F5") rig.Click("frmJudge.mnuUndo");
    rig.At(29000);
    rig.Key("F1");
    rig.At(70000);
    rig.Click("frmJudge.cmdSave");
    PutFile(rig.folder / "contest.running", running);
    rig.Crash();
    rig.Answer(Word::No);
    LoadAgain(rig);
    EXPECT_EQ(rig.LastBox(), another == "F5" ? "Recover Race" : "Open Project");
    EXPECT_EQ(rig.race().RaceNumber, 2);
  }
}

TEST(Recovery, BringsBackARaceThatWasThrownAway) {
  for (const bool closed : {false, true}) {
    ConsoleRig rig(false, SystemFiles(), ConsoleRig::Way::AtOnce);
    FlyThreeLaps(rig);
    const auto logs = Logs(rig);
    EXPECT_FALSE(rig.judge().mnuBringBack.Enabled());
    if (closed) {
      rig.At(70000);
      rig.Answer(Word::Yes);
      rig.Answer(Word::No);
      rig.Click("frmJudge.mnuExit");
      ASSERT_TRUE(rig.platform.ended);
      rig.platform.ended = false;
      rig.Crash();
      LoadAgain(rig);
      EXPECT_EQ(rig.platform.shown.back().box.title, "Open Project");
    } else {
      rig.Answer(Word::No);
      rig.Click("frmJudge.cmdReset");
    }
    EXPECT_EQ(Logs(rig), std::vector<std::string>());
    rig.Click("frmJudge.mnuBringBack");
    EXPECT_EQ(Logs(rig), logs);
    EXPECT_EQ(rig.race().RaceDone, closed);
    EXPECT_FALSE(FileExists(rig.folder / "contest.dropped"));
    EXPECT_TRUE(FileExists(rig.folder / "contest.running"));
  }
}

// Corrections that were not saved yet; what is on the disk decides what becomes of them.
TEST(Recovery, GoesOnWithAnAmendment) {
  enum Meanwhile { kNothing, kRefused, kAmended, kSavedByUs };
  for (const Meanwhile meanwhile : {kNothing, kRefused, kAmended, kSavedByUs}) {
    SCOPED_TRACE(meanwhile);
    ConsoleRig rig(false, SystemFiles(), ConsoleRig::Way::AtOnce);
    AmendThreeLaps(rig);
    rig.Answer(Word::Text, "Protest");
    rig.Click("frmLane2.lblStatus");
    rig.Type("frmJudge.txtComments", "No third lap");
    const auto logs = Logs(rig);
    const std::string kept = FileBytes(rig.folder / "contest.running");
    if (meanwhile == kSavedByUs) rig.Click("frmJudge.cmdSave");
    if (meanwhile == kAmended) rig.program.project().SetProjectValue("Race1", "Amendments", "1");
    PutFile(rig.folder / "contest.running", kept);
    rig.Crash(5000);
    rig.Answer(meanwhile == kRefused ? Word::No : Word::Yes);
    LoadAgain(rig);
    const bool taken = meanwhile == kNothing;
    EXPECT_EQ(rig.LastBox(), taken || meanwhile == kRefused ? "Recover Race" : "Open Project");
    EXPECT_EQ(FileExists(rig.folder / "contest.running-1"), meanwhile == kRefused || meanwhile == kAmended);
    EXPECT_EQ(FileExists(rig.folder / "contest.running"), taken);
    EXPECT_EQ(rig.race().Amending, taken);
    EXPECT_EQ(rig.program.link().Visible(), !taken);
    if (meanwhile == kAmended) {
      EXPECT_EQ(rig.judge().lblNotice.Caption(),
                "Race 1 has been changed since: its amendment is kept in contest.running-1");
    }
    if (!taken) continue;
    EXPECT_EQ(rig.platform.shown.back().box.text,
              "Amendment of Race 1, heat 1, round 1, 2 laps on lane 1, 3 laps on lane 2, 5 seconds ago\r\r"
              "Recover this amendment?");
    EXPECT_EQ(Logs(rig), logs);
    EXPECT_EQ(rig.lane(1).Status(), "Protest");
    rig.Click("frmJudge.cmdSave");
    EXPECT_EQ(rig.Value("Race1_Lane1", "Was1_NumLaps"), "3");
    EXPECT_EQ(rig.Value("Race1_Lane1", "NumLaps"), "2");
    EXPECT_EQ(rig.Value("Race1_Lane2", "Was1_NumLaps"), "-");
    EXPECT_EQ(rig.Value("Race1_Lane2", "Placing"), "Protest");
    EXPECT_EQ(rig.Value("Race1", "Comments"), "No third lap");
    EXPECT_FALSE(FileExists(rig.folder / "contest.running"));
  }
}

// However it is left; a race that starts then does not take it either.
TEST(Recovery, BringsBackAnAmendmentThatWasLeft) {
  for (const std::string left : {"Reset", "IncHeat", "Start", "Changed"}) {
    SCOPED_TRACE(left);
    ConsoleRig rig(false, SystemFiles(), ConsoleRig::Way::AtOnce);
    AmendThreeLaps(rig);
    const auto logs = Logs(rig);
    EXPECT_FALSE(rig.judge().mnuBringBack.Enabled());
    if (left == "Changed") {
      rig.program.project().SetProjectValue("Race1", "Amendments", "1");
      rig.Click("frmJudge.cmdSave");
      EXPECT_TRUE(FileExists(rig.folder / "contest.running-1"));
      continue;
    }
    rig.Click("frmJudge.cmd" + (left == "Start" ? "Reset" : left));
    if (left == "Start") {
      rig.Click("frmJudge.cmdStart");
      rig.At(140000);
      rig.Click("frmJudge.cmdSave");
    }
    rig.Click("frmJudge.mnuBringBack");
    EXPECT_TRUE(rig.race().Amending);
    EXPECT_EQ(Logs(rig), logs);
    EXPECT_FALSE(FileExists(rig.folder / "contest.dropped"));
    EXPECT_TRUE(FileExists(rig.folder / "contest.running"));
  }
}

// Killed in the count, nobody has flown it and nothing was missed.
TEST(Recovery, InventsNothingOfARaceBeforeItsSignal) {
  for (const bool late : {false, true}) {
    ConsoleRig rig(false, SystemFiles(), ConsoleRig::Way::AtOnce);
    rig.Load();
    rig.Click("frmJudge.chkSixtySecondCount");
    rig.Type("frmJudge.txtComments", "Gusts");
    rig.Click("frmJudge.cmdStart");
    rig.At(50000);
    rig.Crash(late ? 420000 : 4000);
    rig.Answer(Word::Yes);
    LoadAgain(rig);
    EXPECT_EQ(rig.judge().lblNotice.Caption(), late ? "Race recovered: it had not begun, start it again"
                                                    : "Race recovered: 0.00 s were not judged");
    EXPECT_EQ(rig.race().RaceActive, !late);
    EXPECT_EQ(rig.judge().cmdStart.Enabled(), late);
    EXPECT_FALSE(rig.race().Unsaved);
    EXPECT_EQ(rig.judge().txtComments.Text(), "Gusts");
    EXPECT_EQ(FileExists(rig.folder / "contest.running"), !late);
  }
}

TEST(Recovery, KnowsWhomTheRadioHadHeardBefore) {
  ProfileFile file;
  WriteRunning(file, {}, {.radio = RadioRecord{.stations = {{"Judges 2", 40, 900}}, .lively = false}});
  const auto kept = ReadRunning(file.Serialize());
  ASSERT_TRUE(kept && kept->at.radio && !kept->at.radio->lively);
  const std::string text = RadioText(Together(*kept->at.radio, {.stations = {{"Judges 2", 0, 9000}}}));
  EXPECT_TRUE(text.ends_with("Judges 2 (9.0 s)")) << text;
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
  for (const bool another : {false, true}) {
    ProjectRefused files;
    ConsoleRig rig(false, files, ConsoleRig::Way::AtOnce);
    FlyThreeLaps(rig);
    files.refused = true;
    rig.At(70000);
    rig.Click("frmJudge.cmdSave");
    rig.Click("frmJudge.cmdStart");
    rig.At(77000);
    rig.Key("F1");
    if (another) PutFile(rig.file, "[Current]\r\nTitle=Reno\r\nHeatsPerRound=4\r\n");
    rig.Crash(1000);
    rig.Answer(Word::Yes);
    LoadAgain(rig);
    EXPECT_EQ(rig.race().RaceNumber, 2);
    EXPECT_EQ(rig.lane(0).CountLaps(), 1);
    EXPECT_EQ(rig.Value("Race1_Lane1", "NumLaps"), another ? "-" : "3");
    EXPECT_EQ(rig.Value("Race1", "Comments"), another ? "-" : "Gusts at pylon 1");
    EXPECT_FALSE(FileExists(rig.folder / "contest.unsaved"));
    EXPECT_EQ(FileExists(rig.folder / "contest.unsaved-1"), another);
  }
}

// A stranger's file, or half of ours, costs nothing but itself.
TEST(Recovery, TakesAnyFile) {
  ConsoleRig rig(false, SystemFiles(), ConsoleRig::Way::AtOnce);
  FlyThreeLaps(rig);
  const std::string kept = *ContentOf(rig.folder / "contest.running", 100000);
  for (const std::string& bytes :
       {std::string(), std::string("\xFF\x00[Running", 10), kept.substr(0, kept.size() / 2),
        std::string("[Running]\nRace=99999\nRaceMode=-1\nRaceTime=1e300\nUtcMs=-1e300\n"),
        std::string(
            "[Running]\nRace=1\nAmends=Race1\nVersion=; 0\n[Unsaved]\nChange0=Race1;Laps\nChange1=;;;\n"
            "Change2=Race1;Timestamp;-1e300;\nChange3=Refly99999;Timestamp;1;x\n"),
        kept + "\r\n[Running_Lane1]\r\nTimeBase=99999999999\r\n"}) {
    for (const char* ending : kKeptRaces) PutFile(BesideProject(rig.file, ending), bytes);
    rig.Crash();
    rig.Answer(Word::Yes);
    LoadAgain(rig);
    EXPECT_TRUE(rig.judge().Visible());
    rig.platform.answers.clear();
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
    rig.Answer(Word::Yes);
    LoadAgain(rig);
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
        rig.Answer(Word::Yes);
        LoadAgain(rig);
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
