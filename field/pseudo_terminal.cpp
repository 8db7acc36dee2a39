#include "field/pseudo_terminal.h"

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstring>
#include <filesystem>

namespace quorvane::field {
namespace {

namespace fs = std::filesystem;

// What a symbolic link says; empty when it is none.
std::string TargetOf(const std::string& link) {
  std::error_code none;
  return fs::read_symlink(link, none).string();
}

// A field that was killed leaves its link to a pseudo-terminal; any other is somebody else's.
bool MakeLink(const std::string& link, const std::string& target, std::string& error) {
  std::error_code fault;
  if (fs::symlink_status(link, fault).type() != fs::file_type::not_found) {
    if (!TargetOf(link).starts_with("/dev/pts/")) {
      error = link + " exists and is not a link of a simulated field";
      return false;
    }
    fs::remove(link, fault);
  }
  fs::create_symlink(target, link, fault);
  if (fault) error = "cannot make " + link + ": " + fault.message();
  return !fault;
}

}  // namespace

// Opens the other side once, for raw mode: closed again it is hung up, so that a later opening shows.
std::unique_ptr<PseudoTerminal> PseudoTerminal::Open(const std::string& link, std::string& error) {
  int master = -1;
  int slave = -1;
  std::array<char, PATH_MAX> name{};
  if (openpty(&master, &slave, name.data(), nullptr, nullptr) != 0) {
    error = std::string("cannot open a pseudo-terminal: ") + std::strerror(errno);
    return nullptr;
  }
  termios settings{};
  tcgetattr(slave, &settings);
  cfmakeraw(&settings);
  cfsetspeed(&settings, B9600);
  tcsetattr(slave, TCSANOW, &settings);
  close(slave);
  fcntl(master, F_SETFD, FD_CLOEXEC);
  fcntl(master, F_SETFL, O_RDWR | O_NONBLOCK);
  std::unique_ptr<PseudoTerminal> terminal(new PseudoTerminal(master, name.data()));
  if (link.empty()) return terminal;
  if (!MakeLink(link, terminal->path_, error)) return nullptr;
  terminal->link_ = link;
  return terminal;
}

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
    // What the last reader left behind must not greet the next one. It waits at both ends of the terminal.
    if (std::exchange(was_connected_, false)) {
      tcflush(master_, TCIOFLUSH);
      const int slave = open(path_.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
      tcflush(slave, TCIFLUSH);
      close(slave);
    }
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
  const bool connected = Connected();
  pollfd state{master_, POLLIN, 0};
  poll(&state, connected ? 1 : 0, connected ? timeout : std::min(timeout, 50));
}

}  // namespace quorvane::field
