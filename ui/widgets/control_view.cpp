#include "ui/widgets/control_view.h"

#include <QApplication>
#include <QComboBox>
#include <QFocusEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTimer>

#include "ui/widgets/look.h"

namespace quorvane {

ControlView::ControlView(const Part& part, QWidget* widget, Roles roles)
    : at(part.place.rect),
      control_(part.control),
      place_(part.place),
      door_(part.door),
      widget_(widget),
      roles_(roles) {
  widget_->setObjectName(QString::fromStdString(control_.FullName()));
  widget_->installEventFilter(this);
}

bool ControlView::Apply() {
  const unsigned dirty = std::exchange(dirty_, 0U);
  const auto has = [dirty](Property property) { return (dirty & Bit(property)) != 0; };
  for (const Property property : {Property::Items, Property::Caption, Property::Text, Property::Value,
                                  Property::ListIndex, Property::Selection}) {
    if (has(property) && control_.Has(property)) Show(property);
  }
  if (has(Property::Caption)) Speak();
  if (has(Property::BackColor) || has(Property::ForeColor) || has(Property::Enabled)) {
    SetColors(Back(), ReadableOn(Back(), ToQColor(control_.ForeColor())));
  }
  if (has(Property::ToolTip)) widget_->setToolTip(ToQString(control_.ToolTip()));
  if (has(Property::Enabled) || has(Property::Visible)) {
    if (widget_->hasFocus() && !(control_.Enabled() && control_.Visible())) leave();
    SetUsable(control_.Enabled());
    widget_->setVisible(control_.Visible());
  }
  return has(Property::Visible) || has(Property::Anchor);
}

void ControlView::Act(EventKind kind, std::string text, int number) {
  if (kind == EventKind::Click || kind == EventKind::Choose) FinishTyping();
  // The widget may have moved on its own. A selection is the operator's until a procedure selects anew.
  dirty_ |= ~Bit(Property::Selection);
  door_.Enter({.kind = kind, .target = control_.FullName(), .text = std::move(text), .number = number});
  Apply();
}

// The accessible name. A label's says what it shows, too.
void ControlView::Speak() {
  QString name = QString::fromStdString(place_.spoken);
  if (name.isEmpty()) {
    name = Caption().isEmpty() ? QString::fromStdString(control_.Name()) : Caption();
  } else if (control_.Kind() == ControlKind::Label && !Caption().isEmpty()) {
    name += QStringLiteral(": ") + Caption();
  }
  widget_->setAccessibleName(spokenPrefix + name);
}

QString ControlView::Caption() const {
  return ToQString(control_.Caption());
}

QColor ControlView::Back() const {
  if (!Painted()) {
    if (Has(place_.look, Look::White)) return Qt::white;
    if (Has(place_.look, Look::Blue)) return QColor(0xDB, 0xE9, 0xFF);
    if (Has(place_.look, Look::Peach)) return QColor(0xFF, 0xE3, 0xD6);
  }
  return ToQColor(control_.BackColor());
}

void ControlView::SetColors(const QColor& back, const QColor& fore) {
  QPalette palette = widget_->palette();
  for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
    palette.setColor(group, roles_.back, back);
    palette.setColor(group, roles_.fore, fore);
  }
  widget_->setPalette(palette);
}

bool ControlView::eventFilter(QObject*, QEvent* event) {
  switch (event->type()) {
    case QEvent::Enter:
      if (control_.onHover) Act(EventKind::Hover);
      break;
    case QEvent::Leave:
      if (!control_.onHover || control_.Kind() == ControlKind::Frame) break;
      // The frame around a mark wants to know when the pointer leaves the mark.
      for (const Control& frame : control_.Owner().Controls()) {
        if (frame.Kind() != ControlKind::Frame || !frame.onHover) continue;
        door_.Enter({.kind = EventKind::Hover, .target = frame.FullName()});
        break;
      }
      break;
    case QEvent::FocusIn: {
      const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
      if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason) break;
      // After the click that brought the focus, which would undo a selection made now.
      arrived_ = control_.onGotFocus != nullptr;
      if (arrived_) QTimer::singleShot(0, this, [this] { TellArrival(); });
      break;
    }
    case QEvent::KeyPress:
      TellArrival();  // before the key, or the selection would swallow what it types
      return TakesKey(*static_cast<QKeyEvent*>(event));
    default:
      break;
  }
  return false;
}

void ControlView::TellArrival() {
  if (std::exchange(arrived_, false) && widget_->hasFocus()) Act(EventKind::GotFocus);
}

void FinishTyping() {
  if (auto* box = qobject_cast<QLineEdit*>(QApplication::focusWidget())) emit box->editingFinished();
}

bool IsTextField(const QWidget* widget) {
  const auto* list = qobject_cast<const QComboBox*>(widget);
  return qobject_cast<const QLineEdit*>(widget) != nullptr ||
         qobject_cast<const QPlainTextEdit*>(widget) != nullptr || (list != nullptr && list->isEditable());
}

}  // namespace quorvane
