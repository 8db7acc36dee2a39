// The command line of quorvane-results and the files it touches.

#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <sstream>
#include <tuple>

#include "programs/results_options.h"
#include "results/race_records.h"
#include "tests/support/scratch_folder.h"

namespace quorvane {
namespace {

std::variant<ResultsOptions, Ending> Parse(const std::string& line) {
  std::istringstream words(line);
  return ParseResultsOptions({std::istream_iterator<std::string>(words), {}});
}

TEST(ResultsOptions, TellWhatIsWanted) {
  const std::tuple<std::string, std::string, bool, std::string, std::string> cases[] = {
      {"a.ini", "text", false, "", "a.ini"},
      {"--format csv --bom a.ini -o b.csv", "csv", true, "b.csv", "a.ini"},
      {"--format=html --output=b.html a.ini", "html", false, "b.html", "a.ini"},
      {"--output -- -- -a.ini", "text", false, "--", "-a.ini"},
  };
  for (const auto& [line, format, mark, output, project] : cases) {
    const auto parsed = Parse(line);
    const auto* options = std::get_if<ResultsOptions>(&parsed);
    ASSERT_NE(options, nullptr) << std::get<Ending>(parsed).text;
    EXPECT_EQ(std::tie(options->format, options->byteOrderMark, options->output, options->project),
              std::tie(format, mark, output, project))
        << line;
  }
}

TEST(ResultsOptions, ABadCommandLineIsOneLine) {
  for (const char* line :
       {"", "a.ini b.ini", "--format xml a.ini", "--format", "a.ini -o", "--output= a.ini b.ini",
        "--what a.ini", "-x a.ini", "--bom a.ini", "--bom=1 --format csv a.ini", "--"}) {
    const auto parsed = Parse(line);
    const auto* ending = std::get_if<Ending>(&parsed);
    ASSERT_NE(ending, nullptr) << line;
    EXPECT_EQ(ending->status, 2) << line;
    EXPECT_EQ(ending->text.find('\n'), ending->text.size() - 1) << ending->text;
  }
}

TEST(ResultsFile, ReplacesAFileAndNothingElse) {
  const ScratchFolder folder;
  const std::string project = folder / "cup.ini";
  PutFile(project, "[Current]\nTitle=Cup\n");
  std::filesystem::create_symlink(project, folder / "link.html");
  std::filesystem::create_directory(folder / "folder");
  EXPECT_EQ(SaveResults(SystemFiles(), folder / "new.html", project, "one"), std::nullopt);
  EXPECT_EQ(SaveResults(SystemFiles(), folder / "new.html", project, "two"), std::nullopt);
  EXPECT_EQ(FileBytes(folder / "new.html"), "two");
  PutFile(folder / "settings.ini", "[frmSerialPort]\nMore=1\n");
  for (const char* name : {"cup.ini", "link.html", "folder", "no/folder.html", "settings.ini"}) {
    EXPECT_NE(SaveResults(SystemFiles(), folder / name, project, "x"), std::nullopt) << name;
  }
  EXPECT_EQ(FileBytes(project), "[Current]\nTitle=Cup\n");
}

TEST(ResultsFile, AProjectThatCannotBeReadIsAnErrorAndAnyOtherFileAContest) {
  const ScratchFolder folder;
  ContestRecord contest;
  EXPECT_TRUE(ReadProject(SystemFiles(), folder / "none.ini", contest));
  EXPECT_TRUE(ReadProject(SystemFiles(), folder.path().string(), contest));
  PutFile(folder / "noise.ini", std::string("\xFF\x00[Race1\x01]\n=\n[", 13));
  EXPECT_FALSE(ReadProject(SystemFiles(), folder / "noise.ini", contest));
  EXPECT_TRUE(contest.races.empty());
}

}  // namespace
}  // namespace quorvane
