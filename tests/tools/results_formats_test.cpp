// The results as files: text, CSV, JSON and HTML, and the table of the window.

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <numeric>
#include <random>
#include <sstream>

#include "console/results_table.h"
#include "records/profile_file.h"
#include "records/project_store.h"
#include "tests/tools/results_book.h"
#include "tools/field/json.h"
#include "tools/results/results.h"

namespace quorvane {
namespace {

using Rows = std::vector<std::vector<std::string>>;

std::string DataFile(const std::string& name) {
  return std::string(QUORVANE_TEST_DATA) + "/results/" + name;
}

std::string Content(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

ContestRecord ContestIn(const std::string& bytes) {
  const ProfileFile file(bytes);
  return ReadContest({[&](const std::string& section, const std::string& key, const std::string& fallback) {
                        return ProfileString(file, section, key, fallback);
                      },
                      "cup.ini"});
}

ContestRecord Cup() {
  return ContestIn(Content(DataFile("cup.ini")));
}

// The plainest reading of RFC 4180. A row that does not end as it should is told as one field "?".
Rows ReadCsv(const std::string& csv) {
  Rows rows(1, {""});
  bool quoted = false;
  for (std::size_t i = 0; i < csv.size(); ++i) {
    std::string& field = rows.back().back();
    if (quoted) {
      if (csv[i] != '"') {
        field += csv[i];
      } else if (i + 1 < csv.size() && csv[i + 1] == '"') {
        field += csv[++i];
      } else {
        quoted = false;
      }
    } else if (csv[i] == '"' && field.empty()) {
      quoted = true;
    } else if (csv[i] == ',') {
      rows.back().emplace_back();
    } else if (csv[i] == '\r' && i + 1 < csv.size() && csv[i + 1] == '\n') {
      ++i;
      rows.push_back({""});
    } else {
      field += csv[i] == '"' || csv[i] == '\n' || csv[i] == '\r' ? "?" : std::string(1, csv[i]);
    }
  }
  if (rows.back() == std::vector<std::string>{""} && !quoted) {
    rows.pop_back();
  } else {
    rows.push_back({"?"});
  }
  return rows;
}

std::string Value(const Rows& rows, std::size_t row, const std::string& column) {
  const auto& head = rows.front();
  const auto at = std::find(head.begin(), head.end(), column);
  return at == head.end() ? "no such column" : rows.at(row).at(static_cast<std::size_t>(at - head.begin()));
}

std::size_t LongestLine(const std::string& text) {
  std::size_t longest = 0;
  std::size_t length = 0;
  for (const char c : text) {
    if ((static_cast<unsigned char>(c) & 0xC0U) != 0x80U) ++length;
    if (c == '\n') length = 0;
    longest = std::max(longest, length);
  }
  return longest;
}

// Whether every tag that is opened is closed in turn.
bool Balanced(const std::string& html) {
  std::vector<std::string> open;
  for (std::size_t at = html.find('<'); at != std::string::npos; at = html.find('<', at + 1)) {
    const std::size_t end = html.find('>', at);
    if (end == std::string::npos) return false;
    const std::string tag = html.substr(at + 1, html.find_first_of(" >", at) - at - 1);
    if (tag == "!DOCTYPE" || tag == "meta") continue;
    if (!tag.starts_with('/')) {
      open.push_back(tag);
    } else if (open.empty() || "/" + open.back() != tag) {
      return false;
    } else {
      open.pop_back();
    }
  }
  return open.empty();
}

// A small contest in every format. To accept a wanted change, write the tool's output over the file.
TEST(Formats, AreAsTheyWere) {
  const ContestRecord cup = Cup();
  EXPECT_EQ(ResultsText(cup), Content(DataFile("cup.txt")));
  EXPECT_EQ(ResultsCsv(cup, false), Content(DataFile("cup.csv")));
  EXPECT_EQ(ResultsJson(cup), Content(DataFile("cup.json")));
}

TEST(Formats, ACsvReaderFindsEveryField) {
  const Rows rows = ReadCsv(ResultsCsv(Cup(), false));
  ASSERT_EQ(rows.size(), 16U);  // the header, lanes of four flights
  for (const auto& row : rows) EXPECT_EQ(row.size(), rows.front().size());
  EXPECT_EQ(Value(rows, 2, "Place"), "Second");
  EXPECT_EQ(Value(rows, 2, "Time"), "73.56");
  EXPECT_EQ(Value(rows, 2, "Lap 11"), "73.56");
  EXPECT_EQ(Value(rows, 3, "9 Laps"), "yes");
  EXPECT_EQ(Value(rows, 4, "Cut List"), "P1 22.00; MP3 44.00");
  EXPECT_EQ(
      Value(rows, 5, "Comments"),
      "Wind from the west, \"gusts\" over 8 m/s; <b>pylon 2</b> moved after the heat. Überprüft; the crews "
      "asked for a second look at lane 3.");
  EXPECT_EQ(Value(rows, 6, "Place"), "'=2+3");
  EXPECT_EQ(Value(rows, 8, "Refly"), "1");
  EXPECT_EQ(Value(rows, 12, "Counts"), "no");
  EXPECT_TRUE(ResultsCsv(Cup(), true).starts_with("\xEF\xBB\xBFRace,"));
}

TEST(Formats, NoTextBecomesAFormula) {
  for (const auto& [text, safe] : std::vector<std::pair<std::string, std::string>>{{"First", "First"},
                                                                                   {"=1+1", "'=1+1"},
                                                                                   {"+1", "'+1"},
                                                                                   {"-1", "'-1"},
                                                                                   {"@SUM(A1)", "'@SUM(A1)"},
                                                                                   {"  =1", "'  =1"},
                                                                                   {"", ""},
                                                                                   {"1-1", "1-1"}}) {
    EXPECT_EQ(WithoutFormula(text), safe);
  }
}

TEST(Formats, HtmlShowsTypedTextsAsTexts) {
  Book book;
  book.Set("Current", "Title", "</title><script>alert('x')</script>");
  book.Flight("Race1", 1).Set("Race1", "Comments", "<b>&amp;\"").Set("Race1", "RaceMode", "9, <i>");
  book.Placed("Race1", 1, "<img src=x onerror=y>").Lane("Race1", 1, {"0,254,C,<hr>,5000,0"});
  const std::string html = ResultsHtml(book.Contest(), "quorvane-results 1.0");
  for (const char* tag : {"<script", "<b>", "<i>", "<img", "<hr>"}) {
    EXPECT_EQ(html.find(tag), std::string::npos) << tag;
  }
  EXPECT_NE(html.find("&lt;img src=x onerror=y&gt;"), std::string::npos);
  EXPECT_NE(html.find("&lt;b&gt;&amp;amp;&quot;"), std::string::npos);
  EXPECT_TRUE(Balanced(html));
  EXPECT_TRUE(Balanced(ResultsHtml(Cup(), "")));
  for (const char* outside : {"src=\"", "href=", "@import", "url("}) {
    EXPECT_EQ(html.find(outside), std::string::npos) << outside;
  }
}

TEST(Formats, TextFitsWhateverIsTooLong) {
  Book book;
  std::string longWord;
  for (int i = 0; i < 300; ++i) longWord += "\xC3\xBC";
  book.Set("Current", "Title", longWord).Flight("Race1", 1);
  book.Set("Race1", "Comments", longWord + " and \x1B[31m some words " + longWord)
      .Placed("Race1", 1, longWord);
  std::vector<std::string> events = {Lap(1, 2147483647)};
  for (int i = 0; i < 90; ++i) events.push_back("1,254,C,MP1,2147483647,0");
  book.Lane("Race1", 1, events);
  const std::string text = ResultsText(book.Contest());
  EXPECT_EQ(LongestLine(text), static_cast<std::size_t>(kTextColumns));
  EXPECT_EQ(text.find('\x1B'), std::string::npos);
}

TEST(Formats, AContestWithoutRacesIsNoError) {
  const ContestRecord none = Book().Contest();
  EXPECT_NE(ResultsText(none).find("No race has been run."), std::string::npos);
  EXPECT_EQ(ReadCsv(ResultsCsv(none, false)).size(), 1U);
  EXPECT_TRUE(field::ParseJson(ResultsJson(none)));
  EXPECT_TRUE(Balanced(ResultsHtml(none, "")));
}

// Bytes changed, left out and put in at random in a real file, read to the end in every format.
TEST(Formats, StandWhateverTheFileSays) {
  const std::string original = Content(DataFile("cup.ini"));
  static constexpr std::string_view kBytes = "=[],;0123456789-+.eLCT\"'<&\n\r\t \x01\x1B\x7F\xC3\xA9\xFF";
  std::mt19937 random(7);
  const auto upTo = [&](std::size_t n) { return static_cast<std::size_t>(random() % n); };
  for (int round = 0; round < 25; ++round) {
    std::string bytes = original;
    for (int i = 0; i < 150; ++i) {
      const std::size_t at = upTo(bytes.size());
      if (i % 3 == 0) bytes[at] = kBytes[upTo(kBytes.size())];
      if (i % 3 == 1) bytes.insert(at, 1, kBytes[upTo(kBytes.size())]);
      if (i % 3 == 2) bytes.erase(at, 1);
    }
    const ContestRecord contest = ContestIn(bytes);
    EXPECT_LE(LongestLine(ResultsText(contest)), static_cast<std::size_t>(kTextColumns));
    EXPECT_TRUE(field::ParseJson(ResultsJson(contest)));
    EXPECT_TRUE(Balanced(ResultsHtml(contest, "")));
    const Rows rows = ReadCsv(ResultsCsv(contest, false));
    for (const auto& row : rows) ASSERT_EQ(row.size(), rows.front().size());
  }
}

std::string Column(const ResultsTable& table, std::size_t column, const std::vector<std::size_t>& order) {
  std::string text;
  for (const std::size_t row : order) text += table.Rows()[row].cells[column].text + "|";
  return text;
}

TEST(Table, SortsByEachColumnWithoutValuesLast) {
  Book book;
  book.Flight("Race2", 2).Flight("Race10", 10);
  book.Lane("Race2", 1, Laps(10, 7000)).Placed("Race2", 1, "Second");
  book.Lane("Race2", 2, Laps(10, 6500)).Placed("Race2", 2, "First").Placed("Race2", 3, "DNF");
  book.Lane("Race10", 1, Laps(10, 10500)).Placed("Race10", 1, "protest");
  const ResultsTable table(book.Contest());
  const std::size_t race = 0, place = 6, time = 7;
  EXPECT_EQ(Column(table, race, table.Order(race, false)), "2|2|2|2|10|10|10|10|");
  EXPECT_EQ(Column(table, race, table.Order(race, true)), "10|10|10|10|2|2|2|2|");
  EXPECT_EQ(Column(table, time, table.Order(time, false)), "1:05.00|1:10.00|1:45.00||||||");
  EXPECT_EQ(Column(table, time, table.Order(time, true)), "1:45.00|1:10.00|1:05.00||||||");
  EXPECT_EQ(Column(table, place, table.Order(place, false)), "First|Second|DNF|protest|||||");
  EXPECT_THROW(table.Order(kResultsColumns.size(), false), std::exception);
}

TEST(Table, CopiesRowsForASpreadsheet) {
  Book book;
  book.Flight("Race1", 1, 4).Placed("Race1", 2, "=a\tb").Lane("Race1", 1, Laps(10, 7000));
  const ResultsTable table(book.Contest());
  const std::vector<std::size_t> rows = {1, 0};
  EXPECT_EQ(table.CopyText(rows),
            "Race\tRound\tHeat\tMode\tDate\tLane\tPlace\tTime\tLaps\tCuts\tFastest Lap\tNote\r\n"
            "1\t1\t1\tFAI 123\t21-Nov-2026 9:00 AM\t2\t'=a b\t\t0\t0\t\t\r\n"
            "1\t1\t1\tFAI 123\t21-Nov-2026 9:00 AM\t1\t\t1:10.00\t10\t0\t7.00\t\r\n");
  EXPECT_THROW(table.CopyText(std::vector<std::size_t>{3}), std::exception);
}

}  // namespace
}  // namespace quorvane
