// The station rows, and the polling of the stations.

#include <fmt/format.h>

#include "base/text.h"
#include "link/frm_serial_port.h"

namespace quorvane {
namespace {

constexpr std::int64_t kOffAfterMs = 30000;

// 255 reads 18.81 V.
constexpr std::int64_t kVoltNumerator = 1881;
constexpr std::int64_t kVoltDenominator = 100 * 255;

std::string VoltText(std::uint8_t raw) {
  const std::int64_t numerator = kVoltNumerator * raw;
  if (numerator < kVoltDenominator) return "";  // below 1.0 V: the station does not report its supply
  return FormatRatio(numerator, kVoltDenominator, 1);
}

// An analogue sensor with 0.776 V at 0 degrees and 2.86 mV per degree, read by an 8-bit converter at 3.3 V:
// (raw * 3.3 / 256 - 0.776) / 0.00286, without its fractions.
std::string TempText(std::uint8_t raw) {
  return FormatRatio(raw * std::int64_t{330000} - std::int64_t{77600} * 256, std::int64_t{286} * 256, 1);
}

void Show(Control& cell, std::string text, Color color = kButtonText) {
  cell.SetCaption(std::move(text));
  cell.SetForeColor(color);
}

}  // namespace

void frmSerialPort::MarkStationHeard(int address) {
  if (address >= kStations) return;
  Element(heardAt_, address) = door_.Now();
  Show(lblAge[address], "0");
  lblAge[address].SetTag(std::to_string(door_.Now()));
  lblStation[address].SetForeColor(kButtonText);
}

// A low voltage is not marked: the limits of the station table are compared nowhere that shows.
void frmSerialPort::UpdateStationRow(const StationMessage& frame) {
  if (frame.From < kStations) {
    Show(lblVolt[frame.From], VoltText(frame.Volt));
    Show(lblTemp[frame.From], TempText(frame.Temp));
    MarkStationHeard(frame.From);
  }
  ShowMessageDetail(frame);
}

void frmSerialPort::tmrAging_Timer() {
  lblMessage.SetCaption(AwaitedText());
  for (int i = 0; i < kStations; ++i) AgeStation(i);
  if (!race_.RaceActive) PollNextStation();
  WatchForSilence();
  lblCounters.SetCaption(CountersText());
}

void frmSerialPort::AgeStation(int address) {
  const auto& heard = Element(heardAt_, address);
  if (heard && door_.Now() - *heard <= kOffAfterMs) {
    // Seconds with as many decimals as it takes: "12.345", "2.5", "30".
    return Show(lblAge[address], fmt::format("{}", static_cast<double>(door_.Now() - *heard) / 1000));
  }
  Show(lblAge[address], "Off", kRed);
  Show(lblVolt[address], "");
  Show(lblTemp[address], "");
}

// The name stays red until the station answers. A selected station is asked in place of the one whose turn it
// is.
void frmSerialPort::PollNextStation() {
  lblStation[PollStation_].SetForeColor(kRed);
  if (selectedStation_) return SendMessage(*selectedStation_, kConsole);
  SendMessage(PollStation_, kConsole);
  PollStation_ = (PollStation_ + 1) % kStations;
}

void frmSerialPort::lblStation_Click(int index) {
  selectedStation_ = index;
  cmdStation.SetAnchor(&lblStation[index]);
  cmdStation.SetCaption(lblStation[index].Caption());
  cmdStation.SetTag(std::to_string(index));
  cmdStation.SetVisible(true);
}

}  // namespace quorvane
