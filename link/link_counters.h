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

// What has gone over the radio since the program started, for a person who has to find out why it fails.
// Stations are told by their address 0..7; times are ms of the console clock.
struct LinkCounters {
  static constexpr int kStations = 8;

  struct Station {
    std::int64_t frames = 0;
    std::int64_t heard = 0;       // how often, acknowledgements too
    std::int64_t lastHeard = -1;  // -1: never
    std::int64_t longestSilence = 0;
  };

  // A good frame, or an acknowledgement, which does not name the station.
  void Good(int from, std::int64_t now);
  void Heard(int address, std::int64_t now);

  // The longest time between two signs of life, or since the last one; 0 when the station was never heard.
  std::int64_t LongestSilence(int address, std::int64_t now) const;
  bool WasHeard(int address) const { return Of(address).lastHeard >= 0; }
  // A station that has not been heard for more than 4.4 s, counted from `since` at the earliest.
  bool IsSilent(int address, std::int64_t now, std::int64_t since) const;

  // From now on, with every station as if it had just been heard.
  static LinkCounters Since(std::int64_t now);

  // Everything as text; lines end with a carriage return, the last one does not. `buffered`: of the bytes
  // received, those that may still become a frame.
  std::string Text(int buffered, std::int64_t now) const;

  const Station& Of(int address) const { return stations[static_cast<std::size_t>(address)]; }

  // So many stations spoke within a few seconds that the silence of another one tells something. Where one
  // box is switched on for a race by hand it tells nothing.
  bool lively = false;
  std::int64_t bytesReceived = 0;
  std::int64_t good = 0;  // frames, as the next two
  std::int64_t damaged = 0;
  std::int64_t sent = 0;
  std::map<int, int> lineErrors;  // by code
  std::array<Station, kStations> stations;
  std::map<std::int64_t, int> goodInSecond;  // good frames by second, the latest only
};

}  // namespace quorvane
