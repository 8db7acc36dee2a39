#include <gtest/gtest.h>
#include <sys/stat.h>

#include <functional>
#include <tuple>

#include "tests/support/console_rig.h"
#include "tests/support/ordinary_user.h"
#include "tests/support/scratch_folder.h"

namespace quorvane {
namespace {

using Word = DialogAnswer::Word;

// Starts by hand and lets the lanes fly ten laps, 100 ms apart.
void FlyHeat(ConsoleRig& rig) {
  const std::int64_t start = rig.platform.ClockMs();
  rig.Click("frmJudge.cmdStart");
  for (int lap = 0; lap < 10; ++lap) {
    for (int lane = 0; lane < 4; ++lane) {
      rig.At(start + 6000 + lap * 4000 + lane * 100);
      rig.Key("F" + std::to_string(lane + 1));
    }
  }
  rig.At(start + 60000);
  ASSERT_TRUE(rig.race().RaceDone);
}

TEST(Project, ANewOneAsksForItsHeatsAndItsName) {
  ConsoleRig rig;
  rig.Load();
  ASSERT_EQ(rig.platform.shown.size(), 2U);
  EXPECT_EQ(rig.platform.shown[0].box.title, "Heats per Round");
  EXPECT_EQ(rig.platform.shown[1].box.text, "Enter the Event Name:");
  EXPECT_EQ(rig.judge().Caption(), "Quorvane - Cup (contest.ini) - ");
  EXPECT_EQ(rig.Value("Current", "EventFormat"), "Lap, Station, EventType, Pylon, Time");
  EXPECT_EQ(rig.Value("Current", "NumberReflys"), "0");
  EXPECT_EQ(
      FileBytes(rig.folder / "contest.csv"),
      "Round,Heat(racemode&time),Lane,Finish,Cuts,Time,Lap1,Lap2,Lap3,Lap4,Lap5,Lap6,Lap7,Lap8,Lap9,Lap10,"
      "Comments\r\n");
}

TEST(Project, TheFirstOneOnAMachineGetsItsFolderAndTodaysName) {
  ConsoleRig rig;
  rig.platform.settings = {};
  rig.Load();
  EXPECT_EQ(rig.race().ProjectFile, rig.folder / "Quorvane/21-Nov-2026.ini");
  EXPECT_TRUE(FileExists(rig.race().ProjectFile));
}

TEST(Project, ThePreviousOneIsOfferedAndOpensAtTheFirstRaceNotRun) {
  ConsoleRig rig;
  PutFile(rig.file,
          "; by hand\n[Current]\nTitle=Reno\nHeatsPerRound=3\nRace=1\n"
          "[Race1]\nTimestamp=1\n[race2]\nTimeStamp=46347.5, "
          "x\n[Race3]\nTimestamp=-1\n[Race4]\nTimestamp=zero\n");
  rig.Answer(Word::Yes);
  rig.program.door().Enter({EventKind::Load});
  ASSERT_EQ(rig.platform.shown.size(), 1U);
  EXPECT_EQ(rig.platform.shown[0].box.text, "Open previous project? (Reno)\r\r" + rig.file);
  EXPECT_EQ(rig.race().RaceNumber, 4);
  EXPECT_EQ(rig.judge().txtRound.Text(), "2");
  EXPECT_EQ(FileBytes(rig.file).substr(0, 21), "; by hand\n[Current]\nT");
}

TEST(Project, CancelEndsTheProgramAndNoAsksForANewFile) {
  {
    ConsoleRig rig;
    PutFile(rig.file, "");
    rig.program.door().Enter({EventKind::Load});
    EXPECT_TRUE(rig.platform.ended);
  }
  ConsoleRig rig;
  PutFile(rig.file, "");
  rig.Answer(Word::No);
  rig.Answer(Word::File, rig.folder / "deep/er/new.ini");
  rig.Load();
  EXPECT_EQ(rig.platform.shown[1].box.preset, rig.folder / "21-Nov-2026.ini");
  EXPECT_TRUE(FileExists(rig.folder / "deep/er/new.ini"));
  EXPECT_EQ(rig.platform.settings.GetSetting("DiskFile", "FileName", ""), rig.folder / "deep/er/new.ini");
  EXPECT_EQ(rig.platform.settings.GetSetting("DiskFile", "InitDir", ""), rig.folder / "deep/er/");
}

TEST(Project, ASecondConsoleOnTheSameFileIsTurnedAway) {
  ConsoleRig first;
  first.Load();
  ConsoleRig second;
  second.platform.settings.SaveSetting("DiskFile", "FileName", first.file);
  second.Answer(Word::Yes);
  second.Answer(Word::Ok);
  second.Answer(Word::File, second.folder / "own.ini");
  second.Load();
  EXPECT_NE(second.platform.shown[1].box.text.find("open in another console"), std::string::npos);
  EXPECT_EQ(second.race().ProjectFile, second.folder / "own.ini");
}

TEST(Project, TheOneOfTheCommandLineIsOpenedWithoutAsking) {
  ConsoleRig rig;
  rig.program.judge().SetStartupProject(rig.folder / "day/flown.ini");
  rig.Load();
  EXPECT_EQ(rig.race().ProjectFile, rig.folder / "day/flown.ini");
  EXPECT_EQ(rig.platform.shown[0].box.title, "Heats per Round");
  EXPECT_EQ(rig.platform.settings.GetSetting("DiskFile", "FileName", ""), rig.file);

  ConsoleRig second;
  second.program.judge().SetStartupProject(rig.folder / "day/flown.ini");
  second.program.door().Enter({EventKind::Load});
  ASSERT_EQ(second.platform.shown.size(), 2U);
  EXPECT_EQ(second.platform.shown[1].box.preset, rig.folder / "day/21-Nov-2026.ini");
  EXPECT_TRUE(second.platform.ended);
}

TEST(Project, ASavedRaceIsWrittenInOrder) {
  ConsoleRig rig;
  rig.Load();
  rig.Click("frmJudge.cmdStart");
  rig.At(6000);
  rig.Key("F3");
  rig.At(50000);
  rig.Click("frmJudge.cmdSave");
  const std::string file = FileBytes(rig.file);
  EXPECT_EQ(file.substr(0, file.find("[Race1_Lane1]")),
            "[Current]\r\nRace=2\r\nHeat=2\r\nRound=1\r\nNumberReflys=0\r\n"
            "EventFormat=Lap, Station, EventType, Pylon, Time\r\nHeatsPerRound=4\r\nTitle=Cup\r\n"
            "[Race1]\r\nTimestamp=46347.3755787037, 11/21/2026 9:00:50 AM\r\n"
            "CurrentRace=1 (h=1, r=1)\r\nRaceMode=2, AMA 1324\r\nComments=No comments\r\n");
  EXPECT_EQ(file.substr(file.find("[Race1_Lane3]"), file.find("[Race1_Lane4]") - file.find("[Race1_Lane3]")),
            "[Race1_Lane3]\r\nNumEvents=1\r\nNumCuts=0\r\nNumLaps=1\r\nPlacing=DNF\r\nPosition=100\r\n"
            "Time=nt\r\nLaps=6.00,DNF,,,,,,,,,\r\nCuts=\r\nEvent0=1,4,L,TM,6000,0\r\n");
}

TEST(Project, AnotherRaceModeNeitherChangesWhatIsShownNorIsChanged) {
  ConsoleRig rig;
  rig.Load();
  const auto fly = [&](int mode) {
    rig.judge().ApplyRaceMode(mode);
    rig.Click("frmJudge.cmdStart");
    const std::int64_t start = rig.platform.ClockMs();
    for (int lap = 0; lap < 10; ++lap) {
      rig.At(start + 8000 + lap * 4000);
      for (const char* key : {"F1", "F2", "F3", "F4"}) rig.Key(key);
      if (lap == 4) rig.Key("F5");
    }
    rig.At(start + 80000);
    ASSERT_TRUE(rig.race().RaceDone);
    rig.Click("frmJudge.cmdSave");
  };
  const auto shows = [&](int race, int target, const char* first, const char* fourth) {
    rig.race().RaceNumber = static_cast<std::int16_t>(race);
    rig.judge().ShowCurrentRace();
    EXPECT_EQ(rig.lane(0).LapTarget(), target) << race;
    EXPECT_EQ(rig.lane(0).lblStatus.Caption(), first) << race;
    EXPECT_EQ(rig.lane(3).lblStatus.Caption(), fourth) << race;
  };
  fly(2);  // a cut costs lane 1 an eleventh lap
  fly(4);  // here it does not; lane 4 stays down
  EXPECT_EQ(rig.Value("Race2_Lane4", "Placing") + rig.Value("Race2_Lane4", "Laps"), ",,,,,,,,,,");
  for (const int mode : {2, 4}) {
    rig.judge().ApplyRaceMode(mode);
    shows(1, 11, "DNF", "Third");
    EXPECT_EQ(rig.lane(3).EventCount(), 10);
    EXPECT_TRUE(rig.lane(3).Visible());
    shows(2, 10, "Third", "");
    EXPECT_FALSE(rig.lane(3).Visible());
    EXPECT_EQ(rig.race().RaceMode, mode);
    shows(1, 11, "DNF", "Third");
    // A race that has not run is empty, also on a lane that will not fly it.
    shows(3, 10, "", "");
    EXPECT_EQ(rig.lane(3).EventCount(), 0);
    for (const Control* cell : rig.lane(3).lblLap) EXPECT_EQ(cell->Caption(), "") << mode;
  }
}

// What cannot be read, or is none of ours, is told at the start and never replaced; another file is asked
// for.
TEST(Project, WhatIsNoProjectIsToldAndLeftAlone) {
  using Path = const std::string&;
  const auto unreadable = [](Path path) {
    PutFile(path, "[Current]\nTitle=Reno\n");
    std::filesystem::permissions(path, std::filesystem::perms(0222));
  };
  const std::tuple<const char*, const char*, std::function<void(Path)>> kObstacles[] = {
      {"contest.ini", "is not a file", [](Path path) { std::filesystem::create_directory(path); }},
      {"contest.ini", "is not a file", [](Path path) { ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0); }},
      {"contest.ini", "Permission denied", unreadable},
      {"contest.ini", "is no project", [](Path path) { PutFile(path, "[frmSerialPort]\nCommPort=5\n"); }},
      {"contest.ini/day.ini", "cannot be made", [](Path path) { PutFile(path, "a file"); }},
      {"contest.ini", "Cannot read", [](Path path) { std::filesystem::create_symlink(path, path); }},
  };
  for (const auto& [name, told, make] : kObstacles) {
    SCOPED_TRACE(told);
    ConsoleRig rig;
    make(rig.file);
    std::filesystem::permissions(rig.folder.Path(), std::filesystem::perms::all);
    rig.platform.settings.SaveSetting("DiskFile", "FileName", rig.folder / name);
    const AsOrdinaryUser user;
    const auto before = std::filesystem::symlink_status(rig.file);
    if (FileExists(rig.folder / name)) rig.Answer(Word::Yes);
    rig.Answer(Word::Ok);
    rig.Answer(Word::File, rig.folder / "own.ini");
    rig.Load();
    const std::size_t box = rig.platform.shown.size() - 4;
    EXPECT_NE(rig.platform.shown[box].box.text.find(told), std::string::npos)
        << rig.platform.shown[box].box.text;
    EXPECT_EQ(rig.platform.shown[box + 1].box.title, "Open New Quorvane Project");
    EXPECT_EQ(rig.platform.shown[box + 1].box.preset, rig.folder / "21-Nov-2026.ini");
    EXPECT_EQ(rig.race().ProjectFile, rig.folder / "own.ini");
    EXPECT_EQ(rig.judge().EventName(), "Cup");
    EXPECT_EQ(std::filesystem::symlink_status(rig.file).type(), before.type());
    EXPECT_EQ(std::filesystem::symlink_status(rig.file).permissions(), before.permissions());
  }
}

// Counts what the console asks of the disk.
struct CountedFiles : FileOps {
  int looks = 0, replacements = 0;

