// Controller mode: the console acts for the starter and the timers, until a real starter is heard.

#include "base/text.h"
#include "link/frm_serial_port.h"

namespace quorvane {
namespace {

constexpr const char* kControllerKey = "chkSystemController";

}  // namespace

void frmSerialPort::chkSystemController_Click() {
  chkListen.SetEnabled(true);
  // A starter heard while the question is open has cleared the box. Answered with No, the box stays ticked:
  // the console controls all the same, it only does not tell the stations at once.
  if (IsControllerMode() && ConfirmControl() && IsControllerMode()) {
    chkListen.SetEnabled(false);
    owner_.IssueRaceEvent(true);
  }
  SaveSetting(kControllerKey, std::to_string(chkSystemController.Value()));
}

bool frmSerialPort::ConfirmControl() {
  DialogBox box;
  box.kind = DialogKind::YesNo;
  box.icon = DialogIcon::Exclamation;
  box.title = "Enabling CONTROLLER mode";
  box.text =
      "Do you want to CONTROL the race equipment\rfrom this computer\r\r"
      "Confirm that you really want to do this.";
  return door_.Ask(box).word == DialogAnswer::Word::Yes;
}

// The box is shown once the frame has been handled, so that reception goes on behind it.
void frmSerialPort::CancelControllerOnStarter() {
  if (!IsControllerMode()) return;
  chkSystemController.SetValue(0);
  door_.Post([this] {
    DialogBox box;
    box.kind = DialogKind::OkCancel;
    box.icon = DialogIcon::Exclamation;
    box.title = "Cancel CONTROLLER mode";
    box.text = "CONTROLLER mode is cancelled\rbecause the STARTER was detected";
    box.byRadio = true;
    door_.Ask(box);
  });
}

void frmSerialPort::RestoreControllerBox() {
  chkSystemController.SetValue(LeadingNumber(Setting(kControllerKey, "0")) == 1 ? 1 : 0);
}

}  // namespace quorvane
