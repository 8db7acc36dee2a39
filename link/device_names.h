#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "link/port_numbers.h"

namespace quorvane {

// A serial port as the computer lists it just now.
struct ListedPort {
  std::string path;
  bool usb = false;
  std::int64_t ageMs = 0;  // of its device file
  std::string byId = {};   // its by-id name; empty: none yet
  std::string given = {};  // the path by which the command line names it; empty: it does not
};

// Tells by what name each listed port is known, see SerialDevice. The system gives a USB adapter its by-id
// name a moment after its device file: until then the adapter is left out, because it would be taken for
// another one. An adapter that has no name after kNameMs goes by its path.
class DeviceNames {
 public:
  static constexpr std::int64_t kNameMs = 1000;

  std::vector<SerialDevice> Name(const std::vector<ListedPort>& ports, std::int64_t nowMs);
  // A port was left out: ask again soon.
  bool Waiting() const { return waiting_; }

 private:
  std::map<std::string, std::int64_t> nameless_;  // path -> since when it stands there without a name
  bool waiting_ = false;
};

}  // namespace quorvane
