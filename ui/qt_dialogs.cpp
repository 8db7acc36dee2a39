#include "ui/qt_dialogs.h"

#include <QAbstractButton>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>

#include "ui/look.h"

namespace quorvane {
namespace {

using Word = DialogAnswer::Word;

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

// What a box answers that is closed without a button.
QMessageBox::StandardButton EscapeOf(DialogKind kind) {
  if (kind == DialogKind::Ok) return QMessageBox::Ok;
  return kind == DialogKind::YesNo ? QMessageBox::No : QMessageBox::Cancel;
}

QMessageBox::Icon IconOf(DialogIcon icon) {
  if (icon == DialogIcon::Exclamation) return QMessageBox::Warning;
  return icon == DialogIcon::Critical ? QMessageBox::Critical : QMessageBox::NoIcon;
}

DialogAnswer AskMessage(const DialogBox& box, QWidget* parent) {
  QMessageBox dialog(parent);
  dialog.setWindowTitle(ToQString(box.title));
  dialog.setTextFormat(Qt::PlainText);
  dialog.setText(ToQString(box.text));
  dialog.setIcon(IconOf(box.icon));
  const QMessageBox::StandardButtons buttons = ButtonsOf(box.kind);
  dialog.setStandardButtons(buttons);
  dialog.setDefaultButton(buttons.testFlag(QMessageBox::Yes) ? QMessageBox::Yes : QMessageBox::Ok);
  dialog.setEscapeButton(EscapeOf(box.kind));
  switch (dialog.exec()) {
    case QMessageBox::Ok:
      return {Word::Ok};
    case QMessageBox::Yes:
      return {Word::Yes};
    case QMessageBox::No:
      return {Word::No};
    default:
      return {Word::Cancel};
  }
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
