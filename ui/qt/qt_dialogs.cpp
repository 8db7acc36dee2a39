#include "ui/qt/qt_platform.h"

#include <QAbstractButton>
#include <QCloseEvent>
#include <QFileDialog>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <array>
#include <utility>

#include "ui/widgets/look.h"

namespace quorvane {
namespace {

using Word = DialogAnswer::Word;

constexpr std::array<std::pair<Word, QMessageBox::StandardButton>, 4> kButtons = {
    {{Word::Ok, QMessageBox::Ok},
     {Word::Yes, QMessageBox::Yes},
     {Word::No, QMessageBox::No},
     {Word::Cancel, QMessageBox::Cancel}}};

QMessageBox::StandardButtons ButtonsOf(DialogKind kind) {
  switch (kind) {
    case DialogKind::OkCancel:
      return QMessageBox::Ok | QMessageBox::Cancel;
    case DialogKind::YesNo:
      return QMessageBox::Yes | QMessageBox::No;
    case DialogKind::YesNoCancel:
      return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    default:
      return QMessageBox::Ok;
  }
}

QMessageBox::StandardButton UsualOf(const DialogBox& box) {
  const QMessageBox::StandardButtons buttons = ButtonsOf(box.kind);
  for (const auto& [word, button] : kButtons) {
    if (word == box.usual && buttons.testFlag(button)) return button;
  }
  return buttons.testFlag(QMessageBox::Yes) ? QMessageBox::Yes : QMessageBox::Ok;
}

QMessageBox::Icon IconOf(DialogIcon icon) {
  if (icon == DialogIcon::Exclamation) return QMessageBox::Warning;
  return icon == DialogIcon::Critical ? QMessageBox::Critical : QMessageBox::NoIcon;
}

// A message box as the operating system has them: one with Yes and No only is left by its buttons and not
// otherwise. A key that is still held from before presses none.
class MessageBox : public QMessageBox {
 public:
  MessageBox(const DialogBox& box, QWidget* parent) : QMessageBox(parent), kind_(box.kind) {
    setWindowTitle(ToQString(box.title));
    setTextFormat(Qt::PlainText);
    setText(ToQString(box.text));
    setIcon(IconOf(box.icon));
    setStandardButtons(ButtonsOf(box.kind));
    setDefaultButton(UsualOf(box));
    if (kind_ != DialogKind::YesNo) setEscapeButton(kind_ == DialogKind::Ok ? Ok : Cancel);
    for (QAbstractButton* button : buttons()) button->installEventFilter(this);
    if (box.byRadio) HoldBack();
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->isAutoRepeat()) return true;
    return QMessageBox::eventFilter(watched, event);
  }
  void keyPressEvent(QKeyEvent* event) override {
    if (!ClosesOtherwise() && event->matches(QKeySequence::Cancel)) return;
    QMessageBox::keyPressEvent(event);
  }
  void closeEvent(QCloseEvent* event) override {
    if (!ClosesOtherwise()) return event->ignore();
    QMessageBox::closeEvent(event);
  }

 private:
  bool ClosesOtherwise() const { return kind_ != DialogKind::YesNo && !heldBack_; }

  void HoldBack() {
    constexpr int kHeldBackMs = 1000;
    heldBack_ = true;
    for (QAbstractButton* button : buttons()) button->setEnabled(false);
    QTimer::singleShot(kHeldBackMs, this, [this] {
      heldBack_ = false;
      for (QAbstractButton* button : buttons()) button->setEnabled(true);
      defaultButton()->setFocus();
    });
  }

  const DialogKind kind_;
  bool heldBack_ = false;
};

DialogAnswer AskMessage(const DialogBox& box, QWidget* parent) {
  MessageBox dialog(box, parent);
  const int pressed = dialog.exec();
  for (const auto& [word, button] : kButtons) {
    if (pressed == button) return {word};
  }
  return {Word::Cancel};
}

DialogAnswer AskText(const DialogBox& box, QWidget* parent) {
  QInputDialog dialog(parent);
  dialog.setInputMode(QInputDialog::TextInput);
  dialog.setWindowTitle(ToQString(box.title));
  dialog.setLabelText(ToQString(box.text));
  dialog.setTextValue(ToQString(box.preset));
  for (QLabel* label : dialog.findChildren<QLabel*>()) label->setTextFormat(Qt::PlainText);
  dialog.resize(dialog.sizeHint().expandedTo(QSize(440, 0)));
  if (dialog.exec() != QDialog::Accepted) return {Word::Cancel};
  return {Word::Text, dialog.textValue().toStdString()};
}

DialogAnswer AskFile(const DialogBox& box, QWidget* parent) {
  QFileDialog dialog(parent, ToQString(box.title), ToQString(box.folder));
  const bool open = box.kind == DialogKind::OpenFile;
  dialog.setAcceptMode(open ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
  dialog.setFileMode(open ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
  const bool report = box.defaultExtension == ".pdf";
  // A project that exists already is opened, never overwritten.
  dialog.setOption(QFileDialog::DontConfirmOverwrite, !report);
  const QString extension = ToQString(box.defaultExtension).remove(QLatin1Char('.'));
  dialog.setDefaultSuffix(extension);
  if (!extension.isEmpty()) {
    dialog.setNameFilters(
        {(report ? QStringLiteral("PDF files (*.%1)") : QStringLiteral("Quorvane projects (*.%1)"))
             .arg(extension),
         QStringLiteral("All files (*)")});
  }
  if (!box.preset.empty()) dialog.selectFile(ToQString(box.preset));
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {Word::Cancel};
  return {Word::File, dialog.selectedFiles().constFirst().toStdString()};
}

}  // namespace

DialogAnswer ShowQtDialog(const DialogBox& box, QWidget* parent) {
  switch (box.kind) {
    case DialogKind::Input:
      return AskText(box, parent);
    case DialogKind::OpenFile:
    case DialogKind::SaveFile:
      return AskFile(box, parent);
    default:
      return AskMessage(box, parent);
  }
}

}  // namespace quorvane
