#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>

namespace quorvane {

// The station's name, "Station 5" for the one that has none.
std::string StationLabel(int address);

// What the serial control's line error means, for the operator.
std::string LineErrorText(int code);

// Counts what goes over the radio since the program started, for a person who has to find out why it fails.
// Stations are told by their address 0..7; times are ms of the console clock.
class LinkCounters {
 public:
  static constexpr int kStations = 8;

  void Received(std::size_t bytes) { bytesReceived_ += static_cast<std::int64_t>(bytes); }
  void Good(int from, std::int64_t now);
  void Damaged() { ++damaged_; }
  void Sent() { ++sent_; }
  void LineError(int code) { ++lineErrors_[code]; }
  // The station was heard without a frame that names it: an acknowledgement.
  void Heard(int address, std::int64_t now);

  std::int64_t GoodFrames() const { return good_; }
  std::int64_t FramesSent() const { return sent_; }
  // Bytes received that were not part of a good frame and are not among the `buffered` that wait.
  std::int64_t BytesSkipped(int buffered) const;
  std::int64_t FramesFrom(int address) const { return Of(address).frames; }
  // The longest time between two signs of life, or since the last one; 0 when the station was never heard.
  std::int64_t LongestSilence(int address, std::int64_t now) const;
  bool WasHeard(int address) const { return Of(address).lastHeard >= 0; }
  // A station that has not been heard for more than five seconds, counted from `since` at the earliest.
  bool IsSilent(int address, std::int64_t now, std::int64_t since) const;

  // Everything as text; lines end with a carriage return, the last one does not.
  std::string Text(int buffered, std::int64_t now) const;

 private:
  struct Station {
    std::int64_t frames = 0;
    std::int64_t lastHeard = -1;  // -1: never
    std::int64_t longestSilence = 0;
  };
  const Station& Of(int address) const { return stations_[static_cast<std::size_t>(address)]; }
  std::string RateText(std::int64_t now) const;
  std::string LineErrorsText() const;

  std::int64_t bytesReceived_ = 0;
  std::int64_t good_ = 0;
  std::int64_t damaged_ = 0;
  std::int64_t sent_ = 0;
  std::map<int, std::int64_t> lineErrors_;  // by code
  std::array<Station, kStations> stations_;
  std::map<std::int64_t, std::int64_t> goodInSecond_;  // good frames by second, the latest only
};

}  // namespace quorvane
