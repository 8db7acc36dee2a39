#include <QAccessibleWidget>
#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <QTreeWidget>
#include <algorithm>
#include <functional>
#include <utility>

#include "forms/control.h"
#include "ui/widgets/caption_label.h"
#include "ui/widgets/control_view.h"
#include "ui/widgets/look.h"
#include "ui/words.h"

namespace quorvane {
namespace {

// What a screen reader is told of something that is pressed and that the toolkit takes for something else.
class Pressable : public QAccessibleWidget {
 public:
  Pressable(QWidget* widget, QAccessible::Role role, std::function<void()> press)
      : QAccessibleWidget(widget, role), press_(std::move(press)) {}

  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    if (const auto* button = qobject_cast<QAbstractButton*>(object())) {
      state.checkable = true;
      state.checked = button->isChecked();
    }
    return state;
  }
  QStringList actionNames() const override {
    return QStringList{pressAction()} + QAccessibleWidget::actionNames();
  }
  void doAction(const QString& action) override {
    action == pressAction() ? press_() : QAccessibleWidget::doAction(action);
  }

 private:
  const std::function<void()> press_;
};

// A list says what it is for and what is chosen; the toolkit's own says the latter alone.
class NamedList : public QAccessibleWidget {
 public:
  explicit NamedList(QComboBox* list) : QAccessibleWidget(list, QAccessible::ComboBox), list_(*list) {}

  QString text(QAccessible::Text kind) const override {
    const QString text = QAccessibleWidget::text(kind);
    if (kind == QAccessible::Value || (kind == QAccessible::Name && text.isEmpty()))
      return list_.currentText();
    return kind == QAccessible::Name ? text + QStringLiteral(": ") + list_.currentText() : text;
  }

 private:
  QComboBox& list_;
};

// The toolkit knows no label, and takes an option that its neighbours do not switch off for a check box.
QAccessibleInterface* RoleOf(const QString&, QObject* object) {
  if (auto* list = qobject_cast<QComboBox*>(object)) return new NamedList(list);
  if (auto* option = qobject_cast<QRadioButton*>(object)) {
    return new Pressable(option, QAccessible::RadioButton, [option] { option->click(); });
  }
  auto* label = dynamic_cast<CaptionLabel*>(object);
  if (label == nullptr) return nullptr;
  if (label->IsClickable()) return new Pressable(label, QAccessible::Button, [label] { label->Click(); });
  return new QAccessibleWidget(label, label->IsFrame() ? QAccessible::Grouping : QAccessible::StaticText);
}

// A push button whose caption shrinks to fit, with its console key in small letters beside it.
class CaptionButton : public QPushButton {
 public:
  CaptionButton(const Place& place, QWidget* parent) : QPushButton(parent), place_(place) {
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

    const QString key = QString::fromStdString(place_.key);
    const int least = LeastPixels(font(), place_);
    const QFont small = FontOfPixels(std::max(least, font().pixelSize() * 2 / 3), false);
    const int keyWidth = key.isEmpty() ? 0 : QFontMetrics(small).horizontalAdvance(QLatin1Char(' ') + key);
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
                         palette(), isEnabled(), key, QPalette::ButtonText);
  }

 private:
  const Place& place_;
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
  void Show(Property) override { widget_->setText(Words::WithMnemonic(Of().Caption(), Design().mnemonic)); }
};

// A label or a frame.
class LabelView : public ViewOn<CaptionLabel> {
 public:
  explicit LabelView(const Part& part)
      : ViewOn(part, new CaptionLabel(part.place, part.control.Kind() == ControlKind::Frame, part.parent)) {
    if (part.control.onClick) widget_->SetOnClick([this] { Act(EventKind::Click); });
  }

 protected:
  void Show(Property) override {
    if (Looks(Look::Bare)) return;
    widget_->SetText(Caption().isEmpty() ? Words::Of(Design().word) : Caption());
  }
  void SetColors(const QColor& back, const QColor& fore) override {
    widget_->SetColors(back, fore, Painted(), IsRedAlone());
  }
};

