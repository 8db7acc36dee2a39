// For a person who has to find out why the radio fails: counters, copies as text, and stations that fell
// silent.

#include <algorithm>

#include "link/frm_serial_port.h"

namespace quorvane {
namespace {

// The program's lines end with a carriage return, other programs' with a line feed.
std::string ForClipboard(std::string text) {
  std::replace(text.begin(), text.end(), '\r', '\n');
  return text + "\n";
}

}  // namespace

std::string frmSerialPort::CountersText() const {
  return counters_.Text(receiver_.RxCount(), door_.Now());
}

void frmSerialPort::cmdCopyMsg_Click() {
  door_.System().CopyText(ForClipboard(fraMore.Caption() + "\r" + lblMsg.Caption()));
}

void frmSerialPort::cmdCopyCounters_Click() {
  door_.System().CopyText(ForClipboard(CountersText()));
}

// Silence counts from the start of the race at the earliest: between races a station speaks only when it is
// polled.
void frmSerialPort::WatchForSilence() {
  const bool flying = race_.RaceActive && !race_.RaceDone;
  if (flying == tmrSilence.Enabled()) return;
  raceSeen_ = door_.Now();
  tmrSilence.SetEnabled(flying);
  MarkSilentStations();
}

// An acknowledgement names no sender, but it answers the frame before it. A station that only acknowledges is
// alive, whether or not the detail panel is open.
int frmSerialPort::NoteOnAir(const StationMessage& frame) {
  if (frame.From != kAcknowledgement) {
    onAirFrom_ = frame.From;
    onAirTo_ = frame.To;
    return frame.From;
  }
  if (frame.To != onAirFrom_) return kAcknowledgement;
  counters_.Heard(onAirTo_, door_.Now());
  return onAirTo_;
}

// After a frame has been handled: it may have started or ended the race, and its sender is silent no more.
void frmSerialPort::NoteSignOfLife(int from) {
  WatchForSilence();
  if (from < LinkCounters::kStations && lblSilent[from].Visible()) MarkSilentStations();
}

void frmSerialPort::tmrSilence_Timer() {
  WatchForSilence();
  MarkSilentStations();
}

void frmSerialPort::MarkSilentStations() {
  std::string names;
  for (int i = 0; i < LinkCounters::kStations; ++i) {
    const bool silent = tmrSilence.Enabled() && counters_.IsSilent(i, door_.Now(), raceSeen_);
    lblSilent[i].SetVisible(silent);
    if (silent) names += (names.empty() ? "Silent: " : ", ") + StationLabel(i);
  }
  Control* label = owner_.SilenceLabel();
  if (label == nullptr) return;
  label->SetCaption(names);
  label->SetVisible(!names.empty());
}

}  // namespace quorvane
