#include "ui/widgets/form_view.h"

#include <QEvent>
#include <QFocusEvent>
#include <QLabel>
#include <QTimer>
#include <algorithm>
#include <cmath>

#include "ui/widgets/look.h"

namespace quorvane {
namespace {

constexpr double kLeastPoints = 10;

bool IsWidget(const Control& control) {
  return control.Kind() != ControlKind::Menu && control.Kind() != ControlKind::Timer;
}

}  // namespace

FormView::FormView(Form& form, FormDesign design, Door& door, QWidget* parent, const QString& spoken)
    : QWidget(parent),
      form_(form),
      design_(std::move(design)),
      door_(door),
      scaler_(design_.width, design_.height) {
  setFocusPolicy(Qt::NoFocus);
  for (const Control& control : form_.Controls()) {
    if (IsWidget(control)) AddControl(*form_.Find(control.Name()), spoken);
  }
  for (const StaticText& text : design_.texts) AddText(text);
  for (const auto& view : views_) {
    if (view->Design().anchoring == Anchoring::Beside) view->Widget()->raise();
  }
}

FormView::~FormView() {
  for (const auto& view : views_) {
    view->Widget()->removeEventFilter(this);
    view->Widget()->disconnect();
  }
}

void FormView::AddControl(Control& control, const QString& spoken) {
  const Place* place = design_.Find(control.Name());
  if (place == nullptr) {
    unplaced_.push_back(control.FullName());
    return;
  }
  const ControlView* parent = control.Parent() == nullptr ? nullptr : Find(*control.Parent());
  QWidget* holder = parent == nullptr ? this : parent->Widget();
  auto view = ControlView::Create(control, *place, door_, holder);
  view->spokenPrefix = spoken;
  view->onFocusLost = [this] { FocusHome(); };
  view->onFinished = [this] { FocusHome(); };
  view->Widget()->setObjectName(QString::fromStdString(control.FullName()));
  if (control.Kind() == ControlKind::Frame) view->Widget()->lower();
  byControl_.emplace(&control, view.get());
  if (Has(place->look, Look::Row)) row_.push_back(view.get());
  Watch(*view);
  views_.push_back(std::move(view));
}

void FormView::AddText(const StaticText& text) {
  auto* label = new QLabel(QString::fromStdString(text.text), this);
  label->setTextFormat(Qt::PlainText);
  label->setAlignment((Has(text.look, Look::Left) ? Qt::AlignLeft : Qt::AlignHCenter) | Qt::AlignVCenter);
  if (QWidget* buddy = FindWidget(text.buddy)) label->setBuddy(buddy);
  label->setAttribute(Qt::WA_TransparentForMouseEvents);
  texts_.push_back({text, label});
}

void FormView::Watch(ControlView& view) {
  const Control& control = view.Of();
  if (!control.onHover && !control.onGotFocus) return;
  view.Widget()->installEventFilter(this);
  byWidget_.emplace(view.Widget(), &view);
}

ControlView* FormView::Find(const Control& control) const {
  const auto found = byControl_.find(&control);
  return found == byControl_.end() ? nullptr : found->second;
}

QWidget* FormView::FindWidget(const std::string& name) const {
  const Control* control = name.empty() ? nullptr : form_.Find(name);
  const ControlView* view = control == nullptr ? nullptr : Find(*control);
  return view == nullptr ? nullptr : view->Widget();
}

void FormView::Apply() {
  bool moved = false;
  bool rowChanged = false;
  for (const auto& view : views_) {
    if (!view->IsDirty()) continue;
    rowChanged = rowChanged || Has(view->Design().look, Look::Row);
    if (view->Apply() || view->Design().anchoring == Anchoring::Stack) moved = true;
  }
  if (rowChanged) FitRow();
  if (moved) PlaceAnchored();
}

void FormView::Embed(FormView& panel, const std::string& name) {
  const Place* place = design_.Find(name);
  if (place == nullptr) return;
  panels_.push_back({&panel, place->rect});
  panel.scaler_.TakeFontsOf(scaler_);
  panel.setGeometry(scaler_.Scaled(place->rect));
}

void FormView::SetDesignWidth(int width) {
  scaler_.SetDesignWidth(width);
  Arrange();
}

void FormView::FocusHome() {
  if (QWidget* home = FindWidget(design_.home)) {
    home->setFocus();
  } else if (auto* around = dynamic_cast<FormView*>(parentWidget())) {
    around->FocusHome();
  } else if (QWidget* widget = focusWidget()) {
    widget->clearFocus();
  }
}

void FormView::FocusFirst() {
  for (const auto& view : views_) {
    const Control& control = view->Of();
    if (control.Kind() == ControlKind::Option && control.Value() != 0 && control.Visible()) {
      return view->Widget()->setFocus();
    }
  }
  FocusHome();
}

std::vector<QWidget*> FormView::TabChain() const {
  std::vector<QWidget*> chain;
  for (const Place& place : design_.places) {
    QWidget* widget = FindWidget(place.name);
    if (widget != nullptr && (widget->focusPolicy() & Qt::TabFocus) != 0) chain.push_back(widget);
  }
  return chain;
}

void FormView::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  Arrange();
  Event resized;
  resized.kind = EventKind::Resize;
  resized.target = form_.Name();
  if (form_.Visible() && event->size() != event->oldSize()) door_.Enter(resized);
}

