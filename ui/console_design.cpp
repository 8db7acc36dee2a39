#include "forms/form.h"
#include "ui/designs.h"

namespace quorvane {
namespace {

constexpr int kLeft = 10;
constexpr int kColumn = 272;  // width of the column left of the lanes

std::vector<Place> HeatControl() {
  const LookFlags number = Look::Bold | Look::Numeric | Look::Late;
  const LookFlags title = kButtonLook | Look::Top | Look::Border;
  return {{"fraHeatControl", {kLeft, 176, kColumn, 182}, 20, title, "Race"},
          {"cmdDecHeat", {84, 211, 38, 34}, 16, kButtonLook, "Previous heat"},
          {"txtHeat", {128, 211, 104, 34}, 16, number, "Heat"},
          {"cmdIncHeat", {238, 211, 38, 34}, 16, kButtonLook, "Next heat"},
          {"cmdDecRound", {84, 249, 38, 34}, 16, kButtonLook, "Previous round"},
          {"txtRound", {128, 249, 104, 34}, 16, number, "Round"},
          {"cmdIncRound", {238, 249, 38, 34}, 16, kButtonLook, "Next round"},
          {"cboRaceMode", {18, 287, 166, 34}, 13, Look::Bold, "Race mode"},
          {"cmdRefly", {192, 287, 84, 34}, 13, kButtonLook, "Refly", 'l'},
          {"lblRaceMode", {18, 325, 148, 29}, 15, kButtonLook | Look::Border, "Race mode now"},
          {"lblController", {170, 325, 106, 29}, 11, Look::Bold | Look::Border, "Mode"}};
}

std::vector<Place> RaceButtons() {
  const int half = (kColumn - 8) / 2;
  const int right = kLeft + kColumn - half;
  return {{"chkSixtySecondCount", {kLeft + 4, 361, kColumn - 4, 25}, 13, Look::Left, "60 Second Count", '6'},
          {"chkAudio", {kLeft + 4, 386, kColumn - 4, 25}, 13, Look::Left, "Audio Countdown", 'A'},
          {"cmdStart", {kLeft, 415, kColumn, 46}, 22, kButtonLook, "Start", 't', "F1"},
          {"cmdReset", {kLeft, 465, half, 38}, 15, kButtonLook, "Reset", 'R'},
          {"cmdSave", {right, 465, half, 38}, 15, kButtonLook, "Save", 'v'},
          {"cmdPrint", {kLeft, 507, half, 38}, 15, kButtonLook, "Print", 'P'},
          {"cmdReorder", {right, 507, half, 38}, 15, kButtonLook, "Order", 'O'}};
}

std::vector<Place> LinkRow() {
  const LookFlags lamp = Look::Lamp | Look::Border;
  // Read in the sun, so as large as its words allow.
  const LookFlags notice = Look::Left | Look::Top | Look::Border | Look::White;
  return {{"txtComments", {kLeft, 565, kColumn, 44}, 12, Look::Left | Look::Lines, "Comments"},
          {.name = "lblNotice",
           .rect = {kLeft, 612, kColumn, 88},
           .points = 16,
           .look = notice,
           .spoken = "Notice",
           .over = "lblSilent"},
          {"lblSilent", {kLeft, 702, kColumn, 24}, 12, Look::Bold | Look::Left, "Radio"},
          {"lblComm", {kLeft, 728, 152, 38}, 13, kButtonLook | Look::Border, "Station link"},
          {"lblReadComm", {kLeft + 160, 728, 52, 38}, 14, lamp, "Receiving"},
          {"lblWriteComm", {kLeft + 220, 728, 52, 38}, 14, lamp, "Sending"}};
}

}  // namespace

FormDesign ConsoleDesign() {
  FormDesign design{.width = 1280, .height = 772, .tips = ConsoleTips(), .home = "lblStatus"};
  design.shortcuts = {
      {"mnuSave", "Ctrl+S"}, {"mnuPrint", "Ctrl+P"}, {"mnuUndo", "Ctrl+Z"}, {"mnuRedo", "Ctrl+Y"}};
  const LookFlags clock = Look::Bold | Look::Heavy | Look::Focusable;
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
  design.texts = {{"H&eat", {20, 211, 60, 34}, 13, Look::Left, "txtHeat"},
                  {"Ro&und", {20, 249, 60, 34}, 13, Look::Left, "txtRound"},
                  {"&Comments", {kLeft + 2, 546, kColumn, 19}, 12, Look::Left, "txtComments"}};
  return design;
}

}  // namespace quorvane
