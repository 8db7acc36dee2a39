#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QWheelEvent>
#include <algorithm>

#include "forms/numeric_keys.h"
#include "ui/widgets/caption_button.h"
#include "ui/widgets/caption_label.h"
#include "ui/widgets/control_view.h"
#include "ui/widgets/frame_box.h"
#include "ui/widgets/look.h"

namespace quorvane {
namespace {

// A view on a widget of the type T.
template <typename T>
class ViewOn : public ControlView {
 public:
  ViewOn(Control& control, const Place& place, Door& door, T* widget)
      : ControlView(control, place, door), widget_(widget) {}
  T* Widget() const override { return widget_; }

 protected:
  QString Caption() const { return ToQString(Of().Caption()); }

  T* const widget_;
};

class ButtonView : public ViewOn<CaptionButton> {
 public:
  ButtonView(Control& control, const Place& place, Door& door, QWidget* parent)
      : ViewOn(control, place, door, new CaptionButton(parent)) {
    widget_->setAutoDefault(false);
    widget_->SetKey(QString::fromStdString(place.key));
    if (place.anchoring == Anchoring::Beside) widget_->setFocusPolicy(Qt::NoFocus);
    QObject::connect(widget_, &QPushButton::clicked, [this] { Act(EventKind::Click); });
  }

  void SetFontPixels(double pixels, double leastPixels) override {
    ViewOn::SetFontPixels(pixels, leastPixels);
    widget_->SetMinimumPixels(static_cast<int>(leastPixels));
  }

 protected:
  void Show(Property property) override {
    if (property == Property::Caption) {
      widget_->SetCaption(Caption(), Design().mnemonic);
      Speak(Caption());
    } else {
      SetPaletteColors(QPalette::Button, QPalette::ButtonText);
    }
  }
};

class LabelView : public ViewOn<CaptionLabel> {
 public:
  void SetRow(const QString& widest, int width) override { widget_->SetRow(widest, width); }

  LabelView(Control& control, const Place& place, Door& door, QWidget* parent)
      : ViewOn(control, place, door, new CaptionLabel(parent, place.look)) {
    if (control.onClick) widget_->SetOnClick([this] { Act(EventKind::Click); });
  }

  void SetFontPixels(double pixels, double leastPixels) override {
    ViewOn::SetFontPixels(pixels, leastPixels);
    widget_->SetMinimumPixels(static_cast<int>(leastPixels));
  }

 protected:
  void Show(Property property) override {
    if (property == Property::Caption) {
      const QString text = Caption().isEmpty() ? QString::fromStdString(Design().word) : Caption();
      if (widget_->text() != text) widget_->setText(text);
      SpeakCaption();
    } else {
      widget_->SetColors(Back(), Fore(), Painted());
    }
  }

 private:
  void SpeakCaption() {
    const QString name = spokenPrefix + QString::fromStdString(Design().spoken);
    if (Design().spoken.empty()) {
      Speak(Caption());
    } else {
      widget_->setAccessibleName(Caption().isEmpty() ? name : name + QStringLiteral(": ") + Caption());
    }
  }
};

// What stands in a locked box is still there to be read, in its colours, and to be scrolled.
template <typename T>
void KeepReadable(T& box, bool usable) {
  box.setReadOnly(!usable);
  box.setFocusPolicy(usable ? Qt::StrongFocus : Qt::NoFocus);
}

class LineEdit : public QLineEdit {
 public:
  LineEdit(QWidget* parent, const Control& control, bool numeric)
      : QLineEdit(parent), control_(control), numeric_(numeric) {}
  std::function<void()> onEscape;
  std::function<void()> onFinish;  // only of a box whose change waits for its end

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() == Qt::Key_Escape) return onEscape();
    if (numeric_ && event->text().size() == 1) {
      int keyCode = event->text().at(0).unicode();
      FilterNumericKey(control_, keyCode);
      if (keyCode == 0) return event->accept();
    }
    QLineEdit::keyPressEvent(event);
  }

 private:
  const Control& control_;
  const bool numeric_;
};

// One line of text. A late one counts when Enter is pressed or the box is left, and Escape takes it back.
class LineEditView : public ViewOn<LineEdit> {
 public:
  LineEditView(Control& control, const Place& place, Door& door, QWidget* parent)
      : ViewOn(control, place, door, new LineEdit(parent, control, Has(place.look, Look::Numeric))) {
    widget_->setAlignment(Has(place.look, Look::Left) ? Qt::AlignLeft : Qt::AlignHCenter);
    const auto finished = [this, late = Has(place.look, Look::Late)] {
      if (late && widget_->text().trimmed().isEmpty()) return Show(Property::Text);  // no number was typed
      if (widget_->text() != ToQString(Of().Text())) Act(EventKind::Type, widget_->text().toStdString());
    };
    widget_->onEscape = [this] { Leave(); };
    if (Has(place.look, Look::Late)) {
      widget_->onFinish = finished;
      QObject::connect(widget_, &QLineEdit::editingFinished, finished);
      QObject::connect(widget_, &QLineEdit::returnPressed, [this] { Leave(); });
      widget_->onEscape = [this] {
        Show(Property::Text);
        Leave();
      };
    } else {
      QObject::connect(widget_, &QLineEdit::textEdited, finished);
    }
  }

 protected:
  void Show(Property property) override {
    const QSignalBlocker quiet(widget_);
    if (property == Property::Text) {
      if (widget_->text() != ToQString(Of().Text())) widget_->setText(ToQString(Of().Text()));
      Speak({});
    } else if (property == Property::Selection) {
      if (widget_->hasFocus()) widget_->setSelection(Of().SelectionStart(), Of().SelectionLength());
    } else {
      SetPaletteColors(QPalette::Base, QPalette::Text);
    }
  }

