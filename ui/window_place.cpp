#include "ui/window_place.h"

#include <QApplication>
#include <QEvent>
#include <QScreen>
#include <QWidget>
#include <QWindow>
#include <algorithm>
#include <utility>

namespace quorvane {
namespace {

constexpr const char* kPlaceSection = "Windows";
constexpr QMargins kFrame{4, 32, 4, 4};  // until the desktop has told
constexpr int kGap = 8;
// The desktop frames a window some time after it is shown.
constexpr int kLookMs = 60;
constexpr int kLooks = 12;

// The platform without a screen still has one in name, a small one.
bool HasScreen(const QWidget& window) {
  return window.screen() != nullptr && QGuiApplication::platformName() != QLatin1String("offscreen");
}

// The screens that are there, where they stand: " 1920x1080+0+0". At the field there are others than at home.
std::string KeyOfScreens() {
  QStringList screens;
  for (const QScreen* screen : QGuiApplication::screens()) {
    const QRect at = screen->geometry();
    screens << QStringLiteral(" %1x%2+%3+%4").arg(at.width()).arg(at.height()).arg(at.x()).arg(at.y());
  }
  screens.sort();
  return screens.join(QString()).toStdString();
}

}  // namespace

WindowPlace::WindowPlace(QWidget& window, SettingsStore& settings, std::string name, QSize least)
    : QObject(&window), window_(window), settings_(settings), name_(std::move(name)), least_(least) {
  window_.setMinimumSize(least_);
  window_.installEventFilter(this);
  soon_.setInterval(kLookMs);
  QObject::connect(&soon_, &QTimer::timeout, this, [this] { Keep(); });
  QObject::connect(qApp, &QCoreApplication::aboutToQuit, this, [this] {
    if (window_.isVisible()) Save();
  });
  QObject::connect(qApp, &QGuiApplication::screenRemoved, this, [this] { KeepOnScreen(); });
}

bool WindowPlace::Restore(QSize wanted) {
  const QSize room =
      HasScreen(window_) ? window_.screen()->availableSize().shrunkBy(kFrame) : wanted.expandedTo(least_);
  window_.setMinimumSize(least_.boundedTo(room));
  // Where it was on these screens, or else where it was last: Qt brings that onto a screen.
  for (const std::string& key : {name_ + KeyOfScreens(), name_}) {
    const std::string left = settings_.GetSetting(kPlaceSection, key, "");
    if (window_.restoreGeometry(QByteArray::fromBase64(QByteArray::fromStdString(left)))) return true;
  }
  window_.resize(wanted.boundedTo(room).expandedTo(window_.minimumSize()));
  return false;
}

void WindowPlace::PutClearOf(const QRect& clock, QSize wanted) {
  if (!HasScreen(window_)) return;
  const bool told = window_.isVisible() && window_.windowHandle() != nullptr;
  const QMargins frame = told ? window_.windowHandle()->frameMargins() : kFrame;
  const QRect framed = ClearOf(clock, wanted.grownBy(frame), window_.screen()->availableGeometry());
  window_.resize(framed.size().shrunkBy(frame));
  window_.move(framed.topLeft());
}

void WindowPlace::KeepOnScreen() {
  looks_ = kLooks;
  soon_.start();
}

// A platform without a screen has no windows to raise, and would say so every time.
void WindowPlace::BringForward() {
  if (HasScreen(window_)) window_.raise();
  window_.activateWindow();
}

void WindowPlace::Keep() {
  if (--looks_ <= 0) soon_.stop();
  if (!window_.isVisible() || window_.isMaximized() || window_.isFullScreen()) return;
  if (!HasScreen(window_) || window_.windowHandle() == nullptr) return;
  const QRect room = window_.screen()->availableGeometry();
  const QMargins frame = window_.windowHandle()->frameMargins();
  const QRect framed(window_.pos(), window_.size().grownBy(frame));
  // While the desktop is still at work, the window says it is where it was, or somewhere on the way.
  if (std::exchange(seen_, framed) != framed) return;
  const QRect wanted = MovedInto(room, framed);
  window_.setMinimumSize(least_.boundedTo(room.size().shrunkBy(frame)));
  if (wanted.size() != framed.size()) window_.resize(wanted.size().shrunkBy(frame));
  if (wanted.topLeft() != framed.topLeft()) window_.move(wanted.topLeft());
}

void WindowPlace::Save() {
  const std::string left = window_.saveGeometry().toBase64().toStdString();
  for (const std::string& key : {name_ + KeyOfScreens(), name_})
    settings_.SaveSetting(kPlaceSection, key, left);
}

bool WindowPlace::eventFilter(QObject*, QEvent* event) {
  if (event->type() == QEvent::Show && !event->spontaneous()) KeepOnScreen();
  if (event->type() == QEvent::Hide && !event->spontaneous()) Save();
  return false;
}

QRect MovedInto(const QRect& screen, const QRect& framed) {
  const QSize size = framed.size().boundedTo(screen.size());
  const int left = std::clamp(framed.left(), screen.left(), screen.right() + 1 - size.width());
  return {{left, std::clamp(framed.top(), screen.top(), screen.bottom() + 1 - size.height())}, size};
}

QRect ClearOf(const QRect& clock, const QSize& wanted, const QRect& screen) {
  const QRect beside(QPoint(clock.right() + 1 + kGap, screen.top()), screen.bottomRight());
  const QRect under(QPoint(screen.left(), clock.bottom() + 1 + kGap), screen.bottomRight());
  const QRect& room = beside.width() >= wanted.width() || under.width() < wanted.width() / 2 ? beside : under;
  return {room.topLeft(), wanted.boundedTo(room.size())};
}

}  // namespace quorvane
