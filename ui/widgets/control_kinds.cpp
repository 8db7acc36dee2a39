#include <QCheckBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QWheelEvent>

#include "forms/control.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/control_view.h"
#include "ui/widgets/look.h"

namespace quorvane {
namespace {

// A view on a widget of the type T.
template <typename T>
class ViewOn : public ControlView {
 public:
  ViewOn(const Part& part, T* widget, Roles roles = {}) : ControlView(part, widget, roles), widget_(widget) {}

 protected:
  T* const widget_;
};

class ButtonView : public ViewOn<CaptionButton> {
 public:
  explicit ButtonView(const Part& part)
      : ViewOn(part, new CaptionButton(part.place, part.parent), {QPalette::Button, QPalette::ButtonText}) {
    connect(widget_, &QPushButton::clicked, this, [this] { Act(EventKind::Click); });
  }

 protected:
  void Show(Property) override { widget_->setText(WithMnemonic(Caption(), Design().mnemonic)); }
};

// A label or a frame.
class LabelView : public ViewOn<CaptionLabel> {
 public:
  explicit LabelView(const Part& part) : ViewOn(part, new CaptionLabel(part.place, part.parent)) {
    if (part.control.onClick) widget_->SetOnClick([this] { Act(EventKind::Click); });
    if (part.control.Kind() == ControlKind::Frame) widget_->setMargin(4);
  }

 protected:
  void Show(Property) override {
    if (Has(Design().look, Look::Bare)) return;
    widget_->setText(Caption().isEmpty() ? QString::fromStdString(Design().word) : Caption());
  }
  void SetColors(const QColor& back, const QColor& fore) override {
    widget_->SetColors(back, fore, Painted());
  }
};

// What stands in a locked box is still there to be read, in its colours, and to be scrolled.
template <typename T>
void KeepReadable(T& box, bool usable) {
  box.setReadOnly(!usable);
  box.setFocusPolicy(usable ? Qt::StrongFocus : Qt::NoFocus);
}

// One line of text. A late one counts when Enter is pressed or the box is left, and Escape takes it back.
class LineEditView : public ViewOn<QLineEdit> {
 public:
  explicit LineEditView(const Part& part) : ViewOn(part, new QLineEdit(part.parent)) {
    widget_->setAlignment(Has(Design().look, Look::Left) ? Qt::AlignLeft : Qt::AlignHCenter);
    if (Late()) {
      connect(widget_, &QLineEdit::editingFinished, this, &LineEditView::Count);
      connect(widget_, &QLineEdit::returnPressed, this, [this] { leave(); });
    } else {
      connect(widget_, &QLineEdit::textEdited, this, &LineEditView::Count);
    }
  }

 protected:
  void Show(Property property) override {
    if (property == Property::Text) {
      const QSignalBlocker quiet(widget_);
      if (widget_->text() != ToQString(Of().Text())) widget_->setText(ToQString(Of().Text()));
    } else if (widget_->hasFocus()) {
      widget_->setSelection(Of().SelectionStart(), Of().SelectionLength());
    }
  }

  void SetUsable(bool usable) override {
    if (Late()) return ControlView::SetUsable(usable);
    KeepReadable(*widget_, usable);
  }

  bool TakesKey(const QKeyEvent& press) override {
    if (press.key() == Qt::Key_Escape) {
      if (Late()) Show(Property::Text);
      leave();  // so that the digit keys judge again
      return true;
    }
    if (!Has(Design().look, Look::Numeric) || press.text().size() != 1) return false;
    int keyCode = press.text().at(0).unicode();
    FilterNumericKey(Of(), keyCode);
    return keyCode == 0;
  }

 private:
  bool Late() const { return Has(Design().look, Look::Late); }
  void Count() {
    if (Late() && widget_->text().trimmed().isEmpty()) return Show(Property::Text);  // no number was typed
    if (widget_->text() != ToQString(Of().Text())) Act(EventKind::Type, widget_->text().toStdString());
  }
};

class TextEdit : public QPlainTextEdit {
 public:
  using QPlainTextEdit::QPlainTextEdit;

