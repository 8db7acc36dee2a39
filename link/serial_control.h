#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace quorvane {

// Why a serial operation failed, in the operating system's words; number 0 means that it did not.
struct SerialError {
  int number = 0;
  std::string description = {};
  explicit operator bool() const { return number != 0; }
};

inline constexpr int kErrorNoSuchPort = 8002;
// Numbers as the operating system gives them.
inline constexpr int kErrorNotFound = 2;
inline constexpr int kErrorInput = 5;
inline constexpr int kErrorDenied = 13;
inline constexpr int kErrorBusy = 16;
inline constexpr int kErrorStaleLock = 17;  // the lock of a program that has ended stands there

// Line errors.
inline constexpr int kCommBreak = 1001;
inline constexpr int kCommFraming = 1004;
inline constexpr int kCommOverrun = 1006;
inline constexpr int kCommOverflow = 1008;
inline constexpr int kCommParity = 1009;
inline constexpr int kCommSendFull = 1010;

// The serial port as the link form works it; the device itself is the platform's part, in the protected
// operations. Ports are numbered from 1 ("COM1").
class SerialControl {
 public:
  virtual ~SerialControl() = default;

  bool PortOpen() const { return open_; }
  int CommPort() const { return port_; }
  // Closes the one that was open. kErrorNoSuchPort when there is no such port; the old number is then kept.
  SerialError Open(int port) {
    Close();
    if (port < 1 || !DeviceExists(port)) return {kErrorNoSuchPort, "Invalid port number"};
    port_ = port;
    SerialError error = OpenDevice(port);
    open_ = !error;
    return error;
  }
  void Close() {
    if (!open_) return;
    CloseDevice();
    waiting_.clear();
    open_ = false;
  }

  // Bytes from outside wait until they are taken; those for a closed port are gone.
  void Receive(const std::vector<std::uint8_t>& bytes) {
    if (open_) waiting_.insert(waiting_.end(), bytes.begin(), bytes.end());
  }
  std::vector<std::uint8_t> Input() { return std::exchange(waiting_, {}); }
  void Output(const std::vector<std::uint8_t>& bytes) {
    if (open_) WriteDevice(bytes);
  }

 protected:
  virtual bool DeviceExists(int port) = 0;
  virtual SerialError OpenDevice(int port) = 0;  // 9600 baud, no parity, 8 data bits, 1 stop bit
  virtual void CloseDevice() = 0;
  virtual void WriteDevice(const std::vector<std::uint8_t>& bytes) = 0;  // never blocks

 private:
  bool open_ = false;
  int port_ = 1;
  std::vector<std::uint8_t> waiting_;
};

}  // namespace quorvane
