#include <gtest/gtest.h>

#include "base/text.h"
#include "journal/journal_text.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/test_data.h"

namespace quorvane {
namespace {

constexpr const char* kHead = "quorvane-journal 1\n0 start 2026-11-21T09:00:00\n0 timers virtual\n0 load\n";

// Every kind of record as it stands in journals that were recorded long ago.
TEST(Journal, RecordsAreReadAndWrittenInTheirOldForm) {
  const std::string records = FileBytes(TestData() + "/journals/records.txt");
  const std::string head =
      StartRecords(MomentOf(2028, 2, 29, 23, 59, 1), true) + SettingRecord({"a b", "k", "v \"x\"\r\n"});
  EXPECT_EQ(head,
            "quorvane-journal 1\n0 start 2028-02-29T23:59:01\n0 timers recorded\n"
            "0 setting \"a b\" k \"v \\\"x\\\"\\r\\n\"\n");
  const SessionJournal journal = ReadJournal(head + records);
  std::string again;
  for (const JournalRecord& record : journal.records) again += RecordText(record);
  EXPECT_EQ(again, records);
  EXPECT_EQ(journal.start, MomentOf(2028, 2, 29, 23, 59, 1));
  EXPECT_TRUE(journal.timersRecorded);
  EXPECT_EQ(journal.settings.at(0).value, "v \"x\"\r\n");
  EXPECT_EQ(journal.records[12].event.text, "\"q\" \\ \r\n\t Zürich \x01\x1F\x7F\xE9");
}

TEST(Journal, ReadsWhatHandsWrite) {
  const SessionJournal journal = ReadJournal(
      "\xEF\xBB\xBFquorvane-journal 1\r\n# a comment\r\n\r\n0 start 2026-11-21T09:00:00\r\n"
      "0\tports 5  3 5 \r\n0 load\r\n  7 rx 55aA\r\n"
      "7 type frmJudge.txtComments \"caf\\u00e9 \\ud83d\\ude80 \\ud83d \\udfff \\ud83d\\u0041\\/\"\r\n7 end");
  EXPECT_FALSE(journal.timersRecorded);
  ASSERT_EQ(journal.records.size(), 5U);
  EXPECT_EQ(journal.records[0].event.numbers, (std::vector<int>{3, 5}));
  EXPECT_EQ(journal.records[2].event.bytes, (std::vector<std::uint8_t>{0x55, 0xAA}));
  EXPECT_EQ(journal.records[3].event.text,
            "caf\xC3\xA9 \xF0\x9F\x9A\x80 \xEF\xBF\xBD \xEF\xBF\xBD \xEF\xBF\xBD"
            "A/");
  EXPECT_EQ(journal.records[3].line, 8);
  EXPECT_TRUE(journal.hasEnd);
}

// What stands after a head, or alone.
TEST(Journal, NamesTheLineAndWhatWasExpected) {
  for (const auto& row : Rows("journals/faults.json")) {
    std::string fault;
    try {
      ReadJournal((row.size() > 2 ? "" : kHead) + row[0]);
    } catch (const UnreadableJournal& error) {
      fault = std::to_string(error.Line()) + ": " + error.what();
    }
    EXPECT_EQ(fault, row[1]);
  }
}

TEST(Journal, CutOffAnywhereItReadsUpToItsLastWholeLine) {
  const std::string text = std::string(kHead) +
                           "# project \"a.ini\"\n# = \"x\"\n5 type frmJudge.txtComments \"a b\"\n"
                           "6 rx 55AA\n7 click frmJudge.cmdStart\n8 key F10\n9 answer yes\n9 end\n";
  for (std::size_t cut = 19; cut <= text.size(); ++cut) {
    const SessionJournal journal = ReadJournal(text.substr(0, cut));
    const auto whole = ReadJournal(text.substr(0, text.rfind('\n', cut - 1) + 1)).records.size();
    // A record that cannot go on is as good as a whole line.
    const auto read = journal.records.size();
    EXPECT_TRUE(read == whole || (read == whole + 1 && !journal.cutOff)) << cut;
  }
}

TEST(Journal, WithoutItsLineFeedARecordIsTakenThatCannotGoOn) {
  const std::string head = "quorvane-journal 1\n0 start 2026-11-21T09:00:00\n0 timers recorded\n0 load\n";
  std::string taken;
  const std::string records =
      "# a note|8 click frmJudge.cmdSa|8 click frmLane1.lblCut(1)|8 type frmJudge.txtComments \"a\"|"
      "8 choose frmLane1.lblCut(3) 7|8 hover frmJudge.cmdSave|8 key F1|8 key F2|8 activate frmLane2|"
      "8 close frmLane2|8 resize frmLane2|8 rx 55|8 line 1000|8 ports 1|8 field 0 \"gone\"|8 quit|"
      "8 timer frmJudge.tmrTick|8 answer yes|8 held \"a\"|8 clock 2028-03-01T00:00:00|8 tx 55|8 end";
  for (const std::string& record : Split(records, '|')) {
    taken += ReadJournal(head + record).cutOff ? "" : record + "\n";
  }
  EXPECT_EQ(
      taken,
      "8 click frmLane1.lblCut(1)\n8 type frmJudge.txtComments \"a\"\n8 key F2\n8 field 0 \"gone\"\n8 quit\n"
      "8 answer yes\n8 held \"a\"\n8 end\n");
}

TEST(Journal, CommentsKeepAProjectToTheByte) {
  std::string bytes = "[Current]\r\nTitle=\"Cup\"\n\xE9\x80\xFFz\x7F\\";
  bytes += '\0';
  const SessionJournal journal =
      ReadJournal(std::string(kHead) + "# project is what this is about\n# = nothing\n" +
                  ProjectComments("/home/judge/my cup.ini", bytes) + ProjectComments("empty.ini", ""));
  ASSERT_EQ(journal.projects.size(), 2U);
  EXPECT_EQ(journal.projects[0].path, "/home/judge/my cup.ini");
  EXPECT_EQ(journal.projects[0].bytes, bytes);
  EXPECT_EQ(journal.projects[1].bytes, "");
  EXPECT_EQ(ProjectComments("a", "b\nc"), "# project \"a\"\n# = \"b\\n\"\n# = \"c\"\n");
}

}  // namespace
}  // namespace quorvane
