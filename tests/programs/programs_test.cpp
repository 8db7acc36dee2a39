// The programs as they are called: their command lines, their exit status and the files they touch.

#include <fcntl.h>
#include <fmt/format.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cmath>
#include <cstring>
#include <map>
#include <thread>
#include <tuple>
#include <vector>

#include "base/text.h"
#include "field/radio.h"
#include "programs/console_command.h"
#include "programs/ending.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/test_data.h"

namespace quorvane {
namespace {

const std::string kData = TestData();

std::string Beside(const std::string& name) {
  return std::filesystem::read_symlink("/proc/self/exe").parent_path() / name;
}

// What a program says, on both of its outputs, and its exit status.
struct Said {
  std::string text;
  int status = -1;
};
Said Finish(FILE* pipe) {
  Said said;
  for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe)) said.text += static_cast<char>(c);
  said.status = WEXITSTATUS(pclose(pipe));
  return said;
}
Said Call(const std::string& command, const std::string& folder = ".") {
  const std::string line = "cd " + folder + "; " + Beside("quorvane-") + command + " 2>&1 </dev/null";
  return Finish(popen(line.c_str(), "r"));
}

TEST(Programs, RefuseABadCommandLineInOneLine) {
  std::string told;
  for (const auto& row : Rows("programs/refused.json")) {
    const std::string& program = row[0];
    for (std::size_t i = 1; i < row.size(); ++i) {
      const Said said = Call(program + " " + row[i]);
      EXPECT_EQ(said.status, 2) << program << " " << row[i];
      told += said.text;
    }
    EXPECT_EQ(Call(program + " --help").status, 0);
    EXPECT_TRUE(Call(program + " --version").text.starts_with("quorvane-" + program + " 0.1.0 ("));
    const Said full = Call(program + " --version >/dev/full");
    EXPECT_EQ(full.status, program == "replay" ? 2 : 1);
    told += full.text;
  }
  ExpectGolden(kData + "/programs/refused.golden", told);
}

TEST(ConsoleCommandLine, TakesEverythingInAnyOrder) {
  const CommandLine line =
      ParseCommandLine({"--port", "5=/dev/ttyUSB0", "day.ini", "--settings=my.ini", "--port=31=a=b", "--demo",
                        "out", "--heats", "3", "--journal", "j", "--language=de"});
  EXPECT_EQ(std::tie(line.project, line.settings, line.demo, line.journal, line.language),
            std::make_tuple("day.ini", "my.ini", "out", "j", "de"));
  EXPECT_EQ(line.ports, (std::map<int, std::string>{{5, "/dev/ttyUSB0"}, {31, "a=b"}}));
  EXPECT_EQ(line.heats, 3);
  EXPECT_EQ(ParseCommandLine({"--", "--help"}).project, "--help");
  EXPECT_EQ(ParseCommandLine({}).project, "");
  EXPECT_EQ(ParseCommandLine({}).heats, 1);
  const CommandLine print =
      ParseCommandLine({"--print", "7,2-4", "day.ini", "-o", "x.pdf", "--print=9", "--paper", "a4"});
  EXPECT_EQ(print.print.races, (std::vector<int>{7, 2, 3, 4, 9}));
  EXPECT_EQ(ParseCommandLine({"--print", "1-5000", "day.ini", "-o", "x.pdf"}).print.races.size(), 5000U);
  EXPECT_TRUE(ParseCommandLine({"--protest", "all", "day.ini", "--output=x.pdf"}).protest.all);
}

TEST(ConsoleCommandLine, ExplainsItselfAndRefusesInOneLine) {
  const auto lines = Rows("programs/refused-window.json")[0];
  std::string told;
  for (const std::string& line : lines) {
    try {
      ParseCommandLine(Split(line, ' '));
      told += line + ": TAKEN\n";
    } catch (const Ending& ending) {
      told += std::to_string(ending.status) + " " + ending.text;
    }
  }
  ExpectGolden(kData + "/programs/help-window.golden", told);
}

TEST(Programs, ExplainThemselvesAsTheyDid) {
  std::string told;
  for (const char* program : {"field", "replay", "results"})
    told += Call(std::string(program) + " --help").text;
  ExpectGolden(kData + "/programs/help.golden", told);
}