 protected:
  // An empty clipboard offers no format at all, and Qt 6.4 takes the first one without looking.
  bool canInsertFromMimeData(const QMimeData* source) const override {
    return !source->formats().isEmpty() && QPlainTextEdit::canInsertFromMimeData(source);
  }
  void insertFromMimeData(const QMimeData* source) override {
    if (canInsertFromMimeData(source)) QPlainTextEdit::insertFromMimeData(source);
  }
};

class TextView : public ViewOn<TextEdit> {
 public:
  explicit TextView(const Part& part) : ViewOn(part, new TextEdit(part.parent)) {
    widget_->setTabChangesFocus(true);
    widget_->setFrameStyle(QFrame::Box | QFrame::Plain);
    connect(widget_, &QPlainTextEdit::textChanged, this, [this] {
      const QString typed = widget_->toPlainText();
      if (typed != ToQString(Of().Text())) Act(EventKind::Type, typed.toStdString());
    });
  }

 protected:
  void Show(Property property) override {
    if (property == Property::Text) {
      const QSignalBlocker quiet(widget_);
      if (widget_->toPlainText() != ToQString(Of().Text())) widget_->setPlainText(ToQString(Of().Text()));
    } else if (widget_->hasFocus() && Of().SelectionLength() > 0) {
      widget_->selectAll();
    }
  }
  void SetUsable(bool usable) override { KeepReadable(*widget_, usable); }
  QColor Back() const override { return Of().Enabled() ? ControlView::Back() : ToQColor(kButtonFace); }
  bool TakesKey(const QKeyEvent& press) override {
    if (press.key() != Qt::Key_Escape) return false;
    leave();
    return true;
  }
};

// A check box or option button that never changes by itself, and that can be clicked anywhere.
template <typename T>
class Unmoved : public T {
 public:
  using T::T;

 protected:
  void nextCheckState() override {}
  bool hitButton(const QPoint& at) const override { return this->rect().contains(at); }
};

class TickView : public ViewOn<QAbstractButton> {
 public:
  TickView(const Part& part, QAbstractButton* box)
      : ViewOn(part, box, {QPalette::Button, QPalette::WindowText}) {
    box->setAutoExclusive(false);
    connect(box, &QAbstractButton::clicked, this, [this] { Act(EventKind::Click); });
  }

 protected:
  void Show(Property property) override {
    if (property == Property::Value) return widget_->setChecked(Of().Value() != 0);
    widget_->setText(WithMnemonic(Caption(), Design().mnemonic));
  }
};

// A list that does not change when the wheel turns over it by chance.
class ListBox : public QComboBox {
 public:
  using QComboBox::QComboBox;

 protected:
  void wheelEvent(QWheelEvent* event) override { event->ignore(); }
};

class ListView : public ViewOn<ListBox> {
 public:
  explicit ListView(const Part& part) : ViewOn(part, new ListBox(part.parent)) {
    connect(widget_, &QComboBox::activated, this, [this](int index) { Act(EventKind::Choose, {}, index); });
  }

 protected:
  void Show(Property property) override {
    if (property == Property::Items) {
      widget_->clear();
      for (const std::string& item : Of().Items()) widget_->addItem(ToQString(item));
    }
    widget_->setCurrentIndex(Of().ListIndex());
  }
};

}  // namespace

std::unique_ptr<ControlView> ControlView::Create(const Part& part) {
  switch (part.control.Kind()) {
    case ControlKind::Button:
      return std::make_unique<ButtonView>(part);
    case ControlKind::Label:
    case ControlKind::Frame:
      return std::make_unique<LabelView>(part);
    case ControlKind::TextBox:
      if (Has(part.place.look, Look::Lines)) return std::make_unique<TextView>(part);
      return std::make_unique<LineEditView>(part);
    case ControlKind::CheckBox:
      return std::make_unique<TickView>(part, new Unmoved<QCheckBox>(part.parent));
    case ControlKind::Option:
      return std::make_unique<TickView>(part, new Unmoved<QRadioButton>(part.parent));
    case ControlKind::ComboBox:
      return std::make_unique<ListView>(part);
    case ControlKind::Menu:
    case ControlKind::Timer:
      break;
  }
  return nullptr;
}

}  // namespace quorvane
