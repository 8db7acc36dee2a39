// Runs the hand-written journals of tests/data/journals. A line "# expect ..." says what must be true just
// before the record that follows it, or, with "# expect at 20100 ...", just before 20100 ms:
//
//   # expect frmJudge.lblStatus.caption Waiting     a property of a control
//   # expect [Race1_Lane1] Time 46.50               a value of the project file
//   # expect box Reset Race no                      the dialog box shown last, and its answer
//   # expect frames 5                               frames sent so far
//   # expect cuts 2 1                               cuts of lane 2

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "journal/journal_text.h"
#include "replay/replay.h"
#include "tests/support/console_rig.h"
#include "tests/support/test_data.h"

namespace quorvane {
namespace {

// What stands where the expectation's first words point to, in front of what they expect.
std::string Found(Replay& replay, const std::string& expectation, std::string& expected) {
  std::istringstream words(expectation);
  std::string what;
  words >> what;
  if (what == "at") words >> what >> what;
  nlohmann::json state = nlohmann::json::parse(StateJson(replay));
  std::string found;
  if (what == "box") {
    const auto& shown = replay.platform().shown;
    found = shown.empty() ? "none" : shown.back().box.title + " " + AnswerText(shown.back().answer);
  } else if (what == "frames") {
    found = std::to_string(replay.Sent().size());
  } else if (what == "cuts") {
    int lane = 0;
    words >> lane;
    found = state["lanes"][lane - 1]["CutCount"].dump();
  } else if (what.starts_with('[')) {
    std::string key;
    words >> key;
    found = replay.program().project().GetProjectValue(what.substr(1, what.size() - 2), key, "none");
  } else {
    const std::size_t dot = what.rfind('.');
    const auto& property = state["controls"][what.substr(0, dot)][what.substr(dot + 1)];
    found = property.is_string() ? property.get<std::string>() : property.dump();
  }
  std::getline(words >> std::ws, expected);
  return found;
}

// The time, in ms, at which the expectation in line `at` is to be looked at.
std::string TimeOf(const std::vector<std::string>& lines, std::size_t at) {
  constexpr std::string_view kAt = "# expect at ";
  std::string_view line = lines[at];
  if (line.starts_with(kAt))
    return std::string(line.substr(kAt.size(), line.find(' ', kAt.size()) - kAt.size()));
  while (line.starts_with('#') && at + 1 < lines.size()) line = lines[++at];
  return std::string(line.substr(0, line.find(' ')));
}

void GoesAsItSays(const std::filesystem::path& path) {
  constexpr std::string_view kExpect = "# expect ";
  std::ifstream file(path);
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);) lines.push_back(line);
  int checked = 0;
  std::string before, flown;
  std::optional<SessionJournal> journal;
  std::optional<Replay> replay;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (lines[i].starts_with(kExpect)) {
      if (const std::string now = before + TimeOf(lines, i); !replay || now != flown) {
        replay.reset();
        journal = ReadJournal((flown = now) + " end\n");
        const ScratchFolder folder;
        replay.emplace(*journal, ReplayOptions{.project = folder / "contest.ini"}).Run();
      }
      std::string expected;
      const std::string found = Found(*replay, lines[i].substr(kExpect.size()), expected);
      EXPECT_EQ(found, expected) << path << ":" << i + 1 << ": " << lines[i];
      EXPECT_EQ(replay->StuckIn(), "");
      EXPECT_TRUE(replay->Notes().empty());
      ++checked;
      continue;  // the same moment for the next
    }
    before += lines[i] + "\n";
  }
  EXPECT_GT(checked, 5) << path;
}

TEST(Scenarios, GoAsTheirJournalsSay) {
  for (const auto& entry : std::filesystem::directory_iterator(TestData() + "/journals")) {
    if (entry.path().extension() == ".journal") GoesAsItSays(entry.path());
  }
}

}  // namespace
}  // namespace quorvane