TEST(Programs, ResultsGoToAFileOfTheirKindAndReplaceNoOther) {
  const ScratchFolder folder;
  const std::string cup = kData + "/results/cup";
  const std::string f = folder / "";
  std::filesystem::copy(cup + ".ini", f + "cup.ini");
  std::filesystem::create_symlink("cup.ini", f + "link.html");
  PutFile(f + "settings.ini", "[frmSerialPort]\nMore=1\n");
  const auto written = [&](const std::string& name, const std::string& options = "") {
    return Call("results -o " + name + " " + options + " -- cup.ini", f).status;
  };
  for (const char* name : {"cup.ini", "link.html", ".", "no/folder.html", "settings.ini"}) {
    EXPECT_EQ(written(name), 1) << name;
  }
  EXPECT_EQ(FileBytes(f + "cup.ini"), FileBytes(cup + ".ini"));
  EXPECT_EQ(written("new.csv"), 0);
  EXPECT_EQ(FileBytes(f + "new.csv"), FileBytes(cup + ".txt"));
  EXPECT_EQ(written("new.csv", "--bom --format=csv"), 0);
  EXPECT_EQ(FileBytes(f + "new.csv"), "\xEF\xBB\xBF" + FileBytes(cup + ".csv"));
  EXPECT_EQ(Call("results --format json cup.ini", f).text, FileBytes(cup + ".json"));
  EXPECT_TRUE(Call("results --format html cup.ini", f).text.starts_with("<!DOCTYPE html>"));
  EXPECT_EQ(Call("results none.ini", f).status, 1);
  PutFile(f + "noise.ini", std::string("\xFF\x00[Race1\x01]\n=\n[", 13));
  EXPECT_NE(Call("results noise.ini", f).text.find("No race has been run."), std::string::npos);
}

// Arguments, exit status and what is said.
TEST(Programs, AReplayWritesOverNothingOfItsSession) {
  const ScratchFolder folder;
  const std::string f = folder / "";
  const std::string before = "[Current]\nTitle=Mine\nHeatsPerRound=3\n";
  PutFile(f + "other.ini", before);
  PutFile(
      f + "day.journal",
      "quorvane-journal 1\n0 start 2026-11-21T09:00:00\n0 load\n0 answer text \"4\"\n0 answer text \"Cup\"\n"
      "1000 click frmJudge.mnuSelectFile\n1000 answer file \"" +
          f + "other.ini\"\n2000 end\n");
  PutFile(f + "bad.journal", "quorvane-journal 1\n0 start 2026-11-21T09:00:00\n0 what\n");
  for (const auto& row : Rows("programs/replayed.json")) {
    const Said said = Call("replay " + row[0] + " day.journal", f);
    EXPECT_EQ(std::to_string(said.status), row[1]) << row[0] << "\n" << said.text;
    EXPECT_NE(said.text.find(row[2]), std::string::npos) << said.text;
  }
  EXPECT_NE(FileBytes(f + "a").find("\"EventName\": \"Mine\""), std::string::npos);
  EXPECT_EQ(FileBytes(f + "other.ini"), before);
  EXPECT_EQ(Call("replay --project fresh.ini --in-place day.journal", f).status, 0);
  EXPECT_NE(FileBytes(f + "other.ini"), before);
  EXPECT_NE(Call("replay bad.journal", f).text.find("bad.journal:3: "), std::string::npos);
}

TEST(Programs, TheFieldTellsWhatIsShownOtherwiseThanItWasFlown) {
  const Said said = Call("field --compare flown.jsonl shown.jsonl --tolerance 59", kData + "/field");
  EXPECT_EQ(said.text, FileBytes(kData + "/field/differences.txt"));
  EXPECT_EQ(said.status, 1);
  EXPECT_EQ(Call("field --compare flown.jsonl shown.jsonl", kData + "/field").status, 0);
}

// Every byte on the air with its time, and what was flown, as one number: FNV-1a. Whether it is right, the
// console says, which flies heats of the field in its own tests.
TEST(Programs, TheSameNumberGivesTheSameHeatsOnEverySystem) {
  for (const auto& row : Rows("programs/courses.json")) {
    std::uint64_t sum = 14695981039346656037U;
    for (const char c : Call("field --fast " + row[0]).text) {
      sum = (sum ^ static_cast<std::uint8_t>(c)) * 1099511628211U;
    }
    EXPECT_EQ(sum, std::stoull(row[1], nullptr, 16)) << row[0];
  }
}

