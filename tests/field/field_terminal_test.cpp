#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>

#include "field/pseudo_terminal.h"
#include "tests/support/scratch_folder.h"

namespace quorvane::field {
namespace {

namespace fs = std::filesystem;

TEST(FieldTerminal, CarriesBytesThroughItsLinkAndSurvivesReopening) {
  const std::vector<std::uint8_t> bytes{0x55, 0xAA, 0x00, 0x0D};
  const ScratchFolder folder;
  const std::string link = folder / "port";
  fs::create_symlink("/dev/pts/9999", link);  // of a field that was killed
  std::string error;
  auto terminal = PseudoTerminal::Open(link, error);
  ASSERT_TRUE(terminal) << error;
  for (int opening = 0; opening < 2; ++opening) {
    EXPECT_FALSE(terminal->Connected());
    terminal->Write(bytes);  // nobody hears it
    const int console = open(link.c_str(), O_RDWR | O_NOCTTY);
    EXPECT_TRUE(terminal->Connected());
    terminal->Write(bytes);
    std::vector<std::uint8_t> heard(5);
    heard.resize(static_cast<std::size_t>(read(console, heard.data(), 5)));
    EXPECT_EQ(heard, bytes);
    EXPECT_EQ(write(console, bytes.data(), 4), 4);
    terminal->Wait(1000);
    EXPECT_EQ(terminal->Read(), bytes);
    terminal->Write(bytes);  // left unread
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
