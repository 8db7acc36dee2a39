#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <chrono>
#include <numeric>

#include "field/pseudo_terminal.h"
#include "tests/support/scratch_folder.h"

namespace quorvane::field {
namespace {

namespace fs = std::filesystem;

TEST(FieldTerminal, CarriesBytesThroughItsLinkAndSurvivesReopening) {
  std::vector<std::uint8_t> all(256);  // every value, so that anything but raw mode shows
  std::iota(all.begin(), all.end(), std::uint8_t{0});
  const ScratchFolder folder;
  const std::string link = folder / "port";
  fs::create_symlink("/dev/pts/9999", link);  // of a field that was killed
  std::string error;
  auto terminal = PseudoTerminal::Open(link, error);
  ASSERT_TRUE(terminal) << error;
  for (int opening = 0; opening < 2; ++opening) {
    EXPECT_FALSE(terminal->Connected());
    terminal->Write(all);  // nobody hears it
    const int console = open(link.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
    ASSERT_GE(console, 0);
    EXPECT_TRUE(terminal->Connected());
    terminal->Write(all);
    pollfd state{console, POLLIN, 0};
    for (const std::uint8_t expected : all) {
      std::uint8_t byte = 0;
      ASSERT_TRUE(poll(&state, 1, 2000) > 0 && read(console, &byte, 1) == 1);
      ASSERT_EQ(byte, expected);
    }
    EXPECT_EQ(write(console, all.data(), 256), 256);
    terminal->Wait(1000);
    EXPECT_EQ(terminal->Read(), all);
    terminal->Write(all);  // left unread
    close(console);
  }
  // A hung-up terminal must not make the caller spin.
  const auto before = std::chrono::steady_clock::now();
  terminal->Wait(30);
  EXPECT_GE(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(25));
  terminal.reset();
  EXPECT_FALSE(fs::is_symlink(link));

  fs::create_symlink("precious", link);
  for (int i = 0; i < 2; ++i) {
    EXPECT_FALSE(PseudoTerminal::Open(link, error));
    EXPECT_EQ(error, link + " exists and is not a link of a simulated field");
    EXPECT_EQ(fs::is_symlink(link), i == 0);
    fs::remove(link);
    PutFile(link, "precious");
  }
}

}  // namespace
}  // namespace quorvane::field
