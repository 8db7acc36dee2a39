#include <QCheckBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <QWheelEvent>
#include <algorithm>
#include <functional>
#include <utility>

#include "forms/control.h"
#include "ui/widgets/control_view.h"
#include "ui/widgets/look.h"

namespace quorvane {
namespace {

double LeastShare(const Place& place) {
  constexpr double kLeastPoints = 10;
  return std::min(1.0, kLeastPoints / place.points);
}

int LeastPixels(const QFont& font, double share) {
  return static_cast<int>(font.pixelSize() * share);
}

// The caption with the ampersand that Qt wants before the mnemonic letter, and ampersands of its own doubled.
QString WithMnemonic(QString caption, char mnemonic) {
  caption.replace(QLatin1Char('&'), QLatin1String("&&"));
  const qsizetype at = mnemonic == 0 ? -1 : caption.indexOf(QLatin1Char(mnemonic), 0, Qt::CaseInsensitive);
  if (at >= 0) caption.insert(at, QLatin1Char('&'));
  return caption;
}

// A label or a frame. It paints its caption as large as designed, or as much smaller as it takes to fit. One
// that can be clicked can also be reached with Tab and clicked with the space bar.
class CaptionLabel : public QLabel {
 public:
  CaptionLabel(const Place& place, QWidget* parent)
      : QLabel(parent), look_(place.look), leastShare_(LeastShare(place)) {
    setTextFormat(Qt::PlainText);
    // Roles that mean nothing to what lies in a frame, and inherits its palette.
    setBackgroundRole(QPalette::AlternateBase);
    setForegroundRole(QPalette::BrightText);
    if (Has(look_, Look::Focusable)) setFocusPolicy(Qt::TabFocus);
  }

  // Painted: the background is not the plain one.
  void SetColors(const QColor& back, const QColor& fore, bool painted) {
    painted_ = painted;
    QPalette colors = palette();
    colors.setColor(backgroundRole(), back);
    colors.setColor(foregroundRole(), fore);
    setPalette(colors);
    const bool lit = Has(look_, Look::Lamp) && painted;
    const bool edged = Has(look_, Look::Border | Look::Heavy);
    setAutoFillBackground(painted || edged);
    setFrameStyle(edged ? QFrame::Box | QFrame::Plain : QFrame::NoFrame);
    setLineWidth(Has(look_, Look::Heavy) || lit ? 3 : 1);
  }

  void SetOnClick(std::function<void()> onClick) {
    onClick_ = std::move(onClick);
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::PointingHandCursor);
  }

 protected:
  void paintEvent(QPaintEvent* event) override {
    QFrame::paintEvent(event);
    const bool left = Has(look_, Look::Left);
    const int gap = margin() + (left ? 2 : 1);
    const QRect room = contentsRect().adjusted(gap, margin() / 2, -gap, 0);
    const int least = LeastPixels(font(), leastShare_);
    int flags = left ? Qt::AlignLeft : Qt::AlignHCenter;
    QFont fitted = font();
    QString shown = text();
    if (Has(look_, Look::Top)) {
      const bool columns = Has(look_, Look::Fixed);
      flags |= Qt::AlignTop | (columns ? 0 : Qt::TextWordWrap);
      fitted = FitParagraph(fitted, shown, room.size(), flags, columns ? 1 : least);
    } else if (Has(look_, Look::Words)) {
      flags |= Qt::AlignVCenter | Qt::TextDontClip;
      shown = MarkLines(room.width(), room.height());
    } else {
      flags |= Qt::AlignVCenter;
      if (Has(look_, Look::Lamp)) fitted.setBold(painted_);
      fitted = Has(look_, Look::Fixed) ? FitColumns(fitted, room.height())
                                       : FitFont(fitted, shown, room.width(), least);
      shown = ElideAtWord(shown, fitted, room.width());
    }
    QPainter painter(this);
    painter.setFont(fitted);
    painter.setPen(palette().color(foregroundRole()));
    painter.drawText(room, flags, shown);
  }

  void mousePressEvent(QMouseEvent* event) override {
    pressed_ = onClick_ != nullptr && event->button() == Qt::LeftButton;
    event->setAccepted(pressed_);
  }

  void mouseReleaseEvent(QMouseEvent* event) override {
    if (event->button() != Qt::LeftButton || !std::exchange(pressed_, false)) return event->ignore();
    if (rect().contains(event->position().toPoint())) onClick_();
  }

  void keyPressEvent(QKeyEvent* event) override {
    const int key = event->key();
    const bool click = key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter;
    if (!onClick_ || !click) return event->ignore();
    onClick_();
  }

 private:
  // What does not fit one line goes under it where there is room for two.
  QString MarkLines(int width, int height) const {
    const QString first = ElideAtWord(text(), font(), width);
    if (first == text() || height < 2 * QFontMetrics(font()).ascent()) return first;
    return first + QLatin1Char('\n') + ElideAtWord(text().mid(first.size()).trimmed(), font(), width);
  }

  const Look look_;
  const double leastShare_;  // of its font, below which the caption is cut rather than made smaller
  bool painted_ = false;
  bool pressed_ = false;
  std::function<void()> onClick_;
};

// A push button whose caption shrinks to fit, with the console key that does the same beside it in small
// letters.
class CaptionButton : public QPushButton {
 public:
  CaptionButton(const Place& place, QWidget* parent)
      : QPushButton(parent), key_(QString::fromStdString(place.key)), leastShare_(LeastShare(place)) {
    setAutoDefault(true);  // Enter presses it, as the space bar does
    // A pop-up leaves the focus where it is.
    if (place.anchoring == Anchoring::Beside) setFocusPolicy(Qt::NoFocus);
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    painter.drawControl(QStyle::CE_PushButtonBevel, option);

    const int least = LeastPixels(font(), leastShare_);
    const QFont small = FontOfPixels(std::max(least, font().pixelSize() * 2 / 3), false);
    const int keyWidth = key_.isEmpty() ? 0 : QFontMetrics(small).horizontalAdvance(QLatin1Char(' ') + key_);
    const int room = width() - 10 - keyWidth;
    const QString bare = text().remove(QLatin1Char('&'));
    const QFont fitted = FitFont(font(), bare, room, least);
    const int captionWidth = std::min(room, QFontMetrics(fitted).horizontalAdvance(bare));
    const int left = (width() - captionWidth - keyWidth) / 2;

    painter.setFont(fitted);
    option.rect.setRect(left, 0, captionWidth + 2, height());
    painter.drawControl(QStyle::CE_PushButtonLabel, option);
    painter.setFont(small);
    painter.drawItemText({left + captionWidth, 0, keyWidth, height()}, Qt::AlignRight | Qt::AlignVCenter,
                         palette(), isEnabled(), key_, QPalette::ButtonText);
  }

 private:
  const QString key_;
  const double leastShare_;
};

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
