// The results as files: text, CSV, JSON and HTML, and the table of the window.

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <random>

#include "records/profile_file.h"
#include "records/project_store.h"
#include "results/results_formats.h"
#include "results/results_table.h"
#include "tests/results/results_book.h"
#include "tests/support/scratch_folder.h"

namespace quorvane {
namespace {

std::string Golden(const std::string& name) {
  return FileBytes(std::string(QUORVANE_TEST_DATA) + "/results/" + name);
}

ContestRecord ContestIn(const std::string& bytes) {
  const ProfileFile file(bytes);
  return ReadContest({[&](const std::string& section, const std::string& key, const std::string& fallback) {
                        return ProfileString(file, section, key, fallback);
                      },
                      "cup.ini"});
}

// How many fields each row has, by the plainest reading of RFC 4180; a quote or a line end out of its place
// makes it one of no fields.
std::vector<int> FieldsOfRows(const std::string& csv) {
  std::vector<int> rows;
  int fields = 1;
  for (std::size_t i = 0; i < csv.size(); ++i) {
    const bool starts = i == 0 || csv[i - 1] == ',' || csv[i - 1] == '\n';
    if (csv[i] == '"' && starts) {
      for (++i; i < csv.size() && (csv[i] != '"' || csv.substr(i, 2) == "\"\""); ++i) i += csv[i] == '"';
      if (i + 1 < csv.size() && csv[i + 1] != ',' && csv[i + 1] != '\r') fields = -999;
    } else if (csv[i] == ',') {
      ++fields;
    } else if (csv.substr(i, 2) == "\r\n") {
      rows.push_back(fields);
      fields = 1;
      ++i;
    } else if (csv[i] == '"' || csv[i] == '\r' || csv[i] == '\n') {
      fields = -999;
    }
  }
  return rows;
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

// What holds of every contest in every format.
void ExpectSound(const ContestRecord& contest) {
  const std::string text = ResultsText(contest);
  EXPECT_LE(LongestLine(text), static_cast<std::size_t>(kTextColumns));
  EXPECT_EQ(text.find('\x1B'), std::string::npos);
  EXPECT_TRUE(nlohmann::json::accept(ResultsJson(contest)));
  std::string html = ResultsHtml(contest, "");
  html.erase(0, html.find("</style>"));
  EXPECT_EQ(std::count(html.begin(), html.end(), '<'), std::count(html.begin(), html.end(), '>'));
  const std::vector<int> rows = FieldsOfRows(ResultsCsv(contest, false));
  for (const int fields : rows) ASSERT_EQ(fields, rows.front());
}

// A small contest in every format. To accept a wanted change, write the tool's output over the file, in the
// foot of the page without the version.
TEST(Formats, AreAsTheyWere) {
  const ContestRecord cup = ContestIn(Golden("cup.ini"));
  EXPECT_EQ(ResultsText(cup), Golden("cup.txt"));
  EXPECT_EQ(ResultsCsv(cup, false), Golden("cup.csv"));
  EXPECT_EQ(ResultsCsv(cup, true), "\xEF\xBB\xBF" + Golden("cup.csv"));
  EXPECT_EQ(ResultsJson(cup), Golden("cup.json"));
  EXPECT_EQ(ResultsHtml(cup, "quorvane-results"), Golden("cup.html"));
}

TEST(Formats, NoTextBecomesAFormula) {
  for (const char* text : {"=1+1", "+1", "-1", "@SUM(A1)", "  =1"}) {
    EXPECT_EQ(WithoutFormula(text), std::string("'") + text);
  }
  for (const char* text : {"First", "", "1-1"}) EXPECT_EQ(WithoutFormula(text), text);
}

// A contest of what is too long or too much for any page, with a "<" in every text.
ContestRecord Endless() {
  std::string word = "<\x1B[31m";
  for (int i = 0; i < 300; ++i) word += "\xC3\xBC";
  std::vector<std::string> events(91, "1,254,C,M<1,2147483647,0");
  events[0] = Lap(1, 2147483647);
  Book book;
  book.Set("Current", "Title", word).Flight("Race1", 1).Lane("Race1", 1, events).Placed("Race1", 1, word);
  return book.Set("Race1", "Comments", word + " and some words " + word).Contest();
}

// Bytes changed, left out and put in at random in a real file, read to the end in every format.
TEST(Formats, AreSoundWhateverTheFileSays) {
  const std::string original = Golden("cup.ini");
  static constexpr std::string_view kBytes = "=[],;0123456789-+.eLCT\"'<&\n\r\t \x01\x1B\x7F\xC3\xA9\xFF";
  std::mt19937 random(7);
  const auto upTo = [&](std::size_t n) { return static_cast<std::size_t>(random() % n); };
  ExpectSound(ContestIn(""));
  ExpectSound(Endless());
  for (int round = 0; round < 25; ++round) {
    std::string bytes = original;
    for (int i = 0; i < 150; ++i) {
      const std::size_t at = upTo(bytes.size());
      if (i % 3 == 0) bytes[at] = kBytes[upTo(kBytes.size())];
      if (i % 3 == 1) bytes.insert(at, 1, kBytes[upTo(kBytes.size())]);
      if (i % 3 == 2) bytes.erase(at, 1);
    }
    ExpectSound(ContestIn(bytes));
  }
}

std::string Column(const ResultsTable& table, std::size_t column, const std::vector<std::size_t>& order) {
  std::string text;
  for (const std::size_t row : order) text += table.Rows()[row].cells[column].text + "|";
  return text;
}

TEST(Table, SortsByEachColumnWithTiesInTheirOldOrderAndWithoutValuesLast) {
  Book book;
  book.Flight("Race2", 2).Flight("Race10", 10);
  book.Lane("Race2", 1, Laps(10, 7000)).Placed("Race2", 1, "Second");
  book.Lane("Race2", 2, Laps(10, 6500)).Placed("Race2", 2, "First").Placed("Race2", 3, "DNF");
  book.Lane("Race10", 1, Laps(10, 10500)).Placed("Race10", 1, "protest");
  book.Lane("Race10", 2, Laps(10, 7000)).Placed("Race10", 2, "First");
  const ResultsTable table(book.Contest());
  const std::size_t race = 0, place = 6, time = 7;
  EXPECT_EQ(Column(table, race, table.Order(race, true)), "10|10|10|10|2|2|2|2|");
  EXPECT_EQ(Column(table, time, table.Order(time, false)), "1:05.00|1:10.00|1:10.00|1:45.00|||||");
  EXPECT_EQ(Column(table, time, table.Order(time, true)), "1:45.00|1:10.00|1:10.00|1:05.00|||||");
  EXPECT_EQ(Column(table, place, table.Order(place, false)), "First|First|Second|DNF|protest||||");
  EXPECT_EQ(Column(table, race, table.Order(place, false)), "2|10|2|2|10|2|10|10|");
  EXPECT_EQ(Column(table, race, table.Order(time, true)), "10|2|10|2|2|2|10|10|");
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
}

}  // namespace
}  // namespace quorvane
