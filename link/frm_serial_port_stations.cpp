// The station rows and the polling, the stations that fall silent, and the message detail panel.

#include <fmt/format.h>

#include <array>

#include "base/checked.h"
#include "base/stations.h"
#include "base/text.h"
#include "link/frm_serial_port.h"

namespace quorvane {
namespace {

constexpr std::int64_t kOffAfterMs = 30000;
constexpr std::int64_t kPresentMs = 10000;
constexpr std::int64_t kAnswerMs = 1000;
// Below this the boxes of the field begin to fail: four cells, or a lead battery.
constexpr std::array kLowTenthsOfVolt = {45, 45, 45, 120, 45, 0, 120, 120};

// 255 reads 18.81 V.
constexpr std::int64_t kVoltNumerator = 1881;
constexpr std::int64_t kVoltDenominator = 100 * 255;

std::string VoltText(std::uint8_t raw) {
  const std::int64_t numerator = kVoltNumerator * raw;
  if (numerator < kVoltDenominator) return "";  // below 1.0 V: the station does not report its supply
  return FormatRatio(numerator, kVoltDenominator, 1);
}

// Sensor with 0.776 V at 0 degrees and 2.86 mV per degree, 8 bits at 3.3 V: (raw*3.3/256 - 0.776) / 0.00286.
std::string TempText(std::uint8_t raw) {
  return FormatRatio(raw * std::int64_t{330000} - std::int64_t{77600} * 256, std::int64_t{286} * 256, 1);
}

void Show(Control& cell, std::string text, Color color = kButtonText) {
  cell.SetCaption(std::move(text));
  cell.SetForeColor(color);
}

constexpr int kUnassigned = 5;

// " P1 TM": the short names.
std::string Codes(const std::vector<int>& stations) {
  std::string text;
  for (const int station : stations) {
    text += station == kUnassigned ? " 5" : " " + std::string(Element(StationCodes, station));
  }
  return text;
}

// A caption that only acknowledgements lengthen has to end somewhere.
constexpr std::size_t kLongestCaption = 4000;

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
  Count([](LinkCounters&) {});
  WatchForSilence();
  if (!race_.RaceActive) ShowRadioState();
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

// The name whose turn it is stays red until the station answers. A selected station is asked in its place;
// nobody asks the others then, and one that is not heard for long has as good as not answered.
void frmSerialPort::PollNextStation() {
  lblStation[PollStation_].SetForeColor(kRed);
  if (!selectedStation_) {
    AwaitAnswer(PollStation_);
    SendMessage(PollStation_, kConsole);
    PollStation_ = (PollStation_ + 1) % kStations;
    return;
  }
  for (int i = 0; i < kStations; ++i) {
    if (i == *selectedStation_ || door_.Now() - counters_.Of(i).lastHeard > kOffAfterMs) AwaitAnswer(i);
  }
  SendMessage(*selectedStation_, kConsole);
}

// From now on, or since it was asked before and has not answered.
void frmSerialPort::AwaitAnswer(int address) {
  std::int64_t& since = Element(awaitedSince_, address);
  if (since == 0 || counters_.Of(address).lastHeard >= since) since = door_.Now();
}

void frmSerialPort::lblStation_Click(int index) {
  selectedStation_ = index;
  cmdStation.SetAnchor(&lblStation[index]);
  cmdStation.SetCaption(lblStation[index].Caption());
  cmdStation.SetTag(std::to_string(index));
  cmdStation.SetVisible(true);
}

// Silence counts from the start of the race: before it a station speaks only when it is polled.
void frmSerialPort::WatchForSilence() {
  if (race_.RaceActive == tmrSilence.Enabled()) return;
  raceSeen_ = door_.Now();
  tmrSilence.SetEnabled(race_.RaceActive);
  MarkSilentStations();
}

void frmSerialPort::BeginRace() {
  ofRace_ = LinkCounters::Since(door_.Now());
  raceUntil_ = door_.Now();
}

// Since the start, and in the race: what comes after its finish does not touch it any more.
void frmSerialPort::Count(const std::function<void(LinkCounters& counters)>& count) {
  count(counters_);
  if (!race_.BeingFlown()) return;
  raceUntil_ = door_.Now();
  count(ofRace_);
}

std::optional<RadioRecord> frmSerialPort::InRace() const {
  if (!race_.CommActive && ofRace_.good == 0) return std::nullopt;
  RadioRecord radio{.damaged = ofRace_.damaged, .lively = ofRace_.lively};
  for (int i = 0; i < kStations; ++i) {
    if (!IsExpected(i)) continue;
    radio.stations.push_back({StationLabel(i), ofRace_.Of(i).heard, ofRace_.LongestSilence(i, raceUntil_)});
  }
  return radio;
}

// Nobody misses an address that belongs to nobody, or a station that the console stands in for.
bool frmSerialPort::IsExpected(int address) const {
  const bool stoodInFor = IsControllerMode() && (address == kStarter || address == kTimers);
  return counters_.WasHeard(address) || (address != kUnassigned && !stoodInFor);
}

// A console without a radio misses nobody.
bool frmSerialPort::IsQuiet(int address) const {
  if (!race_.RaceActive || !race_.CommActive || !IsExpected(address)) return false;
  return counters_.IsSilent(address, door_.Now(), raceSeen_);
}

// After the finish the stations may fall silent; those that did before it are named until the race is saved
// or called off, because its times may have suffered.
void frmSerialPort::MarkSilentStations() {
  for (int i = 0; i < kStations; ++i) {
    bool& silent = Element(silent_, i);
    silent = IsQuiet(i) && (silent || !race_.RaceDone);
    lblSilent[i].SetVisible(silent);
  }
  ShowRadioState();
}

// The more there are, the shorter: all of it must fit beside the port.
std::string frmSerialPort::SilenceText() const {
  std::vector<int> fallen;
  std::vector<int> never;
  bool all = true;
  for (int i = 0; i < kStations; ++i) {
    const bool silent = Element(silent_, i);
    if (silent) (counters_.WasHeard(i) ? fallen : never).push_back(i);
    if (!silent && IsExpected(i)) all = false;
  }
  if (all) return "RADIO SILENT";
  if (fallen.size() + never.size() == 1) {
    return fallen.empty() ? "Never heard: " + StationLabel(never[0]) : "Silent: " + StationLabel(fallen[0]);
  }
  std::string text = fallen.empty() ? "" : "Silent:" + Codes(fallen);
  if (!never.empty()) text += (text.empty() ? "Never heard:" : ", never:") + Codes(never);
  return text;
}

// On the console, where the operator looks during a race.
void frmSerialPort::ShowRadioState() {
  if (awaitedPort_ != 0) return owner_.ShowRadioState(AwaitedShort(), true);
  if (race_.RaceActive || !race_.CommActive) return owner_.ShowRadioState(SilenceText(), true);
  CallRoll();
}

// The roll call before a race: one line that never holds up a start.

// One that is only polled speaks every sixteen seconds: it is there while it answers, whenever that was.
frmSerialPort::Presence frmSerialPort::PresenceOf(int address) const {
  const std::int64_t heard = counters_.Of(address).lastHeard;
  const std::int64_t since = Element(awaitedSince_, address);
  const bool late = since != 0 && heard < since && door_.Now() - since >= kAnswerMs;
  if (counters_.WasHeard(address) && (!late || door_.Now() - heard <= kPresentMs)) return Presence::kHere;
  return late ? Presence::kMissing : Presence::kUnknown;
}

// One that reports no supply has none that is low.
bool frmSerialPort::BatteryLow(int address) const {
  const std::int64_t numerator = kVoltNumerator * Element(volt_, address);
  return numerator >= kVoltDenominator &&
         10 * numerator < kVoltDenominator * Element(kLowTenthsOfVolt, address);
}

void frmSerialPort::CallRoll() {
  std::vector<int> missing, low;
  int here = 0, expected = 0;
  for (int i = 0; i < kStations; ++i) {
    if (!IsExpected(i)) continue;
    ++expected;
    const Presence presence = PresenceOf(i);
    if (presence == Presence::kMissing) missing.push_back(i);
    if (presence != Presence::kHere) continue;
    ++here;
    if (BatteryLow(i)) low.push_back(i);
  }
  std::string text = here == expected  ? fmt::format("All {} stations here", here)
                     : missing.empty() ? fmt::format("{} of {} stations so far", here, expected)
                     : here == 0       ? "No station heard"
                                       : "Missing:" + Codes(missing);
  if (!low.empty()) text += ", battery low:" + Codes(low);
  owner_.ShowRadioState(text, !missing.empty() || !low.empty());
}

void frmSerialPort::ShowMessageDetail(const StationMessage& frame) {
  if (!fraMore.Visible() || Frozen_) return;
  if (frame.To == LastShownFrom_ && frame.From == kAcknowledgement) {
    if (fraMore.Caption().size() < kLongestCaption) fraMore.SetCaption(fraMore.Caption() + " Ack");
    MarkStationHeard(LastToAddress_);
    return;
  }
  if (selectedStation_ && frame.To != *selectedStation_ && frame.From != *selectedStation_) return;
  fraMore.SetCaption("Msg (" + StationName(frame.From) + " -> " + StationName(frame.To) + ")");
  LastShownFrom_ = frame.From;
  if (frame.From != kAcknowledgement) LastToAddress_ = frame.To;
  lblMsg.SetCaption(DebugDump(frame));
  door_.System().RepaintWindows();
}

void frmSerialPort::Freeze(bool frozen) {
  Frozen_ = frozen;
  cmdFreeze.SetVisible(frozen);
}

// Kept for the next start.
void frmSerialPort::ShowDetail(bool show) {
  SaveSetting("More", show ? ">" : "<");
  cmdMore.SetCaption(show ? "<" : ">");
  fraMore.SetVisible(show);
}

// The program's lines end with a carriage return, other programs' with a line feed.
void frmSerialPort::CopyText(const std::string& text) {
  door_.System().CopyText(Replaced(text, "\r", "\n") + "\n");
}

}  // namespace quorvane