void FormView::Arrange() {
  scaler_.SetSize(size());
  for (const auto& view : views_) ArrangeView(*view);
  for (const Text& text : texts_) {
    text.label->setGeometry(scaler_.Scaled(text.design.rect));
    text.label->setFont(
        FontOfPixels(scaler_.FontPixels(text.design.points), Has(text.design.look, Look::Bold)));
  }
  FitRow();
  PlaceAnchored();
  for (const Panel& panel : panels_) {
    const QRect rect = scaler_.Scaled(panel.rect);
    // Its letters may change although its size does not.
    if (panel.view->geometry() == rect) panel.view->Arrange();
    panel.view->setGeometry(rect);
  }
}

void FormView::FitRow() {
  QString widest;
  int most = 0;
  int width = QWIDGETSIZE_MAX;
  for (const ControlView* view : row_) {
    if (!view->Of().Visible()) continue;
    const QString caption = ToQString(view->Of().Caption());
    const int advance = QFontMetrics(view->Widget()->font()).horizontalAdvance(caption);
    if (advance > most) widest = caption;
    most = std::max(most, advance);
    width = std::min(width, view->Widget()->width());
  }
  for (ControlView* view : row_) view->SetRow(widest, width);
}

void FormView::ArrangeView(ControlView& view) {
  SetScaled(view, view.Design().rect);
  const double least = std::floor(scaler_.FontPixels(std::min(kLeastPoints, view.Design().points)));
  view.SetFontPixels(scaler_.FontPixels(view.Design().points), least);
}

// A rectangle of the form's design, for a widget that may lie in a frame.
void FormView::SetScaled(ControlView& view, const clsRect& rect) {
  QRect scaled = scaler_.Scaled(rect);
  const Control* frame = view.Of().Parent();
  const ControlView* parent = frame == nullptr ? nullptr : Find(*frame);
  if (parent != nullptr) scaled.translate(-scaler_.Scaled(parent->Design().rect).topLeft());
  if (view.Widget()->geometry() != scaled) view.Widget()->setGeometry(scaled);
}

bool FormView::TextShown(const StaticText& text) const {
  const Control* control = text.unless.empty() ? nullptr : form_.Find(text.unless);
  return control == nullptr || !control->Visible();
}

// Down to the next thing that is shown there.
clsRect FormView::RoomUnder(const clsRect& anchor) const {
  clsRect room{anchor.left, design_.stackTop, anchor.width, design_.stackBottom - design_.stackTop};
  const auto leaveOut = [&room](const clsRect& rect) {
    const bool under = rect.left < room.left + room.width && room.left < rect.left + rect.width;
    if (under && rect.top > room.top) room.height = std::min(room.height, rect.top - 2 - room.top);
  };
  for (const auto& view : views_) {
    const bool stands = view->Design().anchoring == Anchoring::None && view->Of().Visible();
    if (stands) leaveOut(view->Design().rect);
  }
  for (const Text& text : texts_) {
    if (TextShown(text.design)) leaveOut(text.design.rect);
  }
  return room;
}

