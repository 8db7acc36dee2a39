// The station rows, the polling of the stations, and the traffic lamps.

#include "base/stations.h"
#include "base/text.h"
#include "link/frm_serial_port.h"

namespace quorvane {
namespace {

constexpr int kStations = 8;
constexpr std::int64_t kOffAfterMs = 30000;
constexpr std::int64_t kLampMs = 100;

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

// ms as seconds with as many decimals as it takes: "12.345", "2.5", "30".
std::string PlainSeconds(std::int64_t ms) {
  std::string text = FormatRatio(ms, 1000, 3);
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  return text;
}

std::int64_t TagTime(const Control& control) {
  return static_cast<std::int64_t>(LeadingNumber(control.Tag()));
}

}  // namespace

void frmSerialPort::MarkStationHeard(int address) {
  if (address >= kStations) return;
  lblAge[address].SetCaption("0");
  lblAge[address].SetForeColor(kButtonText);
  lblAge[address].SetTag(std::to_string(door_.Now()));
  lblStation[address].SetForeColor(kButtonText);
}

void frmSerialPort::UpdateStationRow(const StationMessage& frame) {
  if (frame.From < kStations) {
    ShowStationHealth(frame);
    MarkStationHeard(frame.From);
  }
  ShowMessageDetail(frame);
}

// A low voltage is not marked: the limits of the station table are compared nowhere that shows.
void frmSerialPort::ShowStationHealth(const StationMessage& frame) {
  lblVolt[frame.From].SetCaption(VoltText(frame.Volt));
  lblVolt[frame.From].SetForeColor(kButtonText);
  lblTemp[frame.From].SetCaption(TempText(frame.Temp));
  lblTemp[frame.From].SetForeColor(kButtonText);
}

void frmSerialPort::tmrAging_Timer() {
  lblMessage.SetCaption(AwaitedText());
  for (int i = 0; i < kStations; ++i) AgeStation(i);
  if (!race_.RaceActive) PollNextStation();
  WatchForSilence();
  lblCounters.SetCaption(CountersText());
}

void frmSerialPort::AgeStation(int address) {
  const std::int64_t age = door_.Now() - TagTime(lblAge[address]);
  const bool neverHeard = lblAge[address].Tag().empty();
  if (!neverHeard && age <= kOffAfterMs) {
    lblAge[address].SetCaption(PlainSeconds(age));
    lblAge[address].SetForeColor(kButtonText);
    return;
  }
  lblAge[address].SetCaption("Off");
  lblAge[address].SetForeColor(kRed);
  for (Control* cell : {&lblVolt[address], &lblTemp[address]}) {
    cell->SetCaption("");
    cell->SetForeColor(kButtonText);
  }
}

// The name stays red until the station answers.
void frmSerialPort::PollNextStation() {
  lblStation[PollStation_].SetForeColor(kRed);
  if (cmdStation.Visible()) {
    SendMessage(LeadingInteger(cmdStation.Tag()), kConsole);
  } else {
    SendMessage(PollStation_, kConsole);
    PollStation_ = ToInteger((PollStation_ + 1) & 7);
  }
}

void frmSerialPort::lblStation_Click(int index) {
  cmdStation.SetAnchor(&lblStation[index]);
  cmdStation.SetCaption(lblStation[index].Caption());
  cmdStation.SetTag(std::to_string(index));
  cmdStation.SetVisible(true);
}

void frmSerialPort::cmdStation_Click() {
  cmdStation.SetVisible(false);
}

void frmSerialPort::LightLamp(Traffic lamp) {
  Element(litAt_, static_cast<int>(lamp)) = door_.Now();
  owner_.ShowTraffic(lamp, true);
  tmrIndicators.SetEnabled(true);
}

void frmSerialPort::tmrIndicators_Timer() {
  bool lit = false;
  for (const Traffic lamp : {Traffic::Received, Traffic::Sent}) {
    if (door_.Now() - Element(litAt_, static_cast<int>(lamp)) <= kLampMs) {
      lit = true;
    } else {
      owner_.ShowTraffic(lamp, false);
    }
  }
  tmrIndicators.SetEnabled(lit);
}

}  // namespace quorvane