  std::error_code Look(const std::string& path, FileStamp& stamp) override {
    ++looks;
    return FileOps::Look(path, stamp);
  }
  std::error_code Rename(const std::string& from, const std::string& to) override {
    ++replacements;
    return FileOps::Rename(from, to);
  }
};

TEST(Project, TheDiskIsAskedOnceASecondNeverInTheRaceAndWrittenOnceASave) {
  CountedFiles files;
  ConsoleRig rig(false, files);
  rig.Load();
  files.looks = 0;
  for (int i = 0; i < 50; ++i) {
    rig.At(1000 + i * 100);
    rig.Click("frmJudge.lblStatus");
  }
  EXPECT_GE(files.looks, 4);
  EXPECT_LE(files.looks, 6);

  rig.Click("frmJudge.cmdStart");
  files.looks = 0;
  for (int lap = 0; lap < 9; ++lap) {
    rig.At(rig.platform.ClockMs() + 4000);
    for (const char* key : {"F1", "F2", "F3", "F4"}) rig.Key(key);
  }
  EXPECT_EQ(files.looks, 0);
  rig.At(rig.platform.ClockMs() + 60000);
  ASSERT_TRUE(rig.judge().cmdSave.Enabled());
  files.replacements = 0;
  rig.Click("frmJudge.cmdSave");
  EXPECT_EQ(files.replacements, 1);
  EXPECT_NE(FileBytes(rig.file).find("[Current]\r\nRace=2"), std::string::npos);
}

TEST(Project, AReflyKeepsTheOriginalAndPointsToTheRefly) {
  ConsoleRig rig;
  rig.Load();
  FlyHeat(rig);
  rig.Click("frmJudge.cmdSave");
  const std::string original = rig.Value("Race1", "Timestamp");
  for (const char* id : {"1", "2"}) {
    rig.Click("frmJudge.cmdDecHeat");
    rig.Click("frmJudge.cmdRefly");
    EXPECT_EQ(rig.judge().fraHeatControl.Caption(), "Race 1 REFLY");
    EXPECT_TRUE(rig.judge().cmdStart.Enabled());
    FlyHeat(rig);
    EXPECT_EQ(rig.race().RaceNumber, 1);
    EXPECT_FALSE(rig.judge().cmdRefly.Enabled());
    rig.Click("frmJudge.cmdSave");
    EXPECT_EQ(rig.Value("Race1", "ReflyID"), std::string(id) + " (index to refly entry for this race");
    EXPECT_EQ(rig.Value("Current", "NumberReflys"), id);
    EXPECT_EQ(rig.Value(std::string("Refly") + id + "_Lane1", "NumEvents"), "10");
    EXPECT_FALSE(rig.race().ReflyMode);
    EXPECT_EQ(rig.race().RaceNumber, 2);
  }
  EXPECT_EQ(rig.Value("Race1", "Timestamp"), original);
  EXPECT_EQ(rig.Value("Refly3", "Timestamp"), "-");
  rig.Click("frmJudge.cmdDecHeat");
  EXPECT_EQ(rig.judge().fraHeatControl.Caption(), "Race 1 REFLY");
  EXPECT_EQ(rig.lane(0).lblStatus.Caption(), "First");
}

// The starter begins a race while a box for another project is open; it may even end it.
TEST(Project, ARaceBegunBehindABoxGoesOnInItsProject) {
  const struct {
    DialogKind kind;
    const char* title;
    bool finished, moves;
  } kCases[] = {{DialogKind::OpenFile, "Open Existing Quorvane Project", false, false},
                {DialogKind::OpenFile, "Open Existing Quorvane Project", true, false},
                {DialogKind::Input, "Heats per Round", false, true},
                {DialogKind::Input, "", false, true}};
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.title);
    ConsoleRig rig(true);
    rig.Load();
    rig.Answer(Word::File, rig.folder / "other.ini");
    rig.Answer(Word::Text, "3");
    rig.Answer(Word::Text, "Derby");
    rig.platform.whileOpen = [&](const DialogBox& box) {
      if (box.kind != c.kind || box.title != c.title) return;
      rig.Starter(0, true);
      if (c.finished) rig.At(rig.platform.ClockMs() + 91000);
    };
    rig.Click("frmJudge.mnuSelectFile");
    EXPECT_EQ(rig.race().ProjectFile, c.moves ? rig.folder / "other.ini" : rig.file);
    EXPECT_EQ(rig.race().RaceDone, c.finished);
    EXPECT_EQ(rig.judge().cmdSave.Enabled(), c.finished);
    EXPECT_TRUE(rig.judge().cmdReset.Enabled());
    EXPECT_FALSE(rig.judge().cmdStart.Enabled() || rig.race().RaceLoaded);
    EXPECT_EQ(rig.race().HeatsPerRound, *c.title == '\0' ? 3 : c.moves ? 1 : 4);
  }
}

