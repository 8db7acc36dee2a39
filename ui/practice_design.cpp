#include "ui/designs.h"

namespace quorvane {

FormDesign PracticeDesign() {
  FormDesign design{.width = 470, .height = 352, .tips = PracticeTips(), .home = "cmdClose"};
  design.texts = {{"Race &mode", {16, 14, 130, 34}, 13, Look::Left | Look::Bold, "cboMode"},
                  {"&Radio", {16, 54, 130, 34}, 13, Look::Left | Look::Bold, "cboRadio"}};
  design.places = {{"cboMode", {150, 14, 304, 34}, 13, Look::Bold, "Race mode"},
                   {"cboRadio", {150, 54, 304, 34}, 13, Look::Bold, "Radio"},
                   {"chkSilentJudge", {16, 96, 438, 30}, 13, Look::Left, {}, 'J'},
                   {"chkRestart", {16, 128, 438, 30}, 13, Look::Left, {}, 'T'},
                   {"chkLostTimers", {16, 160, 438, 30}, 13, Look::Left, {}, 'L'},
                   {"lblState",
                    {16, 198, 438, 92},
                    12,
                    Look::Left | Look::Top | Look::Bold | Look::Border | Look::White,
                    "Practice"},
                   {"cmdBegin", {16, 300, 164, 40}, 13, kButtonLook, {}, 'S'},
                   {"cmdEnd", {188, 300, 150, 40}, 13, kButtonLook, {}, 'E'},
                   {"cmdClose", {346, 300, 108, 40}, 13, kButtonLook, {}, 'C'}};
  return design;
}

}  // namespace quorvane
