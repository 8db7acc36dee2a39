#include "ui/windows.h"

#include <QApplication>
#include <QEvent>
#include <QWindow>
#include <algorithm>
#include <utility>

namespace quorvane {
namespace {
constexpr int kOnTheWayMs = 150;
constexpr int kExpectedMs = 5000;  // for the desktop to do what the program has asked
constexpr int kPaintMs = 40;       // between two paintings inside an event
}  // namespace

Windows::Windows(Door& door) : door_(door) {
  door_.AllForms().SetObserver(this);
  qApp->installEventFilter(this);
  QObject::connect(qApp, &QGuiApplication::focusWindowChanged, this, &Windows::FocusMoved);
}

Windows::~Windows() {
  door_.AllForms().SetObserver(nullptr);
  // A window that belongs to another one goes first.
  while (!windows_.empty()) windows_.pop_back();
}

FormWindow& Windows::AddWindow(Form& form, FormDesign design, QSize minimum, QWidget* owner) {
  windows_.push_back(std::make_unique<FormWindow>(form, std::move(design), door_, minimum, owner));
  views_[&form] = &windows_.back()->View();
  dirty_.insert(&form);
  return *windows_.back();
}

void Windows::AddPanel(Form& form, FormDesign design, FormView& into, const std::string& place,
                       const QString& spoken) {
  auto* panel = new FormView(form, std::move(design), door_, &into, spoken);
  into.Embed(*panel, place);
  views_[&form] = panel;
  dirty_.insert(&form);
}

FormView* Windows::FindView(const Form& form) {
  if (const auto later = later_.extract(&form)) {
    later.mapped()();
    views_[&form]->Apply();
  }
  return views_.value(&form);
}

FormWindow* Windows::FindWindow(const Form& form) {
  const FormView* view = FindView(form);
  return view == nullptr ? nullptr : dynamic_cast<FormWindow*>(view->parentWidget());
}

QWidget* Windows::DialogParent() {
  // Over a minimised window the box could not be seen, and the console would wait for its answer.
  const auto inSight = [](const FormWindow* window) {
    return window != nullptr && window->isVisible() && !window->isMinimized();
  };
  const Form* active = door_.AllForms().Active();
  FormWindow* front = active == nullptr ? nullptr : FindWindow(*active);
  if (inSight(front)) return front;
  for (const auto& window : windows_) {
    if (inSight(window.get())) return window.get();
  }
  return nullptr;
}

void Windows::ControlChanged(const Control& control, Property property) {
  FormView* view = views_.value(&control.Owner());
  if (view == nullptr || control.Kind() == ControlKind::Timer) return;
  if (control.Kind() == ControlKind::Menu) {
    if (FormWindow* window = FindWindow(control.Owner())) window->MenuChanged();
  }
  view->Changed(control, property);
  dirty_.insert(&control.Owner());
}

void Windows::Apply() {
  for (const Form* form : door_.AllForms().All()) {
    if (form->Visible()) FindView(*form);
  }
  const auto dirty = std::exchange(dirty_, {});
  for (const auto [form, view] : views_.asKeyValueRange()) {
    if (dirty.contains(form)) view->Apply();
  }
  // In the order in which they were added, so that the same window always ends up in front.
  for (const Form* form : door_.AllForms().All()) {
    if (!dirty.contains(form) || later_.contains(form)) continue;
    if (FormWindow* window = FindWindow(*form)) {
      if (form->Visible() && !window->isVisible()) Expect(*window);
      window->Follow();
    } else if (FormView* panel = FindView(*form)) {
      panel->setVisible(form->Visible());
    }
  }
  FollowActive();
}

// The program itself brings the operator to that window: this is no activation.
void Windows::Expect(const FormWindow& window) {
  expected_.insert(&window);
  expectedSince_.start();
}

bool Windows::eventFilter(QObject*, QEvent* event) {
  if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::KeyPress) expected_.clear();
  return false;
}

// Brings the operator to the form that the program has shown.
void Windows::FollowActive() {
  const Form* active = door_.AllForms().Active();
  if (active == std::exchange(active_, active) || active == nullptr) return;
  FormWindow* window = FindWindow(*active);
  if (window == nullptr || !window->isVisible() || window == focused_) return;
  Expect(*window);
  window->Activate();
}

// A flood of frames asks for more pictures than anybody sees: those left out come after the event.
void Windows::Paint() {
  if (painted_.isValid() && painted_.elapsed() < kPaintMs) return;
  Apply();
  for (const auto& window : windows_) {
    if (!window->isVisible()) continue;
    QEvent paint(QEvent::UpdateRequest);  // paints what is marked as changed, and delivers nothing
    QCoreApplication::sendEvent(window.get(), &paint);
  }
  painted_.start();
}

void Windows::BringForward(const Form& form) {
  FormWindow* window = FindWindow(form);
  if (window == nullptr || !window->isVisible()) return;
  Expect(*window);
  window->Activate();
  window->View().FocusHome();
}

void Windows::FocusMoved(QWindow* window) {
  if (window == nullptr) {
    // On the way from one window to another the focus may be nowhere for a moment.
    focusLost_.start();
    return;
  }
  if (focusLost_.isValid() && focusLost_.elapsed() > kOnTheWayMs) focused_ = nullptr;
  focusLost_.invalidate();
  const auto found = std::ranges::find(windows_, window, [](const auto& w) { return w->windowHandle(); });
  FormWindow* from = focused_;
  focused_ = found == windows_.end() ? nullptr : found->get();
  if (focused_ == nullptr || from == focused_) return;
  const bool expected = expected_.contains(focused_) && expectedSince_.elapsed() < kExpectedMs;
  if (from == nullptr || expected || door_.DialogOpen()) return;
  door_.Enter({.kind = EventKind::Activate, .target = focused_->Of().Name()});
}

}  // namespace quorvane
