#pragma once

#include "ui/widgets/form_design.h"

namespace quorvane {

inline constexpr LookFlags kButtonLook = Look::Bold | Look::White;

using Tips = std::map<std::string, std::string>;
Tips ConsoleTips();  // what the buttons and menu entries are for
Tips LaneTips();
Tips LinkTips();
Tips PracticeTips();
Tips PreviewTips();
Tips SmallTips();

FormDesign ConsoleDesign();              // frmJudge, without its menu bar
FormDesign LaneDesign(int lane);         // frmLane1..4, lane 1..4
FormDesign LinkDesign();                 // frmSerialPort with its message detail
inline constexpr int kNarrowLink = 470;  // its width without that
FormDesign TimerDesign();                // the small forms
FormDesign KeyboardDesign();
FormDesign AboutDesign();
FormDesign LogDesign();
FormDesign PracticeDesign();

}  // namespace quorvane
