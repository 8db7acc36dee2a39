// Frames of the console's own.

#include "base/bits.h"
#include "link/frm_serial_port.h"

namespace quorvane {
namespace {

// The cut byte of a lane from its cut counts: a slot's low bit for one cut, both of its bits for more.
std::uint8_t CutByte(const std::array<std::int16_t, 4>& cuts) {
  std::uint8_t byte = 0;
  for (std::size_t slot = 0; slot < cuts.size(); ++slot) {
    if (cuts[slot] == 1) byte |= LaneBitLow[slot];
    if (cuts[slot] > 1) byte |= LaneBitPair[slot];
  }
  return byte;
}

}  // namespace

void frmSerialPort::SendMessage(std::int16_t to, std::int16_t from) {
  const bool listening = chkListen.Enabled() && chkListen.Value() == 1;
  if (!race_.CommActive || listening) return;
  TxMessage_.Wig1 = kWig1;
  TxMessage_.Wig2 = kWig2;
  TxMessage_.To = ToByte(to);
  TxMessage_.From = ToByte(from);
  if (IsControllerMode()) FillRaceData();

  StationMessage message = TxMessage_;
  message.Ecc = ComputeEcc(EncodeFrame(message));
  LightLamp(Traffic::Sent);
  if (MSComm1_.PortOpen()) Transmit(message);
  ShowMessageDetail(message);
}

void frmSerialPort::Transmit(const StationMessage& message) {
  const FrameBytes frame = EncodeFrame(message);
  const std::vector<std::uint8_t> bytes(frame.begin(), frame.end());
  NoteOnAir(message);
  MSComm1_.Output(bytes);
  counters_.Sent();
  door_.NoteSent(bytes);
}

void frmSerialPort::FillRaceData() {
  TxMessage_.ssSgl = 0;
  TxMessage_.ssDbl = 0;
  for (std::uint8_t lane = 0; lane < 4; ++lane) {
    std::array<std::int16_t, 4> cuts = {};
    owner_.GetLaneInfo(lane, TxMessage_.Lap[lane], TxMessage_.Lit[lane], cuts);
    TxMessage_.Cuts[lane] = CutByte(cuts);
    for (const std::int16_t count : cuts) {
      if (count == 1) TxMessage_.ssSgl |= BitMask[lane];
      if (count > 1) TxMessage_.ssDbl |= BitMask[lane];
    }
  }
  owner_.LoadStartInfo(TxMessage_.Time, TxMessage_.Strt, TxMessage_.Mode);
}

}  // namespace quorvane
