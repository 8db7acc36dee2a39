#include "ui/widgets/control_view.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>

#include "ui/widgets/look.h"

namespace quorvane {

ControlView::ControlView(Control& control, const Place& place, Door& door)
    : control_(control), place_(place), door_(door) {}

bool ControlView::Apply() {
  const unsigned dirty = std::exchange(dirty_, 0U);
  const auto has = [dirty](Property property) { return (dirty & Bit(property)) != 0; };
  for (const Property property :
       {Property::Items, Property::Caption, Property::Text, Property::Value, Property::Checked,
        Property::BackColor, Property::ForeColor, Property::ListIndex, Property::Selection}) {
    if (has(property) && control_.Has(property)) Show(property);
  }
  if (has(Property::ToolTip)) Widget()->setToolTip(ToQString(control_.ToolTip()));
  if (has(Property::Enabled)) ShowEnabled();
  if (has(Property::Visible)) ShowVisible();
  return has(Property::Visible) || has(Property::Anchor);
}

void ControlView::ShowEnabled() {
  QWidget* widget = Widget();
  if (!control_.Enabled() && widget->hasFocus() && onFocusLost) onFocusLost();
  SetUsable(control_.Enabled());
}

void ControlView::ShowVisible() {
  QWidget* widget = Widget();
  if (!control_.Visible() && widget->hasFocus() && onFocusLost) onFocusLost();
  widget->setVisible(control_.Visible());
}

void ControlView::Act(EventKind kind, std::string text, int number) {
  if (kind == EventKind::Click || kind == EventKind::Choose) FinishTyping();
  // The widget may have moved on its own. A selection is the operator's until a procedure selects anew.
  dirty_ |= ~Bit(Property::Selection);
  Event event;
  event.kind = kind;
  event.target = control_.FullName();
  event.text = std::move(text);
  event.number = number;
  door_.Enter(event);
  Apply();
}

void ControlView::SetFontPixels(double pixels, double /*leastPixels*/) {
  Widget()->setFont(FontOfPixels(pixels, Has(place_.look, Look::Bold), Has(place_.look, Look::Fixed)));
}

void ControlView::Speak(const QString& caption) {
  QString name = QString::fromStdString(place_.spoken);
  if (name.isEmpty()) name = caption.isEmpty() ? QString::fromStdString(control_.Name()) : caption;
  Widget()->setAccessibleName(spokenPrefix + name);
}

QColor ControlView::Back() const {
  if (!Painted()) {
    if (Has(place_.look, Look::White)) return Qt::white;
    if (Has(place_.look, Look::Blue)) return QColor(0xDB, 0xE9, 0xFF);
    if (Has(place_.look, Look::Peach)) return QColor(0xFF, 0xE3, 0xD6);
  }
  return ToQColor(control_.BackColor());
}

QColor ControlView::Fore() const {
  return ToQColor(control_.ForeColor());
}

void ControlView::SetPaletteColors(QPalette::ColorRole back, QPalette::ColorRole fore) {
  QPalette palette = Widget()->palette();
  for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
    palette.setColor(group, back, Back());
    palette.setColor(group, fore, ReadableOn(Back(), Fore()));
  }
  Widget()->setPalette(palette);
}

bool IsTextField(const QWidget* widget) {
  const auto* list = qobject_cast<const QComboBox*>(widget);
  return qobject_cast<const QLineEdit*>(widget) != nullptr ||
         qobject_cast<const QPlainTextEdit*>(widget) != nullptr || (list != nullptr && list->isEditable());
}

}  // namespace quorvane
