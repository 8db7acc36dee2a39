#include "console/frm_keyboard.h"

#include <array>

#include "forms/event.h"
#include "forms/forms.h"

namespace quorvane {
namespace {

constexpr std::array kActions = {"Lap", "Cut at pylon 1", "Cut at pylon 2", "Cut at pylon 3"};

}  // namespace

frmKeyboard::frmKeyboard(Forms& forms)
    : Form(forms, "frmKeyboard"),
      lblLane(*this, ControlKind::Label, "lblLane", 1, 4),
      lblAction(*this, ControlKind::Label, "lblAction", 0, 3),
      lblKey(*this, ControlKind::Label, "lblKey", 0, 15),
      lblNotes(AddCaptioned(
          ControlKind::Label, "lblNotes",
          "F1 starts the race while it waits for its start.\r"
          "After the finish no key enters anything until the race is saved.\r"
          "7, 8, 9 and 0 judge cuts unless you are typing (Esc ends that); the function keys always act.\r"
          "Alt with the underlined letter of a button or menu presses it. Tab goes from one to the next.\r"
          "In the print preview the arrows, Page Up and Page Down scroll.")),
      cmdClose(AddCaptioned(ControlKind::Button, "cmdClose", "Close")) {
  SetCaption("Keyboard");
  for (int lane = 1; lane <= 4; ++lane) lblLane[lane].SetCaption("Lane " + std::to_string(lane));
  for (std::size_t i = 0; i < kActions.size(); ++i) {
    lblAction[static_cast<int>(i)].SetCaption(kActions[i]);
  }
  for (std::size_t i = 0; i < kKeyNames.size(); ++i)
    lblKey[static_cast<int>(i)].SetCaption(std::string(kKeyNames[i]));
  cmdClose.onClick = [this] { CloseRequested(); };
}

}  // namespace quorvane
