#include "field/pseudo_terminal.h"

#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstring>

namespace quorvane::field {
namespace {

constexpr const char* kTerminals = "/dev/pts/";

std::string Reason() {
  return std::strerror(errno);
}

// Opens the other side once: sets raw mode, and leaves the terminal hung up, so that a later opening shows.
bool MakeRaw(const std::string& path) {
  const int slave = open(path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
  if (slave < 0) return false;
  termios settings{};
  bool good = tcgetattr(slave, &settings) == 0;
  if (good) {
    cfmakeraw(&settings);
    cfsetspeed(&settings, B9600);
    good = tcsetattr(slave, TCSANOW, &settings) == 0;
  }
  close(slave);
  return good;
}

// What a symbolic link says; empty when it is none.
std::string TargetOf(const std::string& link) {
  std::array<char, PATH_MAX> text{};
  const ssize_t length = readlink(link.c_str(), text.data(), text.size());
  return {text.data(), static_cast<std::size_t>(std::max<ssize_t>(length, 0))};
}

bool MakeLink(const std::string& link, const std::string& target, std::string& error) {
  struct stat status {};
  if (lstat(link.c_str(), &status) == 0) {
    // A field that was killed leaves its link to a pseudo-terminal; any other is somebody else's.
    if (!TargetOf(link).starts_with(kTerminals)) {
      error = link + " exists and is not a link of a simulated field";
      return false;
    }
    unlink(link.c_str());
  }
  if (symlink(target.c_str(), link.c_str()) == 0) return true;
  error = "cannot make " + link + ": " + Reason();
  return false;
}

}  // namespace

std::unique_ptr<PseudoTerminal> PseudoTerminal::Open(const std::string& link, std::string& error) {
  const int master = posix_openpt(O_RDWR | O_NOCTTY);
  if (master < 0) {
    error = "cannot open a pseudo-terminal: " + Reason();
    return nullptr;
  }
  std::unique_ptr<PseudoTerminal> terminal(new PseudoTerminal(master, "", ""));
  fcntl(master, F_SETFD, FD_CLOEXEC);
  std::array<char, PATH_MAX> name{};
  if (grantpt(master) != 0 || unlockpt(master) != 0 || ptsname_r(master, name.data(), name.size()) != 0) {
    error = "cannot unlock the pseudo-terminal: " + Reason();
    return nullptr;
  }
  terminal->path_ = name.data();
  if (!MakeRaw(terminal->path_) || fcntl(master, F_SETFL, O_NONBLOCK) != 0) {
    error = "cannot set up " + terminal->path_ + ": " + Reason();
    return nullptr;
  }
  if (!link.empty()) {
    if (!MakeLink(link, terminal->path_, error)) return nullptr;
    terminal->link_ = link;
  }
  return terminal;
}

PseudoTerminal::PseudoTerminal(int master, std::string path, std::string link)
    : master_(master), path_(std::move(path)), link_(std::move(link)) {}

PseudoTerminal::~PseudoTerminal() {
  if (!link_.empty() && TargetOf(link_) == path_) unlink(link_.c_str());
  close(master_);
}

bool PseudoTerminal::Connected() const {
  pollfd state{master_, POLLIN, 0};
  return poll(&state, 1, 0) >= 0 && (state.revents & POLLHUP) == 0;
}

void PseudoTerminal::Write(std::span<const std::uint8_t> bytes) {
  if (!Connected()) {
    // What the last reader left behind must not greet the next one.
    if (was_connected_) tcflush(master_, TCIOFLUSH);
    was_connected_ = false;
    return;
  }
  was_connected_ = true;
  while (!bytes.empty()) {
    const ssize_t written = write(master_, bytes.data(), bytes.size());
    if (written <= 0) return;  // a full buffer: the reader has stopped reading and misses the rest
    bytes = bytes.subspan(static_cast<std::size_t>(written));
  }
}

std::vector<std::uint8_t> PseudoTerminal::Read() {
  std::array<std::uint8_t, 1024> buffer;
  const ssize_t length = read(master_, buffer.data(), buffer.size());
  return {buffer.begin(), buffer.begin() + std::max<ssize_t>(length, 0)};
}

void PseudoTerminal::Wait(std::int64_t ms) const {
  const int timeout = static_cast<int>(std::clamp<std::int64_t>(ms, 0, 1000));
  if (Connected()) {
    pollfd state{master_, POLLIN, 0};
    poll(&state, 1, timeout);
  } else {
    poll(nullptr, 0, std::min(timeout, 50));
  }
}

}  // namespace quorvane::field
