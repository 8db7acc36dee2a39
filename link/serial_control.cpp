#include "link/serial_control.h"

#include <utility>

namespace quorvane {

SerialError SerialControl::SetPortOpen(bool open) {
  if (open == open_) return {};
  if (open) {
    if (SerialError error = OpenDevice(port_, settings_)) return error;
  } else {
    CloseDevice();
    waiting_.clear();
  }
  open_ = open;
  return {};
}

SerialError SerialControl::SetCommPort(int port) {
  if (port < 1 || !DeviceExists(port)) return {kErrorNoSuchPort, "Invalid port number"};
  port_ = port;
  return {};
}

std::vector<std::uint8_t> SerialControl::Input() {
  return std::exchange(waiting_, {});
}

void SerialControl::Output(const std::vector<std::uint8_t>& bytes) {
  if (open_) WriteDevice(bytes);
}

bool SerialControl::Receive(const std::vector<std::uint8_t>& bytes) {
  if (!open_) return false;
  waiting_.insert(waiting_.end(), bytes.begin(), bytes.end());
  commEvent_ = kCommEventReceive;
  return true;
}

}  // namespace quorvane
