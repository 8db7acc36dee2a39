#include "journal/journal_reader.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <tuple>

#include "journal/journal_text.h"

namespace quorvane {
namespace {

constexpr const char* kHead = "quorvane-journal 1\n0 start 2026-11-21T09:00:00\n0 timers virtual\n0 load\n";

// "line: what was expected", or "" when the text can be read.
std::string Fault(const std::string& text) {
  try {
    ReadJournal(text);
    return "";
  } catch (const UnreadableJournal& error) {
    return std::to_string(error.Line()) + ": " + error.what();
  }
}

Event RandomEvent(std::mt19937& random) {
  const auto pick = [&](std::size_t n) { return static_cast<std::size_t>(random() % n); };
  static const std::vector<std::string> kTexts = {
      "", "a b", "\"quoted\" \\ back", "line\r\nbreak\ttab", "Zürich 21°", "\x01\x1F", "end", "#"};
  static const std::vector<std::string> kKeys = {"F1", "F12", "7", "0"};
  std::vector<std::uint8_t> bytes(1 + pick(80));
  for (auto& byte : bytes) byte = static_cast<std::uint8_t>(random());
  const std::string control = "frmLane2.lblCut(" + std::to_string(pick(40)) + ")";
  const Event kEvents[] = {
      {.kind = EventKind::Key, .text = kKeys[pick(4)]},
      {.kind = EventKind::Bytes, .bytes = bytes},
      {.kind = EventKind::LineError, .number = 1000 + static_cast<int>(pick(12))},
      {.kind = EventKind::Ports, .numbers = {1, 2 + static_cast<int>(pick(29)), 31}},
      {EventKind::Activate, "frmLane2"},
      {EventKind::Close, "frmLane2"},
      {EventKind::Quit},
      {EventKind::Resize, "frmLane2"},
      {EventKind::Click, control},
      {EventKind::Hover, control},
      {EventKind::Timer, control},
      {EventKind::Type, control, kTexts[pick(kTexts.size())]},
      {.kind = EventKind::Choose, .target = control, .number = static_cast<int>(pick(7))},
  };
  return kEvents[pick(std::size(kEvents))];
}

auto Parts(const Event& e) {
  return std::tie(e.kind, e.target, e.text, e.number, e.numbers, e.bytes);
}

TEST(Journal, WhatIsWrittenReadsBack) {
  std::mt19937 random(7);
  const LocalDateTime start{2028, 2, 29, 23, 59, 1};
  std::string text = StartRecords(start, true) + SettingRecord({"a b", "k", "v \"x\"\r\n"}) +
                     EventRecord(0, {.kind = EventKind::Load});
  std::vector<Event> events;
  for (int ms = 0; ms < 2000; ++ms) text += EventRecord(ms, events.emplace_back(RandomEvent(random)));
  text += EventRecord(2000, {EventKind::GotFocus, "frmJudge.txtComments"}) +  // leaves no record
          AnswerRecord(2000, {DialogAnswer::Word::File, "c:\\Quorvane\\x.ini"}) +
          BusyRecord(2001, 5, 8005, "Access is \"denied\"") + SentRecord(2002, {0x55, 0xAA}) +
          EndRecord(2003);
  const SessionJournal journal = ReadJournal(text);
  EXPECT_EQ(journal.start, start);
  EXPECT_TRUE(journal.timersRecorded);
  EXPECT_EQ(journal.settings.at(0).section, "a b");
  EXPECT_EQ(journal.settings.at(0).value, "v \"x\"\r\n");
  ASSERT_EQ(journal.records.size(), events.size() + 5);
  for (std::size_t i = 0; i < events.size(); ++i) {
    ASSERT_EQ(Parts(journal.records[i + 1].event), Parts(events[i])) << i;
  }
  const JournalRecord* last = &journal.records[events.size() + 1];
  EXPECT_EQ(last[0].answer.text, "c:\\Quorvane\\x.ini");
  EXPECT_EQ(last[1].port, 5);
  EXPECT_EQ(last[1].event.number, 8005);
  EXPECT_EQ(last[1].event.text, "Access is \"denied\"");
  EXPECT_EQ(last[2].event.bytes, (std::vector<std::uint8_t>{0x55, 0xAA}));
  EXPECT_EQ(last[3].kind, JournalRecord::Kind::End);
}

TEST(Journal, ReadsWhatHandsWrite) {
  const SessionJournal journal = ReadJournal(
      "\xEF\xBB\xBFquorvane-journal 1\r\n# a comment\r\n\r\n0 start 2026-11-21T09:00:00\r\n"
      "0\tports 5  3 5 \r\n0 load\r\n  7 rx 55aA\r\n"
      "7 type frmJudge.txtComments \"caf\\u00e9 \\ud83d\\ude80 \\ud83d \\/\"\r\n7 end");
  EXPECT_FALSE(journal.timersRecorded);
  ASSERT_EQ(journal.records.size(), 5U);
  EXPECT_EQ(journal.records[0].event.numbers, (std::vector<int>{3, 5}));
  EXPECT_EQ(journal.records[2].event.bytes, (std::vector<std::uint8_t>{0x55, 0xAA}));
  EXPECT_EQ(journal.records[3].event.text, "caf\xC3\xA9 \xF0\x9F\x9A\x80 \xEF\xBF\xBD /");
  EXPECT_EQ(journal.records[3].line, 8);
  EXPECT_TRUE(journal.hasEnd);
}

TEST(Journal, NamesTheLineAndWhatWasExpected) {
  const std::pair<const char*, const char*> kAfterHead[] = {
      {"5 frobnicate x\n", "5: expected a known verb, found \"frobnicate\""},
      {"5 key F2\n4 key F2\n", "6: expected a time not before 5 ms, found \"4\""},
      {"99999999999 end\n", "5: expected a time in whole milliseconds, found \"99999999999\""},
      {"5 key F13\n", "5: expected a key: F1 to F12, 7, 8, 9 or 0, found \"F13\""},
      {"5 rx 55A\n", "5: expected bytes as pairs of hexadecimal digits, found \"55A\""},
      {"5 click cmdStart\n", "5: expected a control like frmJudge.cmdStart, found \"cmdStart\""},
      {"5 click frmJudge.cmdStart twice\n", "5: expected the end of the line, found \"twice\""},
      {"5 type frmJudge.txtComments \"gusty\n", "5: expected a closing quote, found nothing"},
      {"5 answer text \"\\x\"\n", "5: expected one of \"\\/bfnrtu after a backslash, found \"x\""},
      {"5 timer frmJudge.tmrTimeTick\n",
       "5: expected timer records only after \"timers recorded\", found \"timer\""},
      {"5 ports 32\n", "5: expected port numbers from 1 to 31, found \"32\""},
      {"5 setting a b \"c\"\n", "5: expected \"setting\" before \"load\", found \"setting\""},
      {"5 end\n6 key F1\n", "6: expected nothing after the end, found \"6 key F1\""},
  };
  for (const auto& [text, fault] : kAfterHead) EXPECT_EQ(Fault(std::string(kHead) + text), fault);
  const std::string first = "quorvane-journal 1\n";
  EXPECT_EQ(Fault(""), "1: expected \"quorvane-journal 1\", found nothing");
  EXPECT_EQ(Fault(first + "0 load\n"),
            "2: expected \"0 start\" with the date and time first, found \"load\"");
  EXPECT_EQ(Fault(first + "0 start 2026-02-30T09:00:00\n"),
            "2: expected a date and time like 2026-11-21T09:00:00, found \"2026-02-30T09:00:00\"");
  EXPECT_EQ(Fault(first + "0 start 2026-11-21T09:00:00\n0 key F1\n"),
            "3: expected \"load\" before anything happens, found \"key\"");
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
  EXPECT_TRUE(ReadJournal(std::string(kHead) + "8 key F1").cutOff);
  EXPECT_TRUE(ReadJournal(std::string(kHead) + "8 click frmJudge.cmdSa").cutOff);
  EXPECT_FALSE(ReadJournal(std::string(kHead) + "8 answer yes").cutOff);
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
}

}  // namespace
}  // namespace quorvane
