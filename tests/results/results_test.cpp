// The results as files, text, CSV, JSON and HTML, and the table of the window: of a small contest ("cup"),
// and of one whose file says all that a file can say ("odd").

#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <random>

#include "replay/virtual_platform.h"
#include "results/race_records.h"
#include "results/results_formats.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/test_data.h"

namespace quorvane {
namespace {

const std::string kData = TestData() + "/results/";

ContestRecord ContestIn(const std::string& path) {
  ContestRecord contest;
  EXPECT_FALSE(ReadProject(SystemFiles(), path, contest));
  return contest;
}

// The foot of a page names the program without its version.
TEST(Results, AreAsTheyWereInEveryFormat) {
  for (const char* name : {"cup", "odd"}) {
    const ContestRecord contest = ContestIn(kData + name + ".ini");
    ExpectGolden(kData + name + ".txt", ResultsText(contest));
    ExpectGolden(kData + name + ".csv", ResultsCsv(contest, false));
    ExpectGolden(kData + name + ".json", ResultsJson(contest));
    ExpectGolden(kData + name + ".html", ResultsHtml(contest, "quorvane-results"));
    EXPECT_EQ(ResultsCsv(contest, true), "\xEF\xBB\xBF" + ResultsCsv(contest, false));
  }
}

// Sorted by each column, up and down; then two rows as they go to the clipboard.
TEST(Results, AreSortedAndCopiedFromTheTable) {
  const std::vector<ResultsRow> rows = ResultsRows(ContestIn(kData + "odd.ini"));
  std::string told;
  for (std::size_t column = 0; column < kResultsColumns.size(); ++column) {
    for (const bool descending : {false, true}) {
      told += std::string("\n") + kResultsColumns[column] + (descending ? " down:\n" : " up:\n");
      for (const ResultsRow& row : SortedRows(rows, column, descending)) {
        told +=
            std::to_string(std::ranges::find(rows, row) - rows.begin()) + " " + row.cells[column].text + "\n";
      }
    }
  }
  ExpectGolden(kData + "odd.table", told + "\n" + CopyText({rows[rows.size() - 9], rows[0]}));
}

TEST(Results, ARaceIsReadAloneAsAmongAllOthers) {
  std::vector<RaceRecord> all, some;
  const ContestRecord contest = ContestIn(kData + "odd.ini");
  const MemorySettings settings;
  ASSERT_FALSE(ReadRaces(SystemFiles(), kData + "odd.ini", settings, {}, all));
  std::vector<int> numbers;
  for (const RaceRecord& race : all) numbers.push_back(race.number);
  ASSERT_FALSE(ReadRaces(SystemFiles(), kData + "odd.ini", settings, numbers, some));
  EXPECT_EQ(ResultsJson({"", "", all}), ResultsJson({"", "", some}));
  some.clear();
  ASSERT_FALSE(ReadRaces(SystemFiles(), kData + "odd.ini", settings, {7}, some));
  EXPECT_FALSE(some[0].hasRun);
  EXPECT_EQ(some[0].round * 10 + some[0].heat, 23);
}

// What holds of every contest in every format.
void ExpectSound(const ContestRecord& contest) {
  std::istringstream text(ResultsText(contest));
  for (std::string line; std::getline(text, line);) {
    const auto more = std::ranges::count_if(line, [](char c) { return (c & 0xC0) == 0x80; });
    ASSERT_LE(static_cast<int>(line.size()) - more, kTextColumns);
    ASSERT_EQ(line.find('\x1B'), std::string::npos);
  }
  EXPECT_TRUE(nlohmann::json::accept(ResultsJson(contest)));
  std::string html = ResultsHtml(contest, "");
  html.erase(0, html.find("</style>"));
  EXPECT_EQ(std::count(html.begin(), html.end(), '<'), std::count(html.begin(), html.end(), '>'));
  const std::string csv = ResultsCsv(contest, false);
  EXPECT_EQ(std::count(csv.begin(), csv.end(), '"') % 2, 0);
}

// Bytes changed, left out and put in at random in a real file, read to the end in every format.
TEST(Results, AreSoundWhateverTheFileSays) {
  static constexpr std::string_view kBytes = "=[],;0123456789-+.eLCT\"'<&\n\r\t \x01\x1B\x7F\xC3\xA9\xFF";
  std::mt19937 random(7);
  const auto upTo = [&](std::size_t n) { return static_cast<std::size_t>(random() % n); };
  const ScratchFolder folder;
  ExpectSound(ContestIn(kData + "odd.ini"));
  for (int round = 0; round < 20; ++round) {
    std::string bytes = round == 0 ? "" : FileBytes(kData + "cup.ini");
    for (int i = 0; i < 150 && !bytes.empty(); ++i) {
      const std::size_t at = upTo(bytes.size());
      if (i % 3 == 0) bytes[at] = kBytes[upTo(kBytes.size())];
      if (i % 3 == 1) bytes.insert(at, 1, kBytes[upTo(kBytes.size())]);
      if (i % 3 == 2) bytes.erase(at, 1);
    }
    PutFile(folder / "noise.ini", bytes);
    ExpectSound(ContestIn(folder / "noise.ini"));
  }
}

}  // namespace
}  // namespace quorvane