// Whether no other stack stands in that room, nor anything else.
bool FormView::IsFree(const clsRect& room, const Control& anchor, const Stacks& stacks) const {
  const auto meets = [&room](const clsRect& rect) {
    return rect.left < room.left + room.width && room.left < rect.left + rect.width;
  };
  for (const auto& [other, marks] : stacks) {
    const Place* place = other == &anchor ? nullptr : design_.Find(other->Name());
    if (place != nullptr && meets(place->rect)) return false;
  }
  const auto inTheWay = [&](const auto& view) {
    const clsRect& rect = view->Design().rect;
    const bool standing = view->Of().Visible() && view->Of().Kind() != ControlKind::Frame;
    return view->Design().anchoring == Anchoring::None && standing && meets(rect) &&
           rect.top < room.top + room.height && rect.top + rect.height > room.top;
  };
  return RoomUnder(room).height >= room.height && std::none_of(views_.begin(), views_.end(), inTheWay);
}

void FormView::PlaceStacks() {
  Stacks stacks;
  for (const auto& view : views_) {
    const Control& control = view->Of();
    if (view->Design().anchoring != Anchoring::Stack || !control.Visible()) continue;
    if (control.Anchor() != nullptr) stacks[control.Anchor()].push_back(view.get());
  }
  for (const auto& [anchor, marks] : stacks) {
    const ControlView* cell = Find(*anchor);
    if (cell == nullptr) continue;
    const auto tooWide = [&](const ControlView* mark) {
      const QFontMetrics metrics(mark->Widget()->font());
      return metrics.horizontalAdvance(ToQString(mark->Of().Caption())) > cell->Widget()->width() - 4;
    };
    const int lines = std::any_of(marks.begin(), marks.end(), tooWide) ? 2 : 1;
    const int count = static_cast<int>(marks.size());
    clsRect room = RoomUnder(cell->Design().rect);
    // Over the next column where that has no marks yet.
    const clsRect twice{room.left, room.top, 2 * room.width, room.height};
    if (lines * count * kLeastMarkRow > room.height && IsFree(twice, *anchor, stacks)) room = twice;
    const std::vector<clsRect> cells = StackCells(count, room, lines);
    for (std::size_t i = 0; i < marks.size(); ++i) {
      anchoredAt_[marks[i]] = cells[i];
      SetScaled(*marks[i], cells[i]);
    }
  }
}

void FormView::PlaceAnchored() {
  for (const Text& text : texts_) text.label->setVisible(TextShown(text.design));
  PlaceStacks();
  for (const auto& view : views_) {
    const Anchoring anchoring = view->Design().anchoring;
    const Control* anchor = view->Of().Anchor();
    const ControlView* by = anchor == nullptr ? nullptr : Find(*anchor);
    if (by == nullptr || anchoring == Anchoring::None || anchoring == Anchoring::Stack) continue;
    const auto stacked = anchoredAt_.find(by);
    const clsRect at = stacked == anchoredAt_.end() ? by->Design().rect : stacked->second;
    const clsRect own = view->Design().rect;
    if (anchoring == Anchoring::Cover) {
      SetScaled(*view, at);
    } else {
      SetScaled(*view, BesideMark(at, own.width, own.height, design_.width, design_.height));
    }
    view->Widget()->raise();
  }
}

// The frame around a mark that wants to know when the pointer leaves the mark.
ControlView* FormView::HoverFrame(ControlView& view) const {
  for (const Control& control : form_.Controls()) {
    ControlView* frame = control.Kind() == ControlKind::Frame && control.onHover ? Find(control) : nullptr;
    if (frame != nullptr && frame != &view) return frame;
  }
  return nullptr;
}

bool FormView::eventFilter(QObject* watched, QEvent* event) {
  const auto found = byWidget_.find(watched);
  if (found == byWidget_.end()) return false;
  ControlView& view = *found->second;
  if (event->type() == QEvent::Enter && view.Of().onHover) {
    view.Act(EventKind::Hover);
  } else if (event->type() == QEvent::Leave && view.Of().onHover && view.Of().Kind() != ControlKind::Frame) {
    if (ControlView* frame = HoverFrame(view)) frame->Act(EventKind::Hover);
  } else if (event->type() == QEvent::FocusIn && view.Of().onGotFocus) {
    const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
    if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason) return false;
    // After the click that brought the focus, which would undo a selection made now.
    arrived_ = &view;
    QTimer::singleShot(0, this, [this] { TellArrival(); });
  } else if (event->type() == QEvent::KeyPress) {
    TellArrival();  // before the key, or the selection would swallow what it types
  }
  return false;
}

void FormView::TellArrival() {
  if (ControlView* view = std::exchange(arrived_, nullptr)) view->Act(EventKind::GotFocus);
}

}  // namespace quorvane
