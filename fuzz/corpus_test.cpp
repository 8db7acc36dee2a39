// What comes of the inputs that the fuzzers begin with, as a number each: every change of every control, what
// is sent, asked, kept, saved and printed. Where one differs from what it was, its text is written beside the
// new numbers, to be compared with that of the commit before.

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <set>
#include <utility>

#include "base/text.h"
#include "fuzz/require.h"
#include "programs/commit.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/test_data.h"

using Fuzzer = int(const std::uint8_t* data, std::size_t size);
extern "C" Fuzzer fuzz_arguments, fuzz_frames, fuzz_journal, fuzz_lane, fuzz_profile, fuzz_running;

namespace quorvane {
namespace {

// FNV-1a: the same everywhere.
std::uint64_t Number(const std::string& text) {
  std::uint64_t number = 0xCBF29CE484222325;
  for (const char c : text) number = (number ^ static_cast<unsigned char>(c)) * 0x100000001B3;
  return number;
}

// Scratch folders have other names each time, and a build tells of itself.
std::string WithoutThisRun(std::string text) {
  const std::string scratch = (std::filesystem::temp_directory_path() / "quorvane-").string();
  for (std::size_t at = 0; (at = text.find(scratch, at)) != std::string::npos;)
    text.replace(at, std::min(text.find('/', at + scratch.size()), text.size()) - at, "DIR");
  for (const std::string& word : {" (" + ProgramCommit() + ")", std::string("\"Built with ")})
    for (std::size_t at = 0; (at = text.find(word)) != std::string::npos;)
      text.erase(at, text.find('\n', at) - at);
  return text;
}

void ExpectAsBefore(const std::string& fuzzer, Fuzzer* run) {
  const std::string golden = TestData() + "/fuzz/" + fuzzer + ".txt";
  const std::string before = FileBytes(golden);
  std::set<std::filesystem::path> inputs;
  for (const auto& entry : std::filesystem::directory_iterator(TestData() + "/../../fuzz/corpus/" + fuzzer)) {
    inputs.insert(entry.path());
  }
  std::string now;
  for (const auto& input : inputs) {
    const std::string bytes = FileBytes(input.string());
    std::string text;
    told = &text;
    run(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    told = nullptr;
    text = WithoutThisRun(text);
    const std::string line = fmt::format("{} {:016x}\n", input.filename().string(), Number(text));
    if (before.find(line) == std::string::npos) {
      PutFile((std::filesystem::temp_directory_path() / (fuzzer + "-" + input.filename().string())).string(),
              text);
    }
    now += line;
  }
  ExpectGolden(golden, now);
}

using Inputs = std::pair<const char*, Fuzzer*>;
class Corpus : public testing::TestWithParam<Inputs> {};

TEST_P(Corpus, ComesToWhatItDid) {
  ExpectAsBefore(GetParam().first, GetParam().second);
}

INSTANTIATE_TEST_SUITE_P(All, Corpus,
                         testing::Values(Inputs("fuzz_arguments", fuzz_arguments),
                                         Inputs("fuzz_frames", fuzz_frames),
                                         Inputs("fuzz_journal", fuzz_journal), Inputs("fuzz_lane", fuzz_lane),
                                         Inputs("fuzz_profile", fuzz_profile),
                                         Inputs("fuzz_running", fuzz_running)));

}  // namespace
}  // namespace quorvane
