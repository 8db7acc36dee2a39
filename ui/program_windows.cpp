#include "ui/program_windows.h"

#include <QScreen>
#include <algorithm>

#include "ui/designs.h"
#include "ui/focus_ring.h"

namespace quorvane {

ProgramWindows::ProgramWindows(Program& program, QtPlatform& platform)
    : program_(program),
      platform_(platform),
      windows_(program.door()),
      keys_(program.door()),
      timers_(program.door()) {
  console_ = &windows_.AddWindow(program.judge(), ConsoleDesign(), kLeastConsole);
  for (int i = 0; i < 4; ++i) {
    const std::string frame = "fraLane(" + std::to_string(i) + ")";
    lanes_[static_cast<std::size_t>(i)] = &windows_.AddPanel(
        program.lane(i), LaneDesign(i + 1), console_->View(), frame, QStringLiteral("Lane %1 ").arg(i + 1));
  }
  link_ = &windows_.AddWindow(program.link(), LinkDesign(), QSize(LinkWidthWithoutDetail() * 3 / 4, 500),
                              console_);
  windows_.ChainTabs();
  for (FormWindow* window : {console_, link_}) new FocusRing(window);
  platform_.SetWindows(&windows_);
  program_.door().SetAfterEvent([this] {
    Follow();
    if (afterEvent_) afterEvent_();
  });
}

ProgramWindows::~ProgramWindows() {
  program_.door().SetAfterEvent({});
  platform_.SetWindows(nullptr);
}

void ProgramWindows::Follow() {
  const bool detail = program_.link().fraMore.Visible();
  if (detail != detailShown_) {
    detailShown_ = detail;
    link_->SetDesignWidth(detail ? link_->View().Design().width : LinkWidthWithoutDetail());
  }
  windows_.Apply();
  if (!linkPlaced_ && link_->isVisible()) PlaceLinkWindow();
  timers_.Arm();
}

// Beside the console where the screen has room, else over its right end: the clock and the race buttons stay
// in sight.
void ProgramWindows::PlaceLinkWindow() {
  linkPlaced_ = true;
  if (console_->screen() == nullptr) return;
  const QRect screen = console_->screen()->availableGeometry();
  const QRect console = console_->frameGeometry();
  const int left = std::min(console.right() + 8, screen.right() - link_->width() - 8);
  link_->move(std::max(screen.left(), left), std::max(screen.top(), console.top() + 40));
}

}  // namespace quorvane
