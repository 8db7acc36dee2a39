#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <string>

namespace quorvane {

// The far side of a pseudo-terminal that has a path of its own, as a modem has.
class Modem {
 public:
  explicit Modem(const std::string& link) : link_(link), far_(posix_openpt(O_RDWR | O_NOCTTY)) {
    grantpt(far_);
    unlockpt(far_);
    termios raw{};
    tcgetattr(far_, &raw);
    cfmakeraw(&raw);
    tcsetattr(far_, TCSANOW, &raw);
    EXPECT_EQ(symlink(ptsname(far_), link_.c_str()), 0);
  }
  ~Modem() {
    unlink(link_.c_str());
    close(far_);
  }
  Modem(const Modem&) = delete;
  Modem& operator=(const Modem&) = delete;

  void Send(const std::string& bytes) {
    EXPECT_EQ(write(far_, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
  }
  std::string Receive() {
    char buffer[100];
    fcntl(far_, F_SETFL, O_NONBLOCK);
    const ssize_t got = read(far_, buffer, sizeof buffer);
    return {buffer, static_cast<std::size_t>(std::max<ssize_t>(got, 0))};
  }

 private:
  const std::string link_;
  const int far_;
};

}  // namespace quorvane
