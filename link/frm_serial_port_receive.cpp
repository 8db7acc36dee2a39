// The receive path: from the serial event to the race.

#include "base/busy_flag.h"
#include "base/text.h"
#include "link/frm_serial_port.h"

namespace quorvane {
namespace {

constexpr int kFirstLineError = 1000;

std::string HexNumber(std::uint8_t value) {
  return "0x" + Hex(value);
}

}  // namespace

void frmSerialPort::BytesArrived(const std::vector<std::uint8_t>& bytes) {
  if (MSComm1_.Receive(bytes)) MSComm1_OnComm();
}

void frmSerialPort::LineError(int code) {
  counters_.LineError(code);
  MSComm1_.SetCommEvent(code);
  MSComm1_OnComm();
}

// Bytes that arrive while a frame is handled (behind a dialog box) wait in the serial control for the outer
// loop.
void frmSerialPort::MSComm1_OnComm() {
  if (MSComm1_.CommEvent() >= kFirstLineError) DisplayCommError();
  if (receiving_) return;
  const BusyFlag busy(receiving_);
  while (MSComm1_.InBufferCount() >= 1) {
    const std::vector<std::uint8_t> bytes = MSComm1_.Input();
    counters_.Received(static_cast<std::int64_t>(bytes.size()));
    receiver_.Receive(bytes, *this);
  }
}

std::int32_t frmSerialPort::ReadMessage() {
  return receiver_.ReadMessage(*this);
}

void frmSerialPort::GoodFrame(const StationMessage& frame) {
  counters_.Good(frame.From, door_.Now());
  const int sender = NoteOnAir(frame);
  door_.Contain([this, &frame] { HandleFrame(frame); });
  NoteSignOfLife(sender);
}

void frmSerialPort::HandleFrame(const StationMessage& frame) {
  if (frame.From != kAcknowledgement) LastToAddress_ = frame.To;
  if (frame.From == kStarter) CancelControllerOnStarter();
  owner_.ProcessMessage(frame);
  LightLamp(Traffic::Received);
  door_.System().RepaintWindows();
  if (Visible()) UpdateStationRow(frame);
}

void frmSerialPort::DamagedFrame(const StationMessage& frame, std::uint8_t computedEcc) {
  counters_.Damaged();
  // An acknowledgement names no sender: it comes from the station that was addressed last.
  const int from = frame.From == kAcknowledgement ? LastToAddress_ : frame.From;
  ShowLinkMessage(StationName(from) + " -> " + StationName(frame.To) + ", Ecc Error " +
                  HexNumber(computedEcc) + ", " + HexNumber(frame.Ecc));
}

void frmSerialPort::Unexpected(std::uint8_t first, std::uint8_t second) {
  ShowLinkMessage("Unexpected " + HexNumber(first) + ", " + HexNumber(second));
}

// The ageing timer clears the line again. It always has this interval, so that steady noise does not hold it
// back.
void frmSerialPort::ShowLinkMessage(const std::string& text) {
  lblMessage.SetCaption(text);
  tmrAging.SetInterval(kAgingMs);
}

}  // namespace quorvane
