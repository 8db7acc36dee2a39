#include "forms/form.h"
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
      {{"fraHeatControl", {kLeft, 176, kColumn, 198}, 20, Look::Title | Look::Bold | Look::White, "Race"},
       {"cmdDecHeat", {84, 215, 38, 34}, 16, button, "Previous heat"},
       {"txtHeat", {128, 215, 104, 34}, 16, number, "Heat"},
       {"cmdIncHeat", {238, 215, 38, 34}, 16, button, "Next heat"},
       {"cmdDecRound", {84, 254, 38, 34}, 16, button, "Previous round"},
       {"txtRound", {128, 254, 104, 34}, 16, number, "Round"},
       {"cmdIncRound", {238, 254, 38, 34}, 16, button, "Next round"},
       {"cboRaceMode", {18, 294, 166, 36}, 13, Look::Bold, "Race mode"},
       {"cmdRefly", {192, 294, 84, 36}, 13, button, "Refly", {}, 'l'},
       {"lblRaceMode", {18, 336, 148, 32}, 15, Look::Bold | Look::Border | Look::White, "Race mode now"},
       {"lblController", {170, 336, 106, 32}, 11, Look::Bold | Look::Border, "Mode"}});
  design.texts.push_back({"H&eat", {20, 215, 60, 34}, 13, Look::Left, "txtHeat"});
  design.texts.push_back({"Ro&und", {20, 254, 60, 34}, 13, Look::Left, "txtRound"});
}

void AddRaceButtons(FormDesign& design) {
  const Look button = Look::Bold | Look::White;
  const int half = (kColumn - 8) / 2;
  const int right = kLeft + kColumn - half;
  design.places.insert(
      design.places.end(),
      {{"chkSixtySecondCount", {kLeft + 4, 379, kColumn - 4, 26}, 13, Look::Left, "60 Second Count", {}, '6'},
       {"chkAudio", {kLeft + 4, 406, kColumn - 4, 26}, 13, Look::Left, "Audio Countdown", {}, 'A'},
       {"cmdStart", {kLeft, 437, kColumn, 60}, 22, button, "Start", "F1", 't'},
       {"cmdReset", {kLeft, 503, half, 40}, 15, button, "Reset", {}, 'R'},
       {"cmdSave", {right, 503, half, 40}, 15, button, "Save", {}, 'v'},
       {"cmdPrint", {kLeft, 549, half, 40}, 15, button, "Print", {}, 'P'},
       {"cmdReorder", {right, 549, half, 40}, 15, button, "Order", {}, 'O'}});
}

void AddLinkRow(FormDesign& design) {
  const Look lamp = Look::Lamp | Look::Border;
  design.places.insert(
      design.places.end(),
      {{"txtComments", {kLeft, 611, kColumn, 46}, 12, Look::Left | Look::Lines, "Comments"},
       {"lblNotice",
        {kLeft, 660, kColumn, 35},
        10.5,
        Look::Left | Look::Top | Look::Border | Look::White,
        "Notice"},
       {"lblSilent", {kLeft, 696, kColumn, 24}, 12, Look::Bold | Look::Left, "Radio"},
       {"lblComm", {kLeft, 722, 152, 40}, 13, Look::Bold | Look::Border | Look::White, "Station link"},
       {"lblReadComm", {kLeft + 160, 722, 52, 40}, 14, lamp, "Receiving"},
       {"lblWriteComm", {kLeft + 220, 722, 52, 40}, 14, lamp, "Sending"}});
  design.texts.push_back({"&Comments", {kLeft + 2, 590, kColumn, 21}, 12, Look::Left, "txtComments"});
}

}  // namespace

FormDesign ConsoleDesign() {
  FormDesign design;
  design.width = 1280;
  design.height = 772;
  design.home = "lblStatus";
  design.places = {
      {"lblStatus", {kLeft, 10, kColumn, 128}, 64, Look::Bold | Look::Heavy | Look::Focusable, "Race clock"},
      {"lblNotSaved", {kLeft, 142, kColumn, 30}, 15, Look::Bold | Look::Border, "Warning"}};
  AddHeatControl(design);
  AddRaceButtons(design);
  AddLinkRow(design);
  for (int i = 0; i < 4; ++i) {
    design.places.push_back({IndexedName("fraLane", i), {292, 10 + 189 * i, 978, 184}});
  }
  return design;
}

}  // namespace quorvane
