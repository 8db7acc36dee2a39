#include "forms/form.h"
#include "ui/designs.h"

namespace quorvane {
namespace {

constexpr int kLeft = 10;
constexpr int kColumn = 272;  // width of the column left of the lanes

std::vector<Place> HeatControl() {
  const Look number = Look::Bold | Look::Numeric | Look::Late;
  const Look title = kButtonLook | Look::Top | Look::Border;
  return {{"fraHeatControl", {kLeft, 176, kColumn, 198}, 20, title, "Race"},
          {"cmdDecHeat", {84, 215, 38, 34}, 16, kButtonLook, "Previous heat"},
          {"txtHeat", {128, 215, 104, 34}, 16, number, "Heat"},
          {"cmdIncHeat", {238, 215, 38, 34}, 16, kButtonLook, "Next heat"},
          {"cmdDecRound", {84, 254, 38, 34}, 16, kButtonLook, "Previous round"},
          {"txtRound", {128, 254, 104, 34}, 16, number, "Round"},
          {"cmdIncRound", {238, 254, 38, 34}, 16, kButtonLook, "Next round"},
          {"cboRaceMode", {18, 294, 166, 36}, 13, Look::Bold, "Race mode"},
          {"cmdRefly", {192, 294, 84, 36}, 13, kButtonLook, "Refly", 'l'},
          {"lblRaceMode", {18, 336, 148, 32}, 15, kButtonLook | Look::Border, "Race mode now"},
          {"lblController", {170, 336, 106, 32}, 11, Look::Bold | Look::Border, "Mode"}};
}

std::vector<Place> RaceButtons() {
  const int half = (kColumn - 8) / 2;
  const int right = kLeft + kColumn - half;
  return {{"chkSixtySecondCount", {kLeft + 4, 379, kColumn - 4, 26}, 13, Look::Left, "60 Second Count", '6'},
          {"chkAudio", {kLeft + 4, 406, kColumn - 4, 26}, 13, Look::Left, "Audio Countdown", 'A'},
          {"cmdStart", {kLeft, 437, kColumn, 48}, 22, kButtonLook, "Start", 't', "F1"},
          {"cmdReset", {kLeft, 490, half, 40}, 15, kButtonLook, "Reset", 'R'},
          {"cmdSave", {right, 490, half, 40}, 15, kButtonLook, "Save", 'v'},
          {"cmdPrint", {kLeft, 535, half, 40}, 15, kButtonLook, "Print", 'P'},
          {"cmdReorder", {right, 535, half, 40}, 15, kButtonLook, "Order", 'O'}};
}

std::vector<Place> LinkRow() {
  const Look lamp = Look::Lamp | Look::Border;
  const Look notice = Look::Left | Look::Top | Look::Border | Look::White;
  return {{"txtComments", {kLeft, 597, kColumn, 46}, 12, Look::Left | Look::Lines, "Comments"},
          {"lblNotice", {kLeft, 645, kColumn, 50}, 10.5, notice, "Notice"},
          {"lblSilent", {kLeft, 696, kColumn, 24}, 12, Look::Bold | Look::Left, "Radio"},
          {"lblComm", {kLeft, 722, 152, 40}, 13, kButtonLook | Look::Border, "Station link"},
          {"lblReadComm", {kLeft + 160, 722, 52, 40}, 14, lamp, "Receiving"},
          {"lblWriteComm", {kLeft + 220, 722, 52, 40}, 14, lamp, "Sending"}};
}

}  // namespace

FormDesign ConsoleDesign() {
  FormDesign design{.width = 1280,
                    .height = 772,
                    .shortcuts = {{"mnuSave", "Ctrl+S"},
                                  {"mnuPrint", "Ctrl+P"},
                                  {"mnuUndo", "Ctrl+Z"},
                                  {"mnuRedo", "Ctrl+Y"}},
                    .tips = ConsoleTips(),
                    .home = "lblStatus"};
  const Look clock = Look::Bold | Look::Heavy | Look::Focusable;
  design.places = {{"lblStatus", {kLeft, 10, kColumn, 98}, 64, clock, "Race clock"},
                   {"lblUnsaved", {kLeft, 112, kColumn, 27}, 14, Look::Bold | Look::Border, "Race"},
                   {"lblPractice", {kLeft, 142, 132, 30}, 15, Look::Bold | Look::Border, "Not a contest"},
                   {"lblNotSaved", {kLeft + 140, 142, 132, 30}, 15, Look::Bold | Look::Border, "Warning"}};
  for (const std::vector<Place>& part : {HeatControl(), RaceButtons(), LinkRow()}) {
    design.places.insert(design.places.end(), part.begin(), part.end());
  }
  for (int i = 0; i < 4; ++i) {
    design.places.push_back({IndexedName("fraLane", i), {292, 10 + 189 * i, 978, 184}});
  }
  design.texts = {{"H&eat", {20, 215, 60, 34}, 13, Look::Left, "txtHeat"},
                  {"Ro&und", {20, 254, 60, 34}, 13, Look::Left, "txtRound"},
                  {"&Comments", {kLeft + 2, 576, kColumn, 21}, 12, Look::Left, "txtComments"}};
  return design;
}

}  // namespace quorvane
