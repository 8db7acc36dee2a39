#include "replay/replay.h"

#include <gtest/gtest.h>

#include <sstream>

#include "journal/journal_text.h"
#include "tests/support/console_rig.h"
#include "tests/support/test_data.h"

namespace quorvane {
namespace {

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

TEST(Replay, OutputsSayWhatHappened) {
  const SessionJournal journal = ReadJournal(
      "quorvane-journal 1\n0 start 2026-11-21T09:00:00\n0 timers virtual\n"
      "0 setting frmSerialPort CommPort \"5\"\n0 ports 3 5\n0 load\n"
      "0 answer text \"4\"\n0 answer text \"Cup\"\n"
      "2500 choose frmJudge.cboRaceMode 3\n2600 type frmJudge.txtComments \"a \\\"b\\\"\"\n"
      "2700 click frmJudge.mnuSavePdf\n2700 answer cancel\n2700 click frmJudge.mnuSelectFile\n"
      "2700 answer cancel\n2800 click frmJudge.cmdStart\n2900 click frmJudge.cmdReset\n2900 answer cancel\n"
      "2900 click frmJudge.mnuExit\n2900 answer no\n9000 key F1\n9000 key F5\n9100 end\n");
  const ScratchFolder folder;
  Replay replay(journal, {.project = folder / "contest.ini"});
  replay.Run();
  std::istringstream state(StateJson(replay));
  std::string told;
  for (std::string line; std::getline(state, line);) {
    const auto is = [&](const char* control) { return line.starts_with(control); };
    const bool shown = !is("\"frm") || is("\"frmJudge.cboRaceMode") || is("\"frmJudge.txtComments") ||
                       is("\"frmJudge.mnuAutoPrint") || is("\"frmLane1.chkNovice") ||
                       is("\"frmSerialPort.optPort(2)");
    if (shown) told += line + "\n";
  }
  told += FrameRecords(replay.Sent()) + DialogLines(replay.platform().shown) +
          SettingsText(replay.platform().settings) + Verify(journal, replay, "").text;
  ExpectGolden(TestData() + "/journals/outputs.txt", Replaced(told, folder / "", "DIR/"));
}

}  // namespace
}  // namespace quorvane
