#include "tools/replay/replay.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>

#include "common/journal_text.h"
#include "tests/support/console_rig.h"
#include "tools/replay/outputs.h"

namespace quorvane {
namespace {

// A journal that has begun: radio on port 5, four heats a round, the event "Cup"; and its replay.
class Played {
 public:
  explicit Played(const std::string& records, const std::string& before = {})
      : Played(true, "0 answer text \"4\"\n0 answer text \"Cup\"\n" + records, before) {}
  Played(bool, const std::string& afterLoad, const std::string& before)
      : journal(ReadJournal("quorvane-journal 1\n0 start 2026-11-21T09:00:00\n0 timers virtual\n"
                            "0 setting frmSerialPort CommPort \"5\"\n0 ports 3 5\n" +
                            before + "0 load\n" + afterLoad)),
        replay(journal, {.project = folder / "contest.ini"}) {
    replay.Run();
  }
  Control& operator[](const char* name) { return *replay.program().door().AllForms().FindControl(name); }
  RaceState& race() { return replay.program().race(); }
  const std::vector<VirtualPlatform::Shown>& boxes() { return replay.platform().shown; }

  TempFolder folder;
  SessionJournal journal;
  Replay replay;
};

std::string Rx(std::int64_t ms, const Frame& frame) {
  return EventRecord(ms, {.kind = EventKind::Bytes, .bytes = frame.Bytes()});
}

TEST(Replay, InOneMillisecondRecordsComeBeforeTimers) {
  // The clock ticks every 100 ms from the start at 1000. A tick due at 2000 sees what came at 2000.
  const std::string start = "1000 click frmJudge.cmdStart\n";
  EXPECT_EQ(Played(start + "2000 end\n")["frmJudge.lblStatus"].Caption(), "0.9");
  EXPECT_EQ(Played(start + "2001 end\n")["frmJudge.lblStatus"].Caption(), "1.0");
  // Two stations are aged by the same timer; its firing at 2000 polls the first station.
  EXPECT_TRUE(Played("2000 end\n").replay.Sent().empty());
  EXPECT_EQ(Played("2001 end\n").replay.Sent().size(), 1U);
}

TEST(Replay, AnAnswerIsForTheOpenBoxOrTheNextOne) {
  const std::string start = "1000 click frmJudge.cmdStart\n";
  Played kept(start + "2000 answer no\n3000 click frmJudge.cmdReset\n4000 end\n");
  ASSERT_EQ(kept.boxes().size(), 3U);
  EXPECT_EQ(kept.boxes()[2].ms, 3000);
  EXPECT_FALSE(kept.race().RaceActive);

  // What the operator does while the box is open is lost, but the clock goes on.
  Played open(start +
              "3000 click frmJudge.cmdReset\n3500 key F5\n3600 click frmJudge.cmdSave\n5000 hover "
              "frmJudge.cmdSave\n");
  EXPECT_EQ(open.boxes().size(), 3U);
  EXPECT_EQ(open.boxes()[2].answer.word, DialogAnswer::Word::Cancel);  // the end of the journal
  EXPECT_TRUE(open.race().RaceActive);
  EXPECT_EQ(open["frmJudge.lblStatus"].Caption(), "3.9");

  Played answered(start + "3000 click frmJudge.cmdReset\n5000 answer file \"x\"\n6000 end\n");
  EXPECT_EQ(answered.boxes()[2].answer.word, DialogAnswer::Word::Cancel);  // does not fit
  Played preset("5000 click frmJudge.mnuHeatsPerRound\n5001 answer ok\n6000 end\n");
  EXPECT_EQ(preset.boxes()[2].answer.text, "4");
}

TEST(Replay, BytesAndLineErrorsAndPortsGoOnBehindABox) {
  const std::string ask = "1000 click frmJudge.cmdStart\n3000 click frmJudge.cmdReset\n";
  Played run(ask + Rx(3100, Frame(4, 3, 0)) + "3200 line 1004\n3800 answer cancel\n3900 end\n");
  EXPECT_EQ(run.replay.program().link().LastStationMessage(4).From, 4);
  EXPECT_EQ(run["frmSerialPort.lblMessage"].Caption(),
            "Framing Error. The hardware detected a framing error.");
  Played unplugged(ask + "3100 ports 3\n" + Rx(3200, Frame(4, 3, 0)) + "4000 answer cancel\n4001 end\n");
  EXPECT_EQ(unplugged["frmJudge.lblComm"].Caption(), "COM5 - Off");
  EXPECT_EQ(unplugged.replay.program().link().LastStationMessage(4).From, 0);
}

TEST(Replay, ABusyPortFailsWithItsReasonAndCanBeFreedAgain) {
  Played run(
      "1000 busy 3 8005 \"Access is denied\"\n2000 click frmSerialPort.optPort(1)\n2000 answer ok\n"
      "3000 busy 3 0 \"\"\n4000 click frmSerialPort.optPort(1)\n5000 end\n");
  ASSERT_EQ(run.boxes().size(), 3U);
  EXPECT_NE(run.boxes()[2].box.text.find("(8005) Access is denied"), std::string::npos);
  EXPECT_EQ(run["frmJudge.lblComm"].Caption(), "COM3");
}

TEST(Replay, ABoxThatCannotBeLeftEndsIt) {
  Played run(true, "100 end\n", "");
  EXPECT_NE(run.replay.StuckIn().find("Heats per Round"), std::string::npos);
  EXPECT_EQ(run.boxes().size(), 1U);
  EXPECT_NE(StateJson(run.replay).find("\"time\": 100"), std::string::npos);
  EXPECT_FALSE(run.replay.program().door().DialogOpen());
}

// A console that was killed with a box open has cancelled nothing.
TEST(Replay, OnRequestAJournalWithoutEndStopsInItsOpenBox) {
  const SessionJournal journal = ReadJournal(
      "quorvane-journal 1\n0 start 2026-11-21T09:00:00\n0 timers recorded\n0 load\n0 answer text \"4\"\n"
      "0 answer text \"Cup\"\n1000 click frmJudge.mnuSetEventName\n");
  for (const bool stop : {false, true}) {
    const TempFolder folder;
    Replay replay(journal, {.project = folder / "contest.ini", .stopInOpenBox = stop});
    replay.Run();
    EXPECT_EQ(replay.program().judge().EventName(), stop ? "Cup" : "");
    EXPECT_EQ(replay.platform().shown.size(), stop ? 2U : 3U);
    EXPECT_FALSE(replay.program().door().DialogOpen());
  }
}

TEST(Replay, ClosingTheConsoleEndsTheJournal) {
  Played run(
      "1000 close frmJudge\n1500 answer no\n2000 close frmJudge\n2500 answer yes\n3000 click "
      "frmJudge.cmdStart\n");
  EXPECT_EQ(run.replay.Now(), 2500);
  EXPECT_FALSE(run.race().RaceActive);
}

TEST(Replay, UnknownNamesDoNothingAndAreNamed) {
  Played run("1000 click frmJudge.cmdStrat\n1000 close frmDesk\n1000 click frmLane1.lblLap(99)\n2000 end\n");
  ASSERT_EQ(run.replay.Notes().size(), 3U);
  EXPECT_EQ(run.replay.Notes()[0], "line 9: there is no frmJudge.cmdStrat, the record does nothing");
}

TEST(Replay, AnExistingProjectIsAskedAbout) {
  TempFolder folder;
  std::ofstream(folder / "old.ini") << "[Current]\nTitle=Spring Cup\nHeatsPerRound=3\n";
  const SessionJournal journal = ReadJournal(
      "quorvane-journal 1\n0 start 2026-11-21T09:00:00\n0 setting DiskFile FileName \"elsewhere.ini\"\n"
      "0 load\n0 answer yes\n1 end\n");
  Replay replay(journal, {.project = folder / "old.ini"});
  replay.Run();
  ASSERT_EQ(replay.platform().shown.size(), 1U);
  EXPECT_EQ(replay.program().race().HeatsPerRound, 3);
  EXPECT_EQ(replay.program().judge().Caption(), "Quorvane - Spring Cup (old.ini) - ");
}

TEST(Replay, OutputsSayWhatHappened) {
  Played run(
      "2500 choose frmJudge.cboRaceMode 3\n2600 type frmJudge.txtComments \"a \\\"b\\\"\"\n3000 end\n");
  const std::string state = StateJson(run.replay);
  for (const char* part : {"\"time\": 3000", "\"RaceMode\": 3", "\"CommActive\": true", "\"Events\": []",
                           "\"PylonCuts\": [0, 0, 0, 0]", "\"text\": \"a \\\"b\\\"\"",
                           "\"frmSerialPort.optPort(2)\": {\"caption\": \"COM5\", \"value\": true",
                           "\"frmJudge.chkAudio\": {\"caption\": \"Audio Countdown\", \"value\": 0"}) {
    EXPECT_NE(state.find(part), std::string::npos) << part;
  }
  EXPECT_EQ(FrameRecords(run.replay.Sent()).substr(0, 16), "2000 tx 55AAFE00");
  EXPECT_EQ(DialogLines(run.boxes()).substr(0, 59),
            "{\"ms\": 0, \"kind\": \"input\", \"title\": \"Heats per Round\", \"tex");
  EXPECT_NE(SettingsText(run.replay.platform().settings).find("[frmSerialPort]\nCommPort=5\n"),
            std::string::npos);
}

}  // namespace
}  // namespace quorvane
