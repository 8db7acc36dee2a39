#include "ui/widgets/control_view.h"

#include <QApplication>
#include <QFocusEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTimer>

#include "ui/widgets/look.h"
#include "ui/words.h"

namespace quorvane {

namespace {

// A text box in which nothing has been typed has nothing to take back: the keys for that are the race's.
bool LeavesUndo(QKeyEvent& press, const QWidget& widget) {
  const bool undo = press.matches(QKeySequence::Undo);
  if (!undo && !press.matches(QKeySequence::Redo)) return false;
  bool typed = false;
  if (const auto* line = qobject_cast<const QLineEdit*>(&widget)) {
    typed = line->isUndoAvailable() || line->isRedoAvailable();
  } else if (const auto* lines = qobject_cast<const QPlainTextEdit*>(&widget)) {
    typed = lines->document()->isUndoAvailable() || lines->document()->isRedoAvailable();
  } else {
    return false;
  }
  if (!typed) press.ignore();
  return !typed;
}

}  // namespace

ControlView::ControlView(const Part& part, QWidget* widget, Roles roles)
    : at(part.place.rect), part_(part), widget_(widget), roles_(roles) {
  widget_->setObjectName(QString::fromStdString(Of().FullName()));
  widget_->installEventFilter(this);
  // Qt would work out a size for it when it is shown; the form has one.
  widget_->setAttribute(Qt::WA_Resized);
}

bool ControlView::Apply() {
  const unsigned dirty = std::exchange(dirty_, 0U);
  const auto has = [dirty](Property property) { return (dirty & Bit(property)) != 0; };
  for (const Property property :
       {Property::Items, Property::Caption, Property::Text, Property::Value, Property::ListIndex}) {
    if (has(property) && Of().Has(property)) Show(property);
  }
  if (has(Property::Caption) || has(Property::BackColor) || has(Property::ForeColor)) Speak();
  if (has(Property::BackColor) || has(Property::ForeColor) || has(Property::Enabled)) {
    SetColors(Back(), ReadableOn(Back(), Shown(Of().ForeColor())));
  }
  if (has(Property::ToolTip)) widget_->setToolTip(Words::Of(Of().ToolTip().empty() ? tip : Of().ToolTip()));
  if (has(Property::Enabled) || has(Property::Visible)) {
    if (widget_->hasFocus() && !(Of().Enabled() && Of().Visible())) leave();
    SetUsable(Of().Enabled());
    widget_->setVisible(Of().Visible());
  }
  return has(Property::Visible) || has(Property::Anchor);
}

void ControlView::Act(EventKind kind, std::string text, int number) {
  if (kind == EventKind::Click || kind == EventKind::Choose) FinishTyping();
  dirty_ = ~0U;  // the widget may have moved on its own
  part_.door.Enter({.kind = kind, .target = Of().FullName(), .text = std::move(text), .number = number});
  Apply();
}

// The accessible name. A label's says what it shows, too.
void ControlView::Speak() {
  QString name = Words::Of(Design().spoken);
  const QString caption = Caption();
  if (name.isEmpty()) {
    name = caption.isEmpty() ? QString::fromStdString(Of().Name()) : caption;
  } else if (Of().Kind() == ControlKind::Label && !caption.isEmpty()) {
    name += QStringLiteral(": ") + caption;
  }
  if (Looks(Look::Lamp) && Painted()) name += QStringLiteral(", ") + Words::Of("lit");
  if (IsRedAlone()) name += QStringLiteral(", ") + Words::Of("no answer yet");
  widget_->setAccessibleName(Words::Of(spokenPrefix) + name);
}

QString ControlView::Caption() const {
  return Words::Of(Of().Caption());
}

QColor ControlView::Back() const {
  if (Looks(Look::Lines) && !Of().Enabled()) return Shown(kButtonFace);
  if (!Painted()) {
    if (Looks(Look::White)) return Shown(kWindow);
    if (Looks(Look::Blue)) return Colors().blue;
    if (Looks(Look::Peach)) return Colors().peach;
  }
  return Shown(Of().BackColor());
}

void ControlView::SetColors(const QColor& back, const QColor& fore) {
  QPalette palette;  // the other roles are those of the program's scheme
  for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
    palette.setColor(group, roles_.back, back);
    palette.setColor(group, roles_.fore, fore);
  }
  widget_->setPalette(palette);
}

// What stands in a locked text box is still there to be read, in its colours, and to be scrolled.
void ControlView::SetUsable(bool usable) {
  if (Of().Kind() != ControlKind::TextBox || Looks(Look::Late)) return widget_->setEnabled(usable);
  widget_->setProperty("readOnly", !usable);
  widget_->setFocusPolicy(usable ? Qt::StrongFocus : Qt::NoFocus);
}

bool ControlView::eventFilter(QObject*, QEvent* event) {
  switch (event->type()) {
    case QEvent::Enter:
      if (Of().onHover) Act(EventKind::Hover);
      break;
    case QEvent::Leave:
      if (!Of().onHover || Of().Kind() == ControlKind::Frame) break;
      // The frame around a mark wants to know when the pointer leaves the mark.
      for (const Control& frame : Of().Owner().Controls()) {
        if (frame.Kind() != ControlKind::Frame || !frame.onHover) continue;
        part_.door.Enter({.kind = EventKind::Hover, .target = frame.FullName()});
        break;
      }
      break;
    case QEvent::FocusIn: {
      const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
      if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason) break;
      // After the click that brought the focus, which would undo a selection made now.
      arrived_ = Of().Kind() == ControlKind::TextBox;
      if (arrived_) QTimer::singleShot(0, this, [this] { SelectOnArrival(); });
      break;
    }
    case QEvent::ShortcutOverride:
      return LeavesUndo(*static_cast<QKeyEvent*>(event), *widget_);
    case QEvent::KeyPress:
      SelectOnArrival();  // before the key, or the selection would swallow what it types
      return TakesKey(*static_cast<QKeyEvent*>(event));
    case QEvent::Wheel:
      return Of().Kind() == ControlKind::ComboBox;  // which it would change by chance
    default:
      break;
  }
  return false;
}

void ControlView::SelectOnArrival() {
  if (std::exchange(arrived_, false) && widget_->hasFocus()) QMetaObject::invokeMethod(widget_, "selectAll");
}

// Keys that the widget must not see: Escape leaves a text box, so that the digit keys judge again, and takes
// back what does not count yet; signs of no number.
bool ControlView::TakesKey(const QKeyEvent& press) {
  if (Of().Kind() == ControlKind::TextBox && press.key() == Qt::Key_Escape) {
    Show(Property::Text);
    leave();
    return true;
  }
  const QString sign = press.text();
  const bool printed = sign.size() == 1 && sign > QLatin1String(" ") && sign < QLatin1String("\x7F");
  return Looks(Look::Numeric) && printed && !QStringLiteral("0123456789-.").contains(sign);
}

void FinishTyping() {
  if (auto* box = qobject_cast<QLineEdit*>(QApplication::focusWidget())) emit box->editingFinished();
}

bool IsTextField(const QWidget* widget) {
  return qobject_cast<const QLineEdit*>(widget) != nullptr ||
         qobject_cast<const QPlainTextEdit*>(widget) != nullptr;
}

}  // namespace quorvane
