#include "ui/program_windows.h"

#include <sys/timerfd.h>
#include <unistd.h>

#include <QScreen>
#include <QShortcut>
#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

#include "programs/commit.h"
#include "ui/designs.h"

namespace quorvane {

TimerDriver::TimerDriver(Door& door, const QtPlatform& platform, const Control& display,
                         std::function<int()> granularity)
    : door_(door),
      platform_(platform),
      display_(display),
      granularity_(std::move(granularity)),
      timer_(timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC)),
      fired_(timer_, QSocketNotifier::Read) {
  if (timer_ < 0) throw std::system_error(errno, std::generic_category(), "no timer");
  QObject::connect(&fired_, &QSocketNotifier::activated, [this] {
    std::uint64_t times = 0;
    if (read(timer_, &times, sizeof times) != sizeof times) return;  // armed anew meanwhile
    armed_ = kNever;
    door_.RunDueTimers();
    Arm();
  });
}

TimerDriver::~TimerDriver() {
  fired_.setEnabled(false);
  close(timer_);
}

void TimerDriver::Arm() {
  std::int64_t wake = kNever;
  for (const auto& [due, timer] : door_.AllForms().Timers().Armed()) {
    const std::int64_t step = timer == &display_ ? std::max(1, granularity_()) : 1;
    wake = std::min(wake, (due.first + step - 1) / step * step);
  }
  if (std::exchange(armed_, wake) == wake) return;
  itimerspec in{};  // nothing: never
  if (wake != kNever) {
    const std::int64_t ns = std::max<std::int64_t>(1, wake * 1'000'000 - platform_.ClockNs());
    in.it_value = {.tv_sec = ns / 1'000'000'000, .tv_nsec = ns % 1'000'000'000};
  }
  timerfd_settime(timer_, 0, &in, nullptr);
}

ProgramWindows::ProgramWindows(Program& program, QtPlatform& platform)
    : program_(program),
      platform_(platform),
      windows_(program.door()),
      keys_(program.door(), [&program] { return program.judge().RaceBeingFlown(); }),
      timers_(program.door(), platform, program.judge().tmrTimeTick,
              [&program] { return program.timer().Granularity(); }) {
  console_ = &windows_.AddWindow(program.judge(), ConsoleDesign(), kLeastConsole);
  for (int i = 0; i < 4; ++i) {
    windows_.AddPanel(program.lane(i), LaneDesign(i + 1), console_->View(), IndexedName("fraLane", i),
                      QStringLiteral("Lane %1 ").arg(i + 1));
  }
  link_ = &windows_.AddWindow(program.link(), LinkDesign(), QSize(kNarrowLink * 3 / 4, 500), console_);
  GiveMenuKeys(*link_);
  AddSmallWindow(program.timer(), TimerDesign);
  AddSmallWindow(program.keyboard(), KeyboardDesign);
  AddSmallWindow(program.about(), AboutDesign);
  AddSmallWindow(program.judge().LapsAndCuts(), LogDesign);
  AddSmallWindow(program.judge().Practice(), PracticeDesign);
  program.about().SetCommit(ProgramCommit());
  program.about().SetLibraries(std::string("Qt ") + qVersion());
  platform_.SetWindows(&windows_);
  program_.door().SetAfterEvent([this] {
    for (const auto& follower : followers_) follower();
    Follow();
    if (afterEvent_) afterEvent_();
  });
}

ProgramWindows::~ProgramWindows() {
  program_.door().SetAfterEvent({});
  platform_.SetWindows(nullptr);
}

// Most of them are not asked for in most sessions.
void ProgramWindows::AddSmallWindow(Form& form, FormDesign (*design)()) {
  windows_.AddLater(form, [this, &form, design] {
    const FormDesign designed = design();
    const QSize least(designed.width * 3 / 4, designed.height * 3 / 4);
    FormWindow& window = windows_.AddWindow(form, designed, least, console_);
    QObject::connect(new QShortcut(Qt::Key_Escape, &window), &QShortcut::activated, &window, &QWidget::close);
    GiveMenuKeys(window);
  });
}

// The keys of the console's menu act wherever its function keys do.
void ProgramWindows::GiveMenuKeys(QWidget& window) const {
  for (const auto& [entry, keys] : console_->View().Design().shortcuts) {
    window.addAction(console_->Menu()->Find(program_.judge().Find(entry)));
  }
}

void ProgramWindows::Follow() {
  const bool detail = program_.link().fraMore.Visible();
  const int width = detail ? link_->View().Design().width : kNarrowLink;
  if (std::exchange(detailShown_, detail) != detail) link_->SetDesignWidth(width);
  windows_.Apply();
  if (!placed_ && console_->isVisible()) PlaceWindows();
  for (Form* form : {static_cast<Form*>(&program_.judge().LapsAndCuts()),
                     static_cast<Form*>(&program_.judge().Practice())}) {
    if (form->Visible() && inCorner_.insert(form).second) PlaceInCorner(*form);
  }
  timers_.Arm();
}

// Beside each other if there is room, else over the console's right end: clock and buttons stay in sight.
void ProgramWindows::PlaceWindows() {
  constexpr int kGap = 8;
  placed_ = true;
  if (console_->Remembered() || console_->screen() == nullptr) return;
  const QRect screen = console_->screen()->availableGeometry();
  const int spare = screen.width() - console_->width() - link_->width() - 3 * kGap;
  const int left = screen.left() + std::max(0, spare / 2);
  const int top = screen.top() + std::max(0, (screen.height() - console_->height()) / 3);
  console_->move(left, top);
  const int beside = std::min(left + console_->width() + kGap, screen.right() - link_->width() - kGap);
  if (!link_->Remembered()) link_->move(std::max(screen.left(), beside), top);
  for (FormWindow* window : {console_, link_}) window->KeepOnScreen();
}

// That which is farthest from the clock.
void ProgramWindows::PlaceInCorner(const Form& form) {
  FormWindow& window = *windows_.FindWindow(form);
  if (window.Remembered() || console_->screen() == nullptr) return;
  const QRect screen = console_->screen()->availableGeometry();
  window.move(screen.right() - window.width(), screen.bottom() - window.height());
  window.KeepOnScreen();
}

QRect ProgramWindows::ClockOnScreen() const {
  const QWidget* clock = console_->View().FindWidget("lblStatus");
  return {clock->mapToGlobal(QPoint(0, 0)), clock->size()};
}

}  // namespace quorvane