// Another program has written to the file, or it has come only now.
TEST(Project, ASaveNeverOverwritesARaceThatIsThere) {
  const struct {
    int race;
    const char* there;
    const char* saved;
    const char* place;
  } kCases[] = {{1, "[Race1]\nTimestamp=7\n[Race2]\nTimestamp=8\n", "Race3", "3 (h=3, r=1)"},
                {4, "[Race4]\nTimestamp=7\n[Race9]\nTimestamp=8\n", "Race5", "5 (h=1, r=2)"},
                {32767, "[Race32767]\nTimestamp=7\n[Race1]\nTimestamp=8\n", "Race2", "2 (h=2, r=1)"}};
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.race);
    ConsoleRig rig;
    rig.Load();
    rig.race().RaceNumber = static_cast<std::int16_t>(c.race);
    rig.judge().ShowCurrentRace();
    FlyHeat(rig);
    const std::string there = std::string("[Current]\nTitle=Cup\nHeatsPerRound=4\n") + c.there;
    PutFile(rig.file, there);
    rig.Click("frmJudge.cmdSave");
    const std::string file = FileBytes(rig.file);
    EXPECT_NE(file.find(c.there), std::string::npos);
    EXPECT_EQ(rig.Value(c.saved, "CurrentRace"), c.place);
    EXPECT_EQ(rig.Value(std::string(c.saved) + "_Lane1", "NumEvents"), "10");
    EXPECT_EQ(rig.judge().lblNotice.Caption(), "Race " + std::to_string(c.race) +
                                                   " is in the project already: saved as " +
                                                   std::string(c.saved).substr(4));
  }
}

