// Frames: from the serial port to the race, and those of the console's own.

#include <fmt/format.h>

#include "base/checked.h"
#include "link/frm_serial_port.h"

namespace quorvane {

// Bytes that arrive behind a dialog box, while a frame is handled, wait for the outer loop.
void frmSerialPort::BytesArrived(const std::vector<std::uint8_t>& bytes) {
  MSComm1_.Receive(bytes);
  if (receiving_) return;
  const Restored busy(receiving_, true);
  for (auto taken = MSComm1_.Input(); !taken.empty(); taken = MSComm1_.Input()) {
    counters_.bytesReceived += std::ssize(taken);
    receiver_.Receive(taken, [this](Found found, const StationMessage& frame) { FrameFound(found, frame); });
  }
}

// A modem that was sending already fills the buffers before the console reads them for the first time.
void frmSerialPort::LineError(int code) {
  ++counters_.lineErrors[code];
  const bool filled = code == kCommOverrun || code == kCommOverflow;
  if (!filled || !receiver_.PortJustOpened()) lblMessage.SetCaption(LineErrorText(code));
}

void frmSerialPort::FrameFound(Found found, const StationMessage& frame) {
  if (found == Found::Good) return GoodFrame(frame);
  if (found == Found::Unexpected) {
    return lblMessage.SetCaption(fmt::format("Unexpected 0x{:X}, 0x{:X}", frame.Wig1, frame.Wig2));
  }
  Count([](LinkCounters& counters) { ++counters.damaged; });
  // An acknowledgement names no sender: it comes from the station that was addressed last.
  const int from = frame.From == kAcknowledgement ? LastToAddress_ : frame.From;
  lblMessage.SetCaption(fmt::format("{} -> {}, Ecc Error 0x{:X}, 0x{:X}", StationName(from),
                                    StationName(frame.To), ComputeEcc(frame), frame.Ecc));
}

// It may have started or ended the race, and its sender is silent no more.
void frmSerialPort::GoodFrame(const StationMessage& frame) {
  Count([&](LinkCounters& counters) { counters.Good(frame.From, door_.Now()); });
  if (frame.From < kStations) Element(volt_, frame.From) = frame.Volt;
  const int sender = NoteOnAir(frame);
  door_.Contain([this, &frame] { HandleFrame(frame); });
  WatchForSilence();
  if (sender < kStations && Element(silent_, sender)) MarkSilentStations();
}

void frmSerialPort::HandleFrame(const StationMessage& frame) {
  if (frame.From != kAcknowledgement) LastToAddress_ = frame.To;
  if (frame.From == kStarter) CancelControllerOnStarter();
  owner_.ProcessMessage(frame);
  LightLamp(Traffic::Received);
  door_.System().RepaintWindows();
  if (Visible()) UpdateStationRow(frame);
}

void frmSerialPort::SendMessage(int to, int from) {
  const bool listening = chkListen.Enabled() && chkListen.Value() == 1;
  if (!race_.CommActive || listening) return;
  TxMessage_.Wig1 = kWig1;
  TxMessage_.Wig2 = kWig2;
  TxMessage_.To = ToByte(to);
  TxMessage_.From = ToByte(from);
  if (IsControllerMode()) owner_.FillRaceData(TxMessage_);

  StationMessage message = TxMessage_;
  message.Ecc = ComputeEcc(message);
  LightLamp(Traffic::Sent);
  if (MSComm1_.PortOpen()) {
    const FrameBytes frame = EncodeFrame(message);
    const std::vector<std::uint8_t> bytes(frame.begin(), frame.end());
    NoteOnAir(message);
    MSComm1_.Output(bytes);
    ++counters_.sent;
    door_.NoteSent(bytes);
  }
  ShowMessageDetail(message);
}

void frmSerialPort::LightLamp(Traffic lamp) {
  litAt_[static_cast<std::size_t>(lamp)] = door_.Now();
  owner_.ShowTraffic(lamp, true);
  tmrIndicators.SetEnabled(true);
}

void frmSerialPort::tmrIndicators_Timer() {
  constexpr std::int64_t kLampMs = 100;
  bool anyLit = false;
  for (const Traffic lamp : {Traffic::Received, Traffic::Sent}) {
    const auto& at = litAt_[static_cast<std::size_t>(lamp)];
    const bool lit = at && door_.Now() - *at <= kLampMs;
    if (!lit) owner_.ShowTraffic(lamp, false);
    anyLit = anyLit || lit;
  }
  tmrIndicators.SetEnabled(anyLit);
}

// Who sent it; kAcknowledgement when nobody knows. An acknowledgement names no sender, but it answers the
// frame before it. A station that only acknowledges is alive, whether or not the detail panel is open.
int frmSerialPort::NoteOnAir(const StationMessage& frame) {
  if (frame.From != kAcknowledgement) {
    onAirFrom_ = frame.From;
    onAirTo_ = frame.To;
    return frame.From;
  }
  if (frame.To != onAirFrom_) return kAcknowledgement;
  Count([this](LinkCounters& counters) { counters.Heard(onAirTo_, door_.Now()); });
  if (Visible()) MarkStationHeard(onAirTo_);
  return onAirTo_;
}

}  // namespace quorvane
