#include "forms/form.h"
#include "ui/designs.h"

namespace quorvane {
namespace {

constexpr LookFlags kPlainText = Look::Left | Look::Top;
constexpr LookFlags kBoxed = Look::Bold | Look::Border | Look::White;

Place CloseButton(const QRect& rect) {
  return {"cmdClose", rect, 13, kButtonLook, {}, 'C'};
}

}  // namespace

FormDesign TimerDesign() {
  FormDesign design{.width = 420, .height = 286, .tips = SmallTips(), .home = "cmdClose"};
  design.texts = {{"Stopwatch resolution", {16, 14, 190, 30}, 12},
                  {"Stopwatch frequency", {16, 48, 190, 30}, 12}};
  design.places = {
      {"lblResolution", {212, 14, 192, 30}, 13, kBoxed, "Resolution"},
      {"lblFrequency", {212, 48, 192, 30}, 13, kBoxed, "Frequency"},
      {"fraGranularity", {12, 92, 396, 66}, 12, kPlainText | Look::Bold | Look::Border, "Display timer"}};
  for (int i = 0; i < 4; ++i) {
    design.places.push_back({IndexedName("optGranularity", i), {24 + 95 * i, 118, 90, 30}, 13, Look::Left});
  }
  design.places.push_back({"lblExplained", {16, 166, 388, 66}, 11, kPlainText});
  design.places.push_back(CloseButton({152, 238, 116, 36}));
  return design;
}

FormDesign KeyboardDesign() {
  FormDesign design{.width = 560, .height = 400, .tips = SmallTips(), .home = "cmdClose"};
  const auto left = [](int lane) { return 170 + 96 * lane; };
  for (int lane = 0; lane < 4; ++lane) {
    design.places.push_back({IndexedName("lblLane", lane + 1), {left(lane), 10, 90, 32}, 13, Look::Bold});
  }
  for (int row = 0; row < 4; ++row) {
    const int top = 46 + 40 * row;
    design.places.push_back({IndexedName("lblAction", row), {16, top, 150, 36}, 12, Look::Left | Look::Bold});
    for (int lane = 0; lane < 4; ++lane) {
      const std::string spoken = "Key of lane " + std::to_string(lane + 1);
      design.places.push_back(
          {IndexedName("lblKey", 4 * row + lane), {left(lane), top, 90, 36}, 16, kBoxed, spoken});
    }
  }
  design.places.push_back({"lblNotes", {16, 214, 528, 132}, 11, kPlainText});
  design.places.push_back(CloseButton({222, 354, 116, 36}));
  return design;
}

FormDesign LogDesign() {
  FormDesign design{.width = 560, .height = 460, .tips = SmallTips(), .home = "lstEntries"};
  design.places = {{"cboLane", {86, 14, 150, 34}, 13, Look::Bold, "Lane"},
                   {.name = "lstEntries",
                    .rect = {16, 60, 528, 290},
                    .points = 13,
                    .spoken = "Entries of the lane",
                    .word = "No.\tTime\tEntry\tBy"},
                   {"cmdStrike", {16, 360, 116, 40}, 13, kButtonLook, {}, 'S'},
                   {"cmdInsert", {140, 360, 146, 40}, 13, kButtonLook, {}, 'I'},
                   {"cmdMove", {294, 360, 134, 40}, 13, kButtonLook, {}, 'M'},
                   CloseButton({436, 360, 108, 40}),
                   {"lblTold", {16, 410, 528, 38}, 12, kPlainText | Look::Bold, "Told"}};
  design.texts = {{"&Lane", {18, 14, 64, 34}, 13, Look::Left | Look::Bold, "cboLane"}};
  return design;
}

FormDesign PracticeDesign() {
  FormDesign design{.width = 470, .height = 352, .tips = PracticeTips(), .home = "cmdClose"};
  design.texts = {{"Race &mode", {16, 14, 130, 34}, 13, Look::Left | Look::Bold, "cboMode"},
                  {"&Radio", {16, 54, 130, 34}, 13, Look::Left | Look::Bold, "cboRadio"}};
  design.places = {{"cboMode", {150, 14, 304, 34}, 13, Look::Bold, "Race mode"},
                   {"cboRadio", {150, 54, 304, 34}, 13, Look::Bold, "Radio"},
                   {"chkSilentJudge", {16, 96, 438, 30}, 13, Look::Left, {}, 'J'},
                   {"chkRestart", {16, 128, 438, 30}, 13, Look::Left, {}, 'T'},
                   {"chkLostTimers", {16, 160, 438, 30}, 13, Look::Left, {}, 'L'},
                   {"lblState", {16, 198, 438, 92}, 12, kPlainText | kBoxed, "Practice"},
                   {"cmdBegin", {16, 300, 164, 40}, 13, kButtonLook, {}, 'S'},
                   {"cmdEnd", {188, 300, 150, 40}, 13, kButtonLook, {}, 'E'},
                   CloseButton({346, 300, 108, 40})};
  return design;
}

FormDesign AboutDesign() {
  return {.width = 460,
          .height = 296,
          .places = {{"lblName", {20, 14, 420, 50}, 30, Look::Bold},
                     {"lblVersion", {20, 66, 420, 28}, 13, Look::Bold},
                     {"lblPurpose", {20, 98, 420, 28}, 12},
                     {"lblCredits", {20, 138, 420, 60}, 11, Look::Top},
                     {"lblBuiltWith", {20, 202, 420, 28}, 11},
                     CloseButton({172, 246, 116, 36})},
          .tips = SmallTips(),
          .home = "cmdClose"};
}

}  // namespace quorvane
