// The command line of quorvane-results and the files it touches.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "tests/support/console_rig.h"
#include "tools/results/results.h"

namespace quorvane {
namespace {

TEST(ResultsOptions, TellWhatIsWanted) {
  struct Case {
    std::vector<std::string> arguments;
    ResultsFormat format;
    bool mark;
    std::string output;
    std::string project;
  };
  const Case cases[] = {
      {{"a.ini"}, ResultsFormat::Text, false, "", "a.ini"},
      {{"--format", "csv", "--bom", "a.ini", "-o", "b.csv"}, ResultsFormat::Csv, true, "b.csv", "a.ini"},
      {{"--format=html", "--output=b.html", "a.ini"}, ResultsFormat::Html, false, "b.html", "a.ini"},
      {{"--output", "--", "--", "-a.ini"}, ResultsFormat::Text, false, "--", "-a.ini"},
      {{"a.ini", "--format", "text", "--format", "json"}, ResultsFormat::Json, false, "", "a.ini"},
  };
  for (const Case& c : cases) {
    std::string error;
    const auto options = ParseResultsOptions(c.arguments, error);
    ASSERT_TRUE(options) << error;
    EXPECT_EQ(options->format, c.format);
    EXPECT_EQ(options->byteOrderMark, c.mark);
    EXPECT_EQ(options->output, c.output);
    EXPECT_EQ(options->project, c.project);
  }
}

TEST(ResultsOptions, ABadCommandLineIsOneLine) {
  const std::vector<std::string> bad[] = {
      {},
      {"a.ini", "b.ini"},
      {"--format", "xml", "a.ini"},
      {"--format"},
      {"a.ini", "-o"},
      {"a.ini", "-o", ""},
      {"--output=", "a.ini"},
      {"--what", "a.ini"},
      {"-x", "a.ini"},
      {"--bom", "a.ini"},
      {"--bom=1", "--format", "csv", "a.ini"},
      {""},
      {"--"},
  };
  for (const auto& arguments : bad) {
    std::string error;
    EXPECT_FALSE(ParseResultsOptions(arguments, error));
    EXPECT_FALSE(error.empty());
    EXPECT_EQ(error.find('\n'), std::string::npos) << error;
  }
}

std::string Content(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

TEST(ResultsFile, ReplacesAFileAndNothingElse) {
  const TempFolder folder;
  const std::string project = folder / "cup.ini";
  std::ofstream(project) << "[Current]\nTitle=Cup\n";
  std::filesystem::create_symlink(project, folder / "link.html");
  std::filesystem::create_directory(folder / "folder");
  EXPECT_EQ(SaveResults(SystemFiles(), folder / "new.html", project, "one"), std::nullopt);
  EXPECT_EQ(SaveResults(SystemFiles(), folder / "new.html", project, "two"), std::nullopt);
  EXPECT_EQ(Content(folder / "new.html"), "two");
  for (const char* name : {"cup.ini", "link.html", "folder", "no/folder.html"}) {
    EXPECT_NE(SaveResults(SystemFiles(), folder / name, project, "x"), std::nullopt) << name;
  }
  EXPECT_NE(SaveResults(SystemFiles(), "/dev/null", project, "x"), std::nullopt);
  EXPECT_EQ(Content(project), "[Current]\nTitle=Cup\n");
}

TEST(ResultsFile, AProjectThatCannotBeReadIsAnErrorAndAnyOtherFileAContest) {
  const TempFolder folder;
  ContestRecord contest;
  EXPECT_TRUE(ReadProject(SystemFiles(), folder / "none.ini", contest));
  EXPECT_TRUE(ReadProject(SystemFiles(), folder.Path(), contest));
  std::ofstream(folder / "noise.ini", std::ios::binary) << std::string("\xFF\x00[Race1\x01]\n=\n[", 13);
  EXPECT_FALSE(ReadProject(SystemFiles(), folder / "noise.ini", contest));
  EXPECT_TRUE(contest.races.empty());
}

}  // namespace
}  // namespace quorvane
