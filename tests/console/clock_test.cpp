#include <gtest/gtest.h>

#include <fstream>
#include <functional>

#include "base/text.h"
#include "tests/support/console_rig.h"
#include "tests/support/memory_files.h"

namespace quorvane {
namespace {

using Word = DialogAnswer::Word;

TEST(Clock, WithoutTheCountItRunsUpAtOnceOnWhite) {
  ConsoleRig rig;
  rig.Load();
  EXPECT_EQ(rig.judge().lblStatus.Caption(), "Waiting");
  rig.At(1000);
  rig.Click("frmJudge.cmdStart");
  EXPECT_EQ(rig.judge().lblStatus.Caption(), "0.0");
  rig.At(1101);
  EXPECT_EQ(rig.judge().lblStatus.Caption(), "0.1");
  EXPECT_EQ(rig.judge().lblStatus.BackColor(), kWhite);
  EXPECT_FALSE(rig.judge().cmdStart.Enabled() || rig.judge().cboRaceMode.Enabled());
  EXPECT_TRUE(rig.judge().cmdReset.Enabled());
}

TEST(Clock, TheCountRunsFromSixtyToOneAndThenUp) {
  ConsoleRig rig;
  rig.Load();
  rig.Click("frmJudge.chkSixtySecondCount");
  EXPECT_TRUE(rig.judge().chkAudio.Visible());
  rig.Click("frmJudge.cmdStart");
  int wanted = 60;
  for (int ms = 0; ms < 59900; ++ms) {
    rig.At(ms);
    const std::string shown = rig.judge().lblStatus.Caption();
    if (shown == std::to_string(wanted)) continue;
    --wanted;
    ASSERT_EQ(shown, std::to_string(wanted)) << ms;
  }
  EXPECT_EQ(wanted, 1);
  rig.At(60060);
  EXPECT_EQ(rig.judge().lblStatus.BackColor(), Color::Rgb(0xC0FFC0));
  EXPECT_EQ(rig.judge().lblStatus.Caption().front(), '0');
  EXPECT_EQ(rig.lane(0).lblLap[0].Caption().front(), '0');
}

TEST(Clock, TheAudioCountdownPlaysWhereThereIsOneAndEndsWithAReset) {
  ConsoleRig rig;
  rig.Load();
  rig.Click("frmJudge.chkSixtySecondCount");
  rig.Click("frmJudge.chkAudio");
  const std::string wave = rig.platform.programFolder + "WarbirdCountdownStart.wav";
  for (const bool there : {false, true}) {
    if (there) std::ofstream(wave) << "sound";
    rig.Click("frmJudge.cmdStart");
    EXPECT_EQ(rig.platform.playing, there ? wave : "");
    rig.Answer(Word::No);
    rig.Click("frmJudge.cmdReset");
    EXPECT_EQ(rig.platform.playing, "");
  }
}

// Whatever comes after the finish: the places follow the logs, no place is given twice, and those that the
// operator gave stay.
TEST(Places, FollowLateEntriesAndTheOperator) {
  using Step = std::function<void(ConsoleRig&)>;
  const Step order = [](ConsoleRig& rig) { rig.Click("frmJudge.cmdReorder"); };
  const auto place = [](int lane) {
    return [lane](ConsoleRig& rig) { rig.Click("frmLane" + std::to_string(lane) + ".cmdOrder"); };
  };
  const auto status = [](int lane, const char* text) {
    return [lane, text](ConsoleRig& rig) {
      rig.Answer(Word::Text, text);
      rig.Click("frmLane" + std::to_string(lane) + ".lblStatus");
    };
  };
  const Step lateLap = [](ConsoleRig& rig) { rig.lane(3).DoLap(60000, 4000); };
  const Step lateTurn = [](ConsoleRig& rig) { rig.lane(2).DoTurn(4, 60000, 100); };
  const auto lateCut = [](const char* code) {
    return [code](ConsoleRig& rig) { rig.lane(0).DoCut(code, 1, 42300); };
  };
  const struct {
    std::vector<Step> steps;
    const char* shown;
    const char* saved;
  } kCases[] = {
      {{}, "First;Second;Third;DNF", "First 1;Second 2;Third 3;DNF 100"},
      {{lateCut("11")}, "Dbl Cut;First;Second;DNF", "Dbl Cut 100;First 1;Second 2;DNF 100"},
      {{lateLap}, "First;Second;Third;Fourth", "First 1;Second 2;Third 3;Fourth 4"},
      {{order, place(3), lateLap, lateTurn},
       "Second;Third;First;Fourth",
       "Second 2;Third 3;First Locked;Fourth 4"},
      {{order, place(3), lateTurn, order, place(2)},
       "42.00;First;42.20;DNF",
       "Second 2;First Locked;Third 3;DNF 100"},
      {{status(1, "Crashed"), status(4, "Landed"), lateTurn},
       "Crashed;First;Second;Landed",
       "Crashed Locked;First 1;Second 2;Landed Locked"},
      {{lateLap, order, place(1), status(1, "Second"), place(2), place(3), place(4)},
       "Second;First;Third;Fourth",
       "Second Locked;First Locked;Third Locked;Fourth Locked"},
      {{order, place(3), status(1, "1."), place(3), status(2, "SECOND")},
       "1.;SECOND;Third;DNF",
       "1. Locked;SECOND Locked;Third 3;DNF 100"},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.saved);
    ConsoleRig rig;
    rig.Load();
    rig.Click("frmJudge.cmdStart");
    for (int lap = 0; lap < 10; ++lap) {
      for (int lane = 0; lane < (lap < 9 ? 4 : 3); ++lane) {
        rig.At(6000 + lap * 4000 + lane * 100);
        rig.Key("F" + std::to_string(lane + 1));
      }
    }
    rig.At(80000);
    ASSERT_TRUE(rig.race().RaceDone);
    for (const Step& step : c.steps) step(rig);
    std::vector<std::string> shown;
    std::vector<std::string> saved;
    for (int i = 0; i < 4; ++i) shown.push_back(rig.lane(i).lblStatus.Caption());
    EXPECT_EQ(Join(shown, ';'), c.shown);
    rig.Click("frmJudge.cmdSave");
    for (int i = 1; i <= 4; ++i) {
      const std::string lane = "Race1_Lane" + std::to_string(i);
      saved.push_back(rig.Value(lane, "Placing") + " " + rig.Value(lane, "Position"));
    }
    EXPECT_EQ(Join(saved, ';'), c.saved);
  }
}

TEST(Reset, TheQuestionDecides) {
  const struct {
    Word answer;
    bool active;
    bool saved;
    int race;
  } kCases[] = {{Word::Cancel, true, false, 1}, {Word::Yes, false, true, 2}, {Word::No, false, false, 1}};
  for (const auto& c : kCases) {
    ConsoleRig rig;
    rig.Load();
    rig.Click("frmJudge.cmdStart");
    for (int lap = 0; lap < 10; ++lap) {
      rig.At(6000 + lap * 4000);
      rig.Key("F2");
    }
    rig.Answer(c.answer);
    rig.Click("frmJudge.cmdReset");
    EXPECT_EQ(rig.LastBox(), "Reset Race");
    EXPECT_EQ(rig.race().RaceActive, c.active);
    EXPECT_EQ(rig.race().ManualStart, c.active);
    EXPECT_EQ(rig.judge().tmrTimeTick.Enabled(), c.active);
    EXPECT_EQ(rig.race().RaceNumber, c.race);
    EXPECT_EQ(rig.Value("Race1", "Timestamp") != "-", c.saved);
    EXPECT_EQ(rig.lane(1).EventCount(), c.active ? 10 : 0);
  }
}

// A disk that can be full.
struct FullDisk : MemoryFiles {
  bool full = false;
  std::error_code CreateTemp(const std::string& target, TempFile& temp) override {
    return full ? std::make_error_code(std::errc::no_space_on_device) : MemoryFiles::CreateTemp(target, temp);
  }
};

TEST(Shutdown, AsksFirstOffersToSaveAndTellsWhatIsLost) {
  FullDisk disk;
  ConsoleRig rig(false, disk);
  rig.Load();
  // Closes with these answers; gives the boxes shown, each as its first word and a "!" when No is the usual
  // answer.
  const auto close = [&](std::initializer_list<Word> answers) {
    rig.platform.shown.clear();
    for (const Word word : answers) rig.Answer(word);
    rig.program.door().Enter({EventKind::Close, "frmJudge"});
    std::string boxes;
    for (const auto& [ms, box, answer] : rig.platform.shown) {
      boxes += box.text.substr(0, box.text.find(' ')) + (box.usual == Word::No ? "! " : " ");
    }
    return boxes;
  };
  EXPECT_EQ(close({Word::No}), "Shutdown ");
  rig.Click("frmJudge.cmdStart");
  rig.At(1000);
  EXPECT_EQ(close({Word::No}), "A! ");
  EXPECT_EQ(rig.platform.shown[0].box.text,
            "A race is being flown. It is lost when Quorvane closes.\r\rShutdown Quorvane. Are you sure?");
  rig.At(40000);  // nobody flew
  ASSERT_TRUE(rig.judge().cmdSave.Enabled());
  disk.full = true;
  EXPECT_EQ(close({Word::Yes, Word::Yes, Word::No}), "Shutdown Do NOT! ");
  EXPECT_EQ(close({Word::No}), "NOT! ");
  EXPECT_NE(rig.platform.shown[0].box.text.find("No space left on device"), std::string::npos);
  EXPECT_FALSE(rig.platform.ended);
  rig.platform.whileOpen = [&](const DialogBox&) { disk.full = false; };
  EXPECT_EQ(close({Word::Yes}), "NOT! ");
  EXPECT_TRUE(rig.platform.ended);
  EXPECT_NE(disk.files[rig.file].find("Timestamp"), std::string::npos);
}

TEST(Shutdown, BySystemSavesAFinishedRaceAndAsksNothingWhateverBoxIsOpen) {
  for (const char* asks : {"frmLane1.lblStatus", "frmJudge.mnuHeatsPerRound"}) {
    ConsoleRig rig;
    rig.Load();
    rig.Click("frmJudge.cmdStart");
    rig.At(40000);
    rig.platform.whileOpen = [&](const DialogBox&) { rig.program.door().Enter({EventKind::Quit}); };
    rig.platform.shown.clear();
    rig.Click(asks);
    EXPECT_EQ(rig.platform.shown.size(), 1U);  // the second one comes back until it is answered
    EXPECT_TRUE(rig.platform.ended);
    EXPECT_EQ(rig.program.door().ErrorsContained(), 0);
    EXPECT_NE(rig.Value("Race1", "Timestamp"), "-");
    rig.Click("frmJudge.cmdStart");
    EXPECT_FALSE(rig.race().RaceActive);
  }
}

TEST(Clock, KeysWorkTheLanesInRowsOfFour) {
  ConsoleRig rig;
  rig.Load();
  rig.Key("F1");  // starts
  EXPECT_TRUE(rig.race().ManualStart);
  rig.At(6000);
  for (const char* key : {"F1", "F2", "F3", "F4"}) rig.Key(key);
  for (int i = 0; i < 4; ++i) EXPECT_EQ(rig.lane(i).Laps(), 1);
  for (const char* key : {"F6", "F11", "0", "5", "F13"}) rig.Key(key);
  EXPECT_EQ(rig.lane(0).CutCount(), 0);
  EXPECT_EQ(rig.lane(1).Events()[1].SourceName, "MP1");
  EXPECT_EQ(rig.lane(2).Events()[1].SourceName, "MP2");
  EXPECT_EQ(rig.lane(3).Events()[1].SourceName, "MP3");

  rig.At(60000);  // over, and not saved
  for (const char* key : {"F1", "F2", "F7", "0"}) rig.Key(key);
  for (int i = 0; i < 4; ++i) EXPECT_EQ(rig.lane(i).EventCount(), i == 0 ? 1 : 2);
  EXPECT_EQ(rig.judge().lblNotice.Caption(), "Race over: save it first");
  rig.Click("frmLane1.cmdCut");
  EXPECT_EQ(rig.lane(0).EventCount(), 2);
  rig.Click("frmJudge.cmdSave");
  EXPECT_FALSE(rig.judge().lblNotice.Visible());
  rig.Key("F1");
  EXPECT_TRUE(rig.judge().RaceBeingFlown());
}

TEST(Clock, CommentsOfARaceThatWasOnlyLookedAtStayWithIt) {
  ConsoleRig rig(true);
  rig.Load();
  rig.Click("frmJudge.cmdStart");
  rig.Type("frmJudge.txtComments", "gusty");
  rig.At(40000);
  rig.Click("frmJudge.cmdSave");
  rig.Click("frmJudge.cmdDecHeat");
  EXPECT_EQ(rig.judge().txtComments.Text(), "gusty");
  rig.Starter(500, true);
  EXPECT_EQ(rig.race().RaceNumber, 2);
  EXPECT_EQ(rig.judge().txtComments.Text(), "No comments");
}

TEST(AutoPrint, ComesBeforeTheSaveAndTellsWhatIsSaved) {
  struct Printer : HeatPrinter {
    explicit Printer(ConsoleRig& r) : rig(r) {}
    void PrintHeat(const RaceRecord& race) override {
      told.push_back(std::to_string(race.number) + race.lanes[0].placing +
                     (rig.judge().cmdSave.Enabled() && race.hasRun ? "" : " too late"));
    }
    ConsoleRig& rig;
    std::vector<std::string> told;
  };
  ConsoleRig rig(true);
  rig.Load();
  Printer printer(rig);
  rig.judge().SetPrinter(&printer);
  rig.Click("frmJudge.mnuAutoPrint");
  EXPECT_EQ(rig.Value("Current", "AutoPrint"), "True");
  rig.Starter(500, true);
  rig.Starter(70000, false);
  for (const int clock : {500, 70000, 500}) rig.Starter(clock, true);  // its stop was not heard

  // Only some places are given, and another program has put a race where this one was to go.
  std::int64_t now = rig.platform.ClockMs() + 59000;
  rig.At(now);
  rig.Starter(60000, true);
  for (int lap = 1; lap <= 10; ++lap) {
    rig.At(now += 6000);
    for (int lane = 0; lane < 4; ++lane) rig.Receive(Frame(4, 3, 1).Lane(lane, lap, 100));
  }
  rig.At(now += 15000);
  ASSERT_TRUE(rig.race().RaceDone);
  EXPECT_EQ(rig.lane(3).Status(), "Fourth");  // of equal times the lower lane comes first
  rig.Click("frmJudge.cmdReorder");
  rig.Click("frmLane2.cmdOrder");
  rig.program.project().SetProjectValue("Race3", "Timestamp", "7");
  rig.Starter(70000, false);
  EXPECT_EQ(printer.told, (std::vector<std::string>{"1DNF", "2DNF", "4Second"}));
}

}  // namespace
}  // namespace quorvane