  void SetUsable(bool usable) override {
    if (Has(Design().look, Look::Late)) return ControlView::SetUsable(usable);
    KeepReadable(*widget_, usable);
  }

 private:
  // Out of the box, so that the digit keys judge again.
  void Leave() {
    if (onFinished) onFinished();
  }
};

class TextEdit : public QPlainTextEdit {
 public:
  using QPlainTextEdit::QPlainTextEdit;
  std::function<void()> onEscape;

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() == Qt::Key_Escape) return onEscape();
    QPlainTextEdit::keyPressEvent(event);
  }
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
  TextView(Control& control, const Place& place, Door& door, QWidget* parent)
      : ViewOn(control, place, door, new TextEdit(parent)) {
    widget_->onEscape = [this] {
      if (onFinished) onFinished();
    };
    widget_->setTabChangesFocus(true);
    widget_->setFrameStyle(QFrame::Box | QFrame::Plain);
    widget_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    QObject::connect(widget_, &QPlainTextEdit::textChanged, [this] {
      if (widget_->toPlainText() != ToQString(Of().Text())) {
        Act(EventKind::Type, widget_->toPlainText().toStdString());
      }
    });
  }

 protected:
  void Show(Property property) override {
    const QSignalBlocker quiet(widget_);
    if (property == Property::Text) {
      if (widget_->toPlainText() != ToQString(Of().Text())) widget_->setPlainText(ToQString(Of().Text()));
      Speak({});
    } else if (property == Property::Selection) {
      if (widget_->hasFocus() && Of().SelectionLength() > 0) widget_->selectAll();
    } else {
      SetPaletteColors(QPalette::Base, QPalette::Text);
    }
  }

  void SetUsable(bool usable) override {
    KeepReadable(*widget_, usable);
    SetPaletteColors(QPalette::Base, QPalette::Text);
    if (usable) return;
    QPalette palette = widget_->palette();
    palette.setColor(QPalette::Base, ToQColor(kButtonFace));
    widget_->setPalette(palette);
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

template <typename T>
class TickView : public ViewOn<T> {
 public:
  TickView(Control& control, const Place& place, Door& door, QWidget* parent)
      : ViewOn<T>(control, place, door, new Unmoved<T>(parent)) {
    this->widget_->setAutoExclusive(false);
    QObject::connect(this->widget_, &T::clicked, [this] { this->Act(EventKind::Click); });
  }

 protected:
  void Show(Property property) override {
    if (property == Property::Caption) {
      this->widget_->setText(WithMnemonic(this->Caption(), this->Design().mnemonic));
      this->Speak(this->Caption());
    } else if (property == Property::Value) {
      this->widget_->setChecked(this->Of().Value() != 0);
    } else {
      this->SetPaletteColors(QPalette::Window, QPalette::WindowText);
    }
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
  ListView(Control& control, const Place& place, Door& door, QWidget* parent)
      : ViewOn(control, place, door, new ListBox(parent)) {
    QObject::connect(widget_, &QComboBox::activated,
                     [this](int index) { Act(EventKind::Choose, {}, index); });
  }

 protected:
  void Show(Property property) override {
    if (property == Property::Items) {
      widget_->clear();
      for (const std::string& item : Of().Items()) widget_->addItem(ToQString(item));
      Speak({});
    }
    if (property == Property::Items || property == Property::ListIndex) {
      widget_->setCurrentIndex(Of().ListIndex());
    }
    if (property == Property::BackColor || property == Property::ForeColor) {
      SetPaletteColors(QPalette::Base, QPalette::Text);
    }
  }
};

class FrameView : public ViewOn<FrameBox> {
 public:
  FrameView(Control& control, const Place& place, Door& door, QWidget* parent)
      : ViewOn(control, place, door, new FrameBox(parent, place.look)) {}

 protected:
  void Show(Property property) override {
    if (property == Property::Caption) {
      widget_->SetCaption(Caption());
      Speak(Caption());
    } else {
      widget_->SetColors(Back(), Fore());
    }
  }
};

}  // namespace

void FinishTyping() {
  const auto* box = dynamic_cast<LineEdit*>(QApplication::focusWidget());
  if (box != nullptr && box->onFinish) box->onFinish();
}

std::unique_ptr<ControlView> ControlView::Create(Control& control, const Place& place, Door& door,
                                                 QWidget* parent) {
  switch (control.Kind()) {
    case ControlKind::Button:
      return std::make_unique<ButtonView>(control, place, door, parent);
    case ControlKind::Label:
      return std::make_unique<LabelView>(control, place, door, parent);
    case ControlKind::TextBox:
      if (Has(place.look, Look::Lines)) return std::make_unique<TextView>(control, place, door, parent);
      return std::make_unique<LineEditView>(control, place, door, parent);
    case ControlKind::CheckBox:
      return std::make_unique<TickView<QCheckBox>>(control, place, door, parent);
    case ControlKind::Option:
      return std::make_unique<TickView<QRadioButton>>(control, place, door, parent);
    case ControlKind::ComboBox:
      return std::make_unique<ListView>(control, place, door, parent);
    case ControlKind::Frame:
      return std::make_unique<FrameView>(control, place, door, parent);
    case ControlKind::Menu:
    case ControlKind::Timer:
      break;
  }
  return nullptr;
}

}  // namespace quorvane
