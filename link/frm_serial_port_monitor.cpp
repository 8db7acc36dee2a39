// The message detail panel.

#include "base/text.h"
#include "link/frm_serial_port.h"

namespace quorvane {
namespace {

// A caption that only acknowledgements lengthen has to end somewhere.
constexpr std::size_t kLongestCaption = 4000;

}  // namespace

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
