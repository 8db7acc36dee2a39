// The message detail panel.

#include "link/frm_serial_port.h"

namespace quorvane {
namespace {

constexpr const char* kMoreKey = "More";

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
  if (cmdStation.Visible()) {
    const std::string& selected = cmdStation.Tag();
    if (std::to_string(frame.To) != selected && std::to_string(frame.From) != selected) return;
  }
  fraMore.SetCaption("Msg (" + StationName(frame.From) + " -> " + StationName(frame.To) + ")");
  LastShownFrom_ = frame.From;
  if (frame.From != kAcknowledgement) LastToAddress_ = frame.To;
  lblMsg.SetCaption(DebugDump(frame));
  door_.System().RepaintWindows();
}

void frmSerialPort::lblMsg_Click() {
  Frozen_ = !Frozen_;
  cmdFreeze.SetVisible(Frozen_);
}

void frmSerialPort::cmdFreeze_Click() {
  Frozen_ = false;
  cmdFreeze.SetVisible(false);
}

// Saves the caption that was clicked, so that the click replayed at the next start leaves the panel as it
// was.
void frmSerialPort::cmdMore_Click() {
  SaveSetting(kMoreKey, cmdMore.Caption());
  const bool show = cmdMore.Caption() == ">";
  cmdMore.SetCaption(show ? "<" : ">");
  fraMore.SetVisible(show);
}

}  // namespace quorvane
