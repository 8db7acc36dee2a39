#include "replay/replay.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "base/text.h"
#include "journal/journal_text.h"
#include "tests/support/console_rig.h"

namespace quorvane {
namespace {

// A journal that has begun: radio on port 5, four heats a round, the event "Cup"; and its replay.
class Played {
 public:
  explicit Played(const std::string& records,
                  const std::string& answers = "0 answer text \"4\"\n0 answer text \"Cup\"\n")
      : journal(ReadJournal("quorvane-journal 1\n0 start 2026-11-21T09:00:00\n0 timers virtual\n"
                            "0 setting frmSerialPort CommPort \"5\"\n0 ports 3 5\n0 load\n" +
                            answers + records)),
        replay(journal, {.project = folder / "contest.ini"}) {
    replay.Run();
  }
  Control& operator[](const char* name) { return *replay.program().door().AllForms().FindControl(name); }
  RaceState& race() { return replay.program().race(); }
  const std::vector<VirtualPlatform::Shown>& boxes() { return replay.platform().shown; }

  ScratchFolder folder;
  SessionJournal journal;
  Replay replay;
};

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

  Played unfitting(start + "3000 click frmJudge.cmdReset\n5000 answer file \"x\"\n6000 end\n");
  EXPECT_EQ(unfitting.boxes()[2].answer.word, DialogAnswer::Word::Cancel);
  Played preset("5000 click frmJudge.mnuHeatsPerRound\n5001 answer ok\n6000 end\n");
  EXPECT_EQ(preset.boxes()[2].answer.text, "4");
}

TEST(Replay, BytesAndPortsGoOnBehindABox) {
  const std::string ask = "1000 click frmJudge.cmdStart\n3000 click frmJudge.cmdReset\n";
  const std::string frame =
      RecordText({.ms = 3200, .event = {.kind = EventKind::Bytes, .bytes = Frame(4, 3, 0).Bytes()}});
  Played run(ask + frame + "3300 line 1004\n3800 answer cancel\n3900 end\n");
  EXPECT_EQ(run.replay.program().link().Counters().Of(4).frames, 1);
  EXPECT_EQ(run["frmJudge.lblReadComm"].Tag(), "3200");
  EXPECT_EQ(run["frmJudge.lblReadComm"].BackColor(), kButtonFace);  // dark again
  EXPECT_EQ(run["frmJudge.lblReadComm"].ForeColor(), kButtonFace);
  EXPECT_EQ(run["frmSerialPort.lblMessage"].Caption(),
            "Framing Error. The hardware detected a framing error.");
  Played unplugged(ask + "3100 ports 3\n" + frame + "4000 answer cancel\n4001 end\n");
  EXPECT_EQ(unplugged["frmJudge.lblComm"].Caption(), "COM5 - Off");
  EXPECT_EQ(unplugged["frmJudge.lblComm"].ForeColor(), kRed);
  EXPECT_EQ(unplugged.replay.program().link().Counters().Of(4).frames, 0);
  Played busy(
      "1000 busy 3 8005 \"Access is denied\"\n2000 click frmSerialPort.optPort(1)\n2000 answer ok\n"
      "3000 busy 3 0 \"\"\n4000 click frmSerialPort.optPort(1)\n5000 end\n");
  ASSERT_EQ(busy.boxes().size(), 3U);
  EXPECT_NE(busy.boxes()[2].box.text.find("(8005) Access is denied"), std::string::npos);
  EXPECT_EQ(busy["frmJudge.lblComm"].Caption(), "COM3");
}

TEST(Replay, ABoxThatCannotBeLeftOrClosingTheConsoleEndsIt) {
  Played stuck("", "100 end\n");
  EXPECT_NE(stuck.replay.StuckIn().find("Heats per Round"), std::string::npos);
  EXPECT_NE(StateJson(stuck.replay).find("\"time\": 100"), std::string::npos);
  EXPECT_FALSE(stuck.replay.program().door().DialogOpen());
  EXPECT_FALSE(stuck["frmJudge.cmdRefly"].Enabled());
  Played closed(
      "1000 close frmJudge\n1500 answer no\n2000 close frmJudge\n2500 answer yes\n3000 click "
      "frmJudge.cmdStart\n");
  EXPECT_EQ(closed.replay.Now(), 2500);
  EXPECT_FALSE(closed.race().RaceActive);
}

// A console that was killed with a box open has cancelled nothing.
TEST(Replay, OnRequestAJournalWithoutEndStopsInItsOpenBox) {
  const SessionJournal journal = ReadJournal(
      "quorvane-journal 1\n0 start 2026-11-21T09:00:00\n0 timers recorded\n0 load\n0 answer text \"4\"\n"
      "0 answer text \"Cup\"\n1000 click frmJudge.mnuSetEventName\n");
  for (const bool stop : {false, true}) {
    const ScratchFolder folder;
    Replay replay(journal, {.project = folder / "contest.ini", .verify = stop});
    replay.Run();
    EXPECT_EQ(replay.program().judge().EventName(), stop ? "Cup" : "");
    EXPECT_EQ(replay.platform().shown.size(), stop ? 2U : 3U);
    EXPECT_FALSE(replay.program().door().DialogOpen());
  }
}

TEST(Replay, UnknownNamesDoNothingAndAreNamed) {
  Played run("1000 click frmJudge.cmdStrat\n1000 close frmDesk\n1000 click frmLane1.lblLap(99)\n2000 end\n");
  ASSERT_EQ(run.replay.Notes().size(), 3U);
  EXPECT_EQ(run.replay.Notes()[0], "line 9: there is no frmJudge.cmdStrat, the record does nothing");
}

TEST(Replay, AFileThatTheJournalNamesIsCopiedUnlessItIsToBeWrittenInPlace) {
  const ScratchFolder folder;
  const std::string named = folder / "other.ini";
  const std::string before = "[Current]\nTitle=Mine\nHeatsPerRound=3\n";
  std::ofstream(named) << before;
  const SessionJournal journal = ReadJournal(
      "quorvane-journal 1\n0 start 2026-11-21T09:00:00\n0 load\n0 answer text \"4\"\n0 answer text \"Cup\"\n"
      "1000 click frmJudge.mnuSelectFile\n1000 answer file " +
      JsonString(named) + "\n2000 end\n");
  for (const bool inPlace : {false, true}) {
    Replay replay(journal, {.project = folder / (inPlace ? "a.ini" : "b.ini"), .inPlace = inPlace});
    replay.Run();
    EXPECT_EQ(replay.program().judge().EventName(), "Mine");
    std::string after(std::istreambuf_iterator<char>(std::ifstream(named).rdbuf()), {});
    EXPECT_EQ(after == before, !inPlace);
  }
}

TEST(Replay, OutputsSayWhatHappened) {
  Played run(
      "2500 choose frmJudge.cboRaceMode 3\n2600 type frmJudge.txtComments \"a \\\"b\\\"\"\n3000 end\n");
  const std::pair<std::string, const char*> kParts[] = {
      {StateJson(run.replay), "\"RaceMode\": 3"},
      {StateJson(run.replay), "\"PylonCuts\": [0,0,0,0]"},
      {StateJson(run.replay), "\"text\":\"a \\\"b\\\"\""},
      {StateJson(run.replay), "\"frmSerialPort.optPort(2)\": {\"caption\":\"COM5\",\"value\":true"},
      {FrameRecords(run.replay.Sent()), "2000 tx 55AAFE00"},
      {DialogLines(run.boxes()), "{\"ms\":0,\"kind\":\"input\",\"title\":\"Heats per Round\",\"tex"},
      {SettingsText(run.replay.platform().settings), "[frmSerialPort]\nCommPort=5\n"},
  };
  for (const auto& [text, part] : kParts) EXPECT_NE(text.find(part), std::string::npos) << part;
}

}  // namespace
}  // namespace quorvane
