#include "ui/designs.h"

namespace quorvane {
namespace {

constexpr int kLeft = 10;
constexpr int kColumn = 272;  // width of the column left of the lanes

void AddHeatControl(FormDesign& design) {
  const Look number = Look::Bold | Look::Numeric | Look::Late;
  const Look button = Look::Bold | Look::White;
  design.places.insert(
      design.places.end(),
      {{"fraHeatControl", {kLeft, 176, kColumn, 204}, 20, Look::Title | Look::Bold | Look::White, "Race"},
       {"cmdDecHeat", {84, 218, 38, 34}, 16, button, "Previous heat"},
       {"txtHeat", {128, 218, 104, 34}, 16, number, "Heat"},
       {"cmdIncHeat", {238, 218, 38, 34}, 16, button, "Next heat"},
       {"cmdDecRound", {84, 258, 38, 34}, 16, button, "Previous round"},
       {"txtRound", {128, 258, 104, 34}, 16, number, "Round"},
       {"cmdIncRound", {238, 258, 38, 34}, 16, button, "Next round"},
       {"cboRaceMode", {18, 300, 166, 36}, 13, Look::Bold, "Race mode"},
       {"cmdRefly", {192, 300, 84, 36}, 13, button, "Refly", {}, 'l'},
       {"lblRaceMode", {18, 342, 258, 32}, 15, Look::Bold | Look::Border | Look::White, "Race mode now"}});
  design.texts.push_back({"H&eat", {20, 218, 60, 34}, 13, Look::Left, "txtHeat"});
  design.texts.push_back({"Ro&und", {20, 258, 60, 34}, 13, Look::Left, "txtRound"});
}

void AddRaceButtons(FormDesign& design) {
  const Look button = Look::Bold | Look::White;
  const int half = (kColumn - 8) / 2;
  const int right = kLeft + kColumn - half;
  design.places.insert(
      design.places.end(),
      {{"chkSixtySecondCount", {kLeft + 4, 386, kColumn - 4, 28}, 13, Look::Left, "60 Second Count", {}, '6'},
       {"chkAudio", {kLeft + 4, 414, kColumn - 4, 28}, 13, Look::Left, "Audio Countdown", {}, 'A'},
       {"cmdStart", {kLeft, 448, kColumn, 62}, 22, button, "Start", "F1", 't'},
       {"cmdReset", {kLeft, 516, half, 44}, 15, button, "Reset", {}, 'R'},
       {"cmdSave", {right, 516, half, 44}, 15, button, "Save", {}, 'v'},
       {"cmdPrint", {kLeft, 566, half, 44}, 15, button, "Print", {}, 'P'},
       {"cmdReorder", {right, 566, half, 44}, 15, button, "Order", {}, 'O'}});
}

void AddLinkRow(FormDesign& design) {
  const Look lamp = Look::Lamp | Look::Border;
  design.places.insert(
      design.places.end(),
      {{"txtComments", {kLeft, 638, kColumn, 54}, 12, Look::Left | Look::Lines, "Comments"},
       {"lblSilent", {kLeft, 695, kColumn, 25}, 12, Look::Bold | Look::Left, "Radio"},
       {"lblComm", {kLeft, 722, 152, 40}, 13, Look::Bold | Look::Border | Look::White, "Station link"},
       {"lblReadComm", {kLeft + 160, 722, 52, 40}, 14, lamp, "Receiving"},
       {"lblWriteComm", {kLeft + 220, 722, 52, 40}, 14, lamp, "Sending"}});
  design.texts.push_back({"&Comments", {kLeft + 2, 614, kColumn, 24}, 12, Look::Left, "txtComments"});
}

}  // namespace

FormDesign ConsoleDesign() {
  FormDesign design;
  design.width = 1280;
  design.height = 772;
  design.home = "lblStatus";
  design.places = {
      {"lblStatus", {kLeft, 10, kColumn, 128}, 64, Look::Bold | Look::Heavy | Look::Focusable, "Race clock"},
      {"lblNotSaved", {kLeft, 140, 104, 34}, 13, Look::Bold | Look::Border, "Warning"},
      {"lblNotice", {kLeft + 108, 139, kColumn - 108, 36}, 11, Look::Left | Look::Top, "Notice"}};
  AddHeatControl(design);
  AddRaceButtons(design);
  AddLinkRow(design);
  for (int i = 0; i < 4; ++i) {
    design.places.push_back({"fraLane(" + std::to_string(i) + ")", {292, 10 + 189 * i, 978, 184}});
  }
  return design;
}

}  // namespace quorvane