TEST(Project, AReflyHasItsOwnCommentsAndIsOnUntilItIsSaved) {
  ConsoleRig rig;
  rig.Load();
  FlyHeat(rig);
  rig.Type("frmJudge.txtComments", "original");
  rig.Click("frmJudge.cmdSave");
  rig.Click("frmJudge.cmdDecHeat");
  rig.Type("frmJudge.txtComments", "over a saved race");
  rig.Click("frmLane1.lblStatus");
  EXPECT_NE(rig.LastBox(), "Finish Order");
  EXPECT_EQ(rig.judge().txtComments.Text() + " " + rig.lane(0).lblStatus.Caption(), "original First");

  rig.Click("frmJudge.cmdRefly");
  EXPECT_EQ(rig.judge().txtComments.Text(), "No comments");
  rig.Type("frmJudge.txtComments", "once more");
  rig.Click("frmJudge.cmdStart");
  rig.Answer(Word::No);
  rig.Click("frmJudge.cmdReset");
  EXPECT_EQ(rig.judge().fraHeatControl.Caption(), "Race 1 REFLY") << "called off, not over";
  EXPECT_EQ(rig.judge().txtComments.Text(), "once more");
  rig.Click("frmJudge.cmdRefly");
  EXPECT_EQ(rig.judge().txtComments.Text() + " " + rig.lane(0).lblStatus.Caption(), "original First");

  rig.Click("frmJudge.cmdRefly");
  rig.Type("frmJudge.txtComments", "again");
  FlyHeat(rig);
  rig.Click("frmJudge.cmdSave");
  EXPECT_EQ(rig.Value("Race1", "Comments") + " " + rig.Value("Refly1", "Comments"), "original again");
  EXPECT_EQ(rig.race().RaceNumber, 2);
  EXPECT_TRUE(rig.judge().txtComments.Enabled());
}

