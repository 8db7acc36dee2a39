#pragma once

#include <cstdint>
#include <string>
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
inline constexpr int kErrorStaleLock = 17;   // the lock of a program that has ended stands there
inline constexpr int kCommEventReceive = 2;  // an ordinary event; 1000 and above are line errors
inline constexpr int kCommBreak = 1001;
inline constexpr int kCommFraming = 1004;
inline constexpr int kCommOverrun = 1006;
inline constexpr int kCommOverflow = 1008;
inline constexpr int kCommParity = 1009;
inline constexpr int kCommSendFull = 1010;

// The serial port as the link form works it. The part that belongs to the platform (the device itself) is in
// the protected operations; bytes and line errors reach it through the door, which calls Receive and
// SetCommEvent before the form's MSComm1_OnComm. Ports are numbered from 1 ("COM1").
class SerialControl {
 public:
  virtual ~SerialControl() = default;

  bool PortOpen() const { return open_; }
  // Opening an open port and closing a closed one do nothing and succeed.
  SerialError SetPortOpen(bool open);
  void SetSettings(std::string settings) { settings_ = std::move(settings); }  // "9600,n,8,1"
  const std::string& Settings() const { return settings_; }
  // kErrorNoSuchPort when there is no such port; the old number is then kept.
  SerialError SetCommPort(int port);
  int CommPort() const { return port_; }

  int InBufferCount() const { return static_cast<int>(waiting_.size()); }
  std::vector<std::uint8_t> Input();  // takes all waiting bytes
  void Output(const std::vector<std::uint8_t>& bytes);
  int CommEvent() const { return commEvent_; }

  // From outside: bytes that arrived while the port is open. Returns false, and drops them, when it is
  // closed.
  bool Receive(const std::vector<std::uint8_t>& bytes);
  void SetCommEvent(int code) { commEvent_ = code; }

 protected:
  virtual bool DeviceExists(int port) = 0;
  virtual SerialError OpenDevice(int port, const std::string& settings) = 0;
  virtual void CloseDevice() = 0;
  virtual void WriteDevice(const std::vector<std::uint8_t>& bytes) = 0;  // never blocks

 private:
  bool open_ = false;
  int port_ = 1;
  int commEvent_ = 0;
  std::string settings_ = "9600,n,8,1";
  std::vector<std::uint8_t> waiting_;
};

}  // namespace quorvane