// One line of text. A late one counts when Enter is pressed or the box is left.
class LineEditView : public ViewOn<QLineEdit> {
 public:
  explicit LineEditView(const Part& part) : ViewOn(part, new QLineEdit(part.parent)) {
    widget_->setAlignment(Looks(Look::Left) ? Qt::AlignLeft : Qt::AlignHCenter);
    if (Looks(Look::Late)) {
      connect(widget_, &QLineEdit::editingFinished, this, &LineEditView::Count);
      connect(widget_, &QLineEdit::returnPressed, this, [this] { leave(); });
    } else {
      connect(widget_, &QLineEdit::textEdited, this, &LineEditView::Count);
    }
  }

 protected:
  void Show(Property) override {
    const QSignalBlocker quiet(widget_);
    if (widget_->text() != ToQString(Of().Text())) widget_->setText(ToQString(Of().Text()));
  }

 private:
  void Count() {
    const QString typed = widget_->text();
    if (Looks(Look::Late) && typed.trimmed().isEmpty()) return Show(Property::Text);  // no number
    if (typed != ToQString(Of().Text())) Act(EventKind::Type, typed.toStdString());
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
  void Show(Property) override {
    const QSignalBlocker quiet(widget_);
    if (widget_->toPlainText() != ToQString(Of().Text())) widget_->setPlainText(ToQString(Of().Text()));
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
    widget_->setText(Words::WithMnemonic(Of().Caption(), Design().mnemonic));
  }
};

class ListView : public ViewOn<QComboBox> {
 public:
  explicit ListView(const Part& part) : ViewOn(part, new QComboBox(part.parent)) {
    connect(widget_, &QComboBox::activated, this, [this](int index) { Act(EventKind::Choose, {}, index); });
  }

 protected:
  void Show(Property property) override {
    if (property == Property::Items) {
      widget_->clear();
      for (const std::string& item : Of().Items()) widget_->addItem(Words::Of(item));
    }
    widget_->setCurrentIndex(Of().ListIndex());
  }
};

// A table. The row that has the focus is the one that is chosen.
class TableView : public ViewOn<QTreeWidget> {
 public:
  explicit TableView(const Part& part) : ViewOn(part, new QTreeWidget(part.parent)) {
    const QStringList heads = Words::Of(part.place.word).split(QLatin1Char('\t'));
    widget_->setHeaderLabels(heads);
    widget_->setRootIsDecorated(false);
    widget_->setUniformRowHeights(true);
    widget_->setAlternatingRowColors(true);
    widget_->setFrameStyle(QFrame::Box | QFrame::Plain);
    widget_->header()->setSectionsMovable(false);
    widget_->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    widget_->header()->setMinimumSectionSize(80);
    connect(widget_, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) {
      const int row = item == nullptr ? -1 : widget_->indexOfTopLevelItem(item);
      if (row >= 0 && row != Of().ListIndex()) Act(EventKind::Choose, {}, row);
    });
  }

 protected:
  void Show(Property property) override {
    const QSignalBlocker quiet(widget_);
    if (property == Property::Items) {
      widget_->clear();
      for (const std::string& item : Of().Items()) {
        new QTreeWidgetItem(widget_, Words::Of(item).split(QLatin1Char('\t')));
      }
    }
    QTreeWidgetItem* chosen = widget_->topLevelItem(Of().ListIndex());
    widget_->setCurrentItem(chosen);
    if (chosen != nullptr) widget_->scrollToItem(chosen);
  }
};

}  // namespace

std::unique_ptr<ControlView> ControlView::Create(const Part& part) {
  QAccessible::installFactory(RoleOf);  // again does nothing
  switch (part.control.Kind()) {
    case ControlKind::Button:
      return std::make_unique<ButtonView>(part);
    case ControlKind::Label:
    case ControlKind::Frame:
      return std::make_unique<LabelView>(part);
    case ControlKind::TextBox:
      if (part.place.look.testFlag(Look::Lines)) return std::make_unique<TextView>(part);
      return std::make_unique<LineEditView>(part);
    case ControlKind::CheckBox:
      return std::make_unique<TickView>(part, new Unmoved<QCheckBox>(part.parent));
    case ControlKind::Option:
      return std::make_unique<TickView>(part, new Unmoved<QRadioButton>(part.parent));
    case ControlKind::ComboBox:
      return std::make_unique<ListView>(part);
    case ControlKind::List:
      return std::make_unique<TableView>(part);
    case ControlKind::Menu:
    case ControlKind::Timer:
      break;
  }
  return nullptr;
}

}  // namespace quorvane
