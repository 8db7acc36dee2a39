#include "ui/manual.h"

#include <QApplication>
#include <QDesktopServices>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMessageBox>
#include <QUrl>
#include <map>
#include <utility>

#include "ui/printing/preview_window.h"
#include "ui/results_window.h"
#include "ui/scoreboard.h"
#include "ui/words.h"

namespace quorvane {
namespace {

// What a box asks is told with the window that it belongs to. Empty: with none.
QString PageOf(const QWidget* window) {
  static const std::map<std::string, const char*> kPages = {{"frmSerialPort", "link"},
                                                            {"frmPractice", "practice"},
                                                            {"frmLog", "laps-and-cuts"},
                                                            {"frmKeyboard", "keys"},
                                                            {"frmAbout", "index"},
                                                            {"frmJudge", "console"},
                                                            {"frmFirstStart", "first-contest"},
                                                            {"frmPrinterSetup", "printing"}};
  for (; window != nullptr; window = window->parentWidget()) {
    const auto* form = dynamic_cast<const FormWindow*>(window);
    const auto page = kPages.find(form != nullptr ? form->Of().Name() : window->objectName().toStdString());
    if (page != kPages.end()) return QString::fromLatin1(page->second);
    if (dynamic_cast<const ResultsWindow*>(window) != nullptr) return QStringLiteral("results");
    if (dynamic_cast<const Scoreboard*>(window) != nullptr) return QStringLiteral("scoreboard");
    if (const auto* preview = dynamic_cast<const PreviewWindow*>(window)) {
      const bool protest = preview->Shown() == Report::Protest;
      return protest ? QStringLiteral("protests") : QStringLiteral("printing");
    }
  }
  return {};
}

}  // namespace

Manual::Manual(Program& program, QString folder, Show show)
    : program_(program), folder_(std::move(folder)), show_(std::move(show)) {
  program_.judge().mnuManual.onClick = [this] { Open(QStringLiteral("index")); };
  qApp->installEventFilter(this);
}

// A shortcut belongs to one window, and is dead while that is not shown yet or a modal box is open.
bool Manual::eventFilter(QObject*, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return false;
  const auto& press = *static_cast<QKeyEvent*>(event);
  if (press.key() != Qt::Key_F1 || press.modifiers() != Qt::ControlModifier) return false;
  const QWidget* modal = QApplication::activeModalWidget();
  if (!press.isAutoRepeat()) OpenFor(modal != nullptr ? modal : QApplication::activeWindow());
  return true;
}

void Manual::OpenFor(const QWidget* window) {
  const bool begins = !program_.judge().Visible();  // the questions of the start
  const QString page = PageOf(window);
  Open(page.isEmpty() ? QString::fromLatin1(begins ? "first-contest" : "console") : page);
}

QString Manual::Installed() {
  return SharedFolder(QStringLiteral("doc/quorvane/manual"));
}

bool Manual::InBrowser(const QString& file) {
  return QDesktopServices::openUrl(QUrl::fromLocalFile(file));
}

void Manual::Open(const QString& page) {
  const QString file = folder_ + QLatin1Char('/') + page + QStringLiteral(".html");
  const bool there = QFileInfo::exists(file);
  if (there && show_(file)) return;
  Tell(there ? "No program shows web pages. The manual is " + file.toStdString()
             : "The manual is not installed: " + folder_.toStdString());
}

// No box over the console: it would take the keys from the hands that judge.
void Manual::Tell(const std::string& trouble) {
  if (program_.judge().Visible()) {
    return program_.door().Post([this, trouble] { program_.judge().ShowNotice(trouble); });
  }
  auto* box = new QMessageBox(QMessageBox::Information, Words::Of("Manual"), Words::Of(trouble),
                              QMessageBox::Ok, QApplication::activeWindow());
  box->setTextFormat(Qt::PlainText);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->open();
}

}  // namespace quorvane
