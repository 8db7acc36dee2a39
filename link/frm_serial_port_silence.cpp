// Stations that fall silent while a race is flown.

#include "base/checked.h"
#include "base/stations.h"
#include "link/frm_serial_port.h"

namespace quorvane {
namespace {

constexpr int kUnassigned = 5;

// " P1 TM": the short names.
std::string Codes(const std::vector<int>& stations) {
  std::string text;
  for (const int station : stations) {
    text += station == kUnassigned ? " 5" : " " + std::string(Element(StationCodes, station));
  }
  return text;
}

}  // namespace

// Silence counts from the start of the race at the earliest: between races a station speaks only when it is
// polled.
void frmSerialPort::WatchForSilence() {
  if (race_.RaceActive == tmrSilence.Enabled()) return;
  raceSeen_ = door_.Now();
  silent_ = {};
  tmrSilence.SetEnabled(race_.RaceActive);
  MarkSilentStations();
}

// Nobody misses what was never heard of an address that belongs to nobody, or of a station that the console
// stands in for.
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
  ShowRadioWarning();
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
void frmSerialPort::ShowRadioWarning() {
  owner_.ShowRadioWarning(awaitedPort_ != 0 ? AwaitedShort() : SilenceText());
}

}  // namespace quorvane