TEST(Project, AReflyNeverOverwritesAnotherHoweverTheFileCounts) {
  const std::pair<const char*, const char*> kCases[] = {{"0", "3"},     {"x", "3"}, {"32767", "3"},
                                                        {"99999", "3"}, {"5", "6"}, {"-9", "-8"}};
  for (const auto& [counted, used] : kCases) {
    ConsoleRig rig;
    PutFile(rig.file,
            "[Current]\nTitle=T\nHeatsPerRound=4\n[Race1]\nTimestamp=1\n[Refly1]\nTimestamp=1\n"
            "[Refly2]\nTimestamp=1\n");
    rig.Answer(Word::Yes);
    rig.program.door().Enter({EventKind::Load});
    rig.Click("frmJudge.cmdDecHeat");
    rig.Click("frmJudge.cmdRefly");
    FlyHeat(rig);
    rig.program.project().SetProjectValue("Current", "NumberReflys", counted);
    rig.Click("frmJudge.cmdSave");
    EXPECT_EQ(rig.Value("Race1", "ReflyID"), std::string(used) + " (index to refly entry for this race");
    EXPECT_EQ(rig.Value("Current", "NumberReflys"), used);
    EXPECT_EQ(rig.Value(std::string("Refly") + used, "CurrentRace"), "1 (h=1, r=1)");
    EXPECT_EQ(rig.Value("Refly2", "Timestamp"), "1");
  }
}

