#include "ui/qt/qt_platform.h"

#include <QAbstractButton>
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
#include "ui/words.h"

namespace quorvane {
namespace {

using Word = DialogAnswer::Word;

constexpr std::array<std::pair<Word, QMessageBox::StandardButton>, 4> kButtons = {
    {{Word::Ok, QMessageBox::Ok},
     {Word::Yes, QMessageBox::Yes},
     {Word::No, QMessageBox::No},
     {Word::Cancel, QMessageBox::Cancel}}};
// Ok, OkCancel, YesNo, YesNoCancel.
constexpr std::array<QMessageBox::StandardButtons, 4> kButtonsOf = {
    QMessageBox::Ok, QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Yes | QMessageBox::No,
    QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel};
// None, Exclamation, Critical.
constexpr std::array kIcons = {QMessageBox::NoIcon, QMessageBox::Warning, QMessageBox::Critical};

// A message box as the operating system has them: one with Yes and No only is left by its buttons and not
// otherwise. A key that is still held from before presses none.
class MessageBox : public QMessageBox {
 public:
  MessageBox(const DialogBox& box, QWidget* parent)
      : QMessageBox(kIcons[static_cast<std::size_t>(box.icon)], Words::Of(box.title), Words::Of(box.text),
                    kButtonsOf[static_cast<std::size_t>(box.kind)], parent),
        kind_(box.kind) {
    constexpr int kHeldBackMs = 1000;
    setTextFormat(Qt::PlainText);
    // Qt passes over a button that the box does not have.
    for (const StandardButton first : {Ok, Yes}) setDefaultButton(first);
    for (const auto& [word, button] : kButtons) {
      if (word == box.usual) setDefaultButton(button);
    }
    if (kind_ != DialogKind::YesNo) setEscapeButton(kind_ == DialogKind::Ok ? Ok : Cancel);
    installEventFilter(this);
    for (QAbstractButton* button : buttons()) button->installEventFilter(this);
    if (!box.byRadio) return;
    EnableButtons(false);
    QTimer::singleShot(kHeldBackMs, this, [this] {
      EnableButtons(true);
      defaultButton()->setFocus();
    });
  }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    const auto* key = event->type() == QEvent::KeyPress ? static_cast<QKeyEvent*>(event) : nullptr;
    if (key != nullptr && key->isAutoRepeat()) return true;
    const bool leaves = key != nullptr ? key->matches(QKeySequence::Cancel) : event->type() == QEvent::Close;
    if (!leaves || (kind_ != DialogKind::YesNo && defaultButton()->isEnabled())) return false;
    event->ignore();
    return true;
  }

 private:
  void EnableButtons(bool enabled) {
    for (QAbstractButton* button : buttons()) button->setEnabled(enabled);
  }

  const DialogKind kind_;
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
  dialog.setWindowTitle(Words::Of(box.title));
  dialog.setLabelText(Words::Of(box.text));
  dialog.setTextValue(ToQString(box.preset));
  for (QLabel* label : dialog.findChildren<QLabel*>()) label->setTextFormat(Qt::PlainText);
  dialog.resize(dialog.sizeHint().expandedTo(QSize(440, 0)));
  if (dialog.exec() != QDialog::Accepted) return {Word::Cancel};
  return {Word::Text, dialog.textValue().toStdString()};
}

DialogAnswer AskFile(const DialogBox& box, QWidget* parent) {
  QFileDialog dialog(parent, Words::Of(box.title), ToQString(box.folder));
  const bool open = box.kind == DialogKind::OpenFile;
  dialog.setAcceptMode(open ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
  dialog.setFileMode(open ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
  const bool report = box.defaultExtension == ".pdf";
  // A project that exists already is opened, never overwritten.
  dialog.setOption(QFileDialog::DontConfirmOverwrite, !report);
  dialog.setDefaultSuffix(ToQString(box.defaultExtension));
  dialog.setNameFilters({report ? Words::Of("PDF files (*.pdf)") : Words::Of("Quorvane projects (*.ini)"),
                         Words::Of("All files (*)")});
  if (!box.preset.empty()) dialog.selectFile(ToQString(box.preset));
  FitFileDialog(dialog);
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