TEST(Programs, TheFieldAnswersPollsInAnyChunkingOnItsTerminalUntilASignalEndsIt) {
  const ScratchFolder folder;
  const std::string link = folder / "port";
  // One signal: the SIGCONT that `timeout` sends to a group besides can stop the leak checker for ever.
  FILE* const pipe =
      popen(("timeout --foreground --preserve-status 2.5 " + Beside("quorvane-field") +
             " --controlled --link " + link + " --starter-at 1500 --late P2=300 --twice PY 2>&1")
                .c_str(),
            "r");
  std::array<char, 500> line{};
  ASSERT_NE(std::fgets(line.data(), line.size(), pipe), nullptr);
  EXPECT_EQ(line.data(), "quorvane-field: the field is on " + link + "\n");
  const int console = open(link.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
  std::vector<std::uint8_t> polls(40, 0x55);  // what is no frame is passed over
  for (const std::uint8_t station : {0, 1, 5, 6, 8}) {
    const field::Frame poll = field::Encode({.from = field::kConsole, .to = station});
    polls.insert(polls.end(), poll.begin(), poll.end());
  }
  for (std::size_t i = 0; i < polls.size(); i += 11) EXPECT_EQ(write(console, &polls[i], 11), 11);
  std::vector<std::uint8_t> heard(4096);
  std::size_t length = 0;
  for (int i = 0; i < 80; ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
    length += static_cast<std::size_t>(std::max<ssize_t>(read(console, &heard[length], 512), 0));
  }
  std::string answers;
  for (std::size_t i = 0; i + 36 <= length; i += 36) {
    if (heard[i + 4] == field::kConsole) answers += std::to_string(heard[i + 5]);
  }
  EXPECT_EQ(answers, "0661");
  const Said said = Finish(pipe);
  close(console);
  EXPECT_EQ(said.status, 0);
  EXPECT_NE(said.text.find(",\"polls\":5}"), std::string::npos) << said.text;
  EXPECT_GE(std::stoi(said.text.substr(said.text.find("\"starter\":") + 10)), 1500) << said.text;
}

TEST(Programs, TheCountdownSoundsAtItsMarksAndNowhereElseAndBreaksOffAtZeroWithoutAClick) {
  const std::string bytes = FileBytes(Beside("../share/quorvane/WarbirdCountdownStart.wav"));
  constexpr std::size_t kRate = 22050;
  ASSERT_EQ(bytes.size(), 44 + 60 * kRate * 2);
  EXPECT_EQ(bytes.substr(0, 44), std::string("RIFF\x14\x60\x28\0WAVEfmt \x10\0\0\0\x01\0\x01\0\x22\x56\0\0"
                                             "\x44\xAC\0\0\x02\0\x10\0data\xF0\x5F\x28\0",
                                             44));
  std::vector<std::int16_t> sound(60 * kRate);
  std::memcpy(sound.data(), bytes.data() + 44, bytes.size() - 44);
  // Of each tenth that is not silent: how loud, its steepest step, how often through zero, how much in all.
  std::string told;
  for (std::size_t tenth = 0; tenth < 600; ++tenth) {
    int loudest = 0, steepest = 0, crossings = 0, sum = 0;
    for (std::size_t i = tenth * kRate / 10 + 1; i <= (tenth + 1) * kRate / 10 && i < sound.size(); ++i) {
      loudest = std::max(loudest, std::abs(int{sound[i]}));
      steepest = std::max(steepest, std::abs(sound[i] - sound[i - 1]));
      crossings += (sound[i] < 0) != (sound[i - 1] < 0) ? 1 : 0;
      sum += std::abs(int{sound[i]});
    }
    if (loudest > 0) told += fmt::format("{} {} {} {} {}\n", tenth, loudest, steepest, crossings, sum);
  }
  ExpectGolden(kData + "/programs/countdown.golden", told);
  EXPECT_LT(std::abs(sound.back()), 100);
}

}  // namespace
}  // namespace quorvane