TEST(Project, AnotherIsChosenFromTheMenu) {
  ConsoleRig rig;
  PutFile(rig.folder / "other.ini",
          "[Current]\nTitle=Derby\nHeatsPerRound=2\nAutoPrint=1\n[Race1]\nTimestamp=1\n");
  rig.Load();
  EXPECT_FALSE(rig.judge().mnuAutoPrint.Checked());
  FlyHeat(rig);
  rig.Answer(Word::Cancel);
  rig.Click("frmJudge.mnuSelectFile");
  const DialogBox box = rig.platform.shown.back().box;
  EXPECT_EQ(box.title, "Open Existing Quorvane Project");
  EXPECT_EQ(box.preset, rig.file);
  EXPECT_EQ(box.folder, rig.folder.Path());
  EXPECT_EQ(rig.race().ProjectFile, rig.file);
  EXPECT_EQ(rig.race().RaceNumber, 2);  // saved all the same

  rig.Answer(Word::File, rig.folder / "other.ini");
  rig.Click("frmJudge.mnuSelectFile");
  EXPECT_EQ(rig.judge().Caption(), "Quorvane - Derby (other.ini) - ");
  EXPECT_EQ(rig.race().RaceNumber, 2);
  EXPECT_EQ(rig.race().HeatsPerRound, 2);
  EXPECT_TRUE(rig.judge().mnuAutoPrint.Checked());
  EXPECT_EQ(rig.platform.settings.GetSetting("DiskFile", "FileName", ""), rig.folder / "other.ini");
  EXPECT_TRUE(FileExists(rig.folder / "other.csv"));
  rig.Click("frmJudge.mnuAutoPrint");
  rig.Click("frmJudge.mnuAutoPrint");
  EXPECT_EQ(rig.Value("Current", "AutoPrint"), "True");
  rig.Answer(Word::File, rig.folder / "other.ini");
  rig.Click("frmJudge.mnuSelectFile");
  EXPECT_FALSE(rig.judge().mnuAutoPrint.Checked());  // the word is no number
}

TEST(Project, HandEditedNonsenseStillOpens) {
  const char* const kFiles[] = {
      "[Current]\nRace=99999999\nHeatsPerRound=1e9\nNumberReflys=x\nTitle=T\n",
      "[Current]\nRace=-4\nHeatsPerRound=-2\n[Race1]\nTimestamp=1\nReflyID=1e30\nComments=\n",
      "\xEF\xBB\xBF[Current]\nTitle=\xFF\xFE\nHeatsPerRound=4\n[Race1]\nTimestamp=5\nReflyID=7\n"
      "[Refly7_Lane1]\nNumEvents=99999\nNumLaps=-3\nEvent0=300,999,Z\nEvent1=1,4,L,TM,x,0\n",
  };
  for (const char* text : kFiles) {
    ConsoleRig rig;
    PutFile(rig.file, text);
    rig.Answer(Word::Yes);
    rig.Load();
    EXPECT_TRUE(rig.judge().Visible()) << text;
    EXPECT_GE(rig.race().RaceNumber, 1);
    for (int i = 0; i < 3; ++i) rig.Click("frmJudge.cmdDecHeat");
    EXPECT_EQ(rig.race().RaceNumber, 1);
    while (!rig.judge().cmdStart.Enabled()) rig.Click("frmJudge.cmdIncHeat");
    FlyHeat(rig);
    rig.Click("frmJudge.cmdSave");
  }
}

TEST(Project, WhatCannotBeWrittenIsShownAndTriedAgain) {
  for (const bool closing : {false, true}) {
    ConsoleRig rig;
    rig.Load();
    FlyHeat(rig);
    const std::string here = rig.folder.Path().substr(0, rig.folder.Path().size() - 1);
    std::filesystem::rename(here, here + "-away");
    rig.Click("frmJudge.cmdSave");
    EXPECT_TRUE(rig.judge().lblNotSaved.Visible());
    EXPECT_EQ(rig.Value("Race1_Lane1", "NumEvents"), "10");
    std::filesystem::rename(here + "-away", here);
    if (closing) {
      rig.Answer(Word::Yes);
      rig.Click("frmJudge.mnuExit");
    } else {
      rig.At(rig.platform.ClockMs() + 4000);
    }
    EXPECT_FALSE(rig.judge().lblNotSaved.Visible());
    EXPECT_NE(FileBytes(rig.file).find("[Race1_Lane4]"), std::string::npos);
  }
}

}  // namespace
}  // namespace quorvane
