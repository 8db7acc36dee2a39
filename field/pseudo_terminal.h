#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace quorvane::field {

// The master side of a raw pseudo-terminal; the other is opened like a serial port. Only Wait blocks.
class PseudoTerminal {
 public:
  // On failure null, and the reason in `error`. An empty `link` makes none; an old symbolic link is replaced.
  static std::unique_ptr<PseudoTerminal> Open(const std::string& link, std::string& error);

  // Removes the link if it is still ours.
  ~PseudoTerminal();
  PseudoTerminal(const PseudoTerminal&) = delete;
  PseudoTerminal& operator=(const PseudoTerminal&) = delete;

  // The device that the other side opens.
  const std::string& path() const { return path_; }

  // Whether somebody has the other side open now.
  bool Connected() const;

  // Writes as much as the other side's buffer takes; without anybody there the bytes are gone, as on the air.
  void Write(std::span<const std::uint8_t> bytes);

  // What has come from the other side.
  std::vector<std::uint8_t> Read();

  // Returns when bytes have come, a signal has arrived or the time is over. While nobody is connected it
  // looks again at least every 50 ms: a hung-up terminal reports itself ready without end.
  void Wait(std::int64_t ms) const;

 private:
  PseudoTerminal(int master, std::string path) : master_(master), path_(std::move(path)) {}

  int master_;
  std::string path_;
  std::string link_;
  bool was_connected_ = false;
};

}  // namespace quorvane::field
