#include "ui/manual.h"

#include <QApplication>
#include <QDesktopServices>
#include <QFileInfo>
#include <QShortcut>
#include <QUrl>
#include <map>
#include <utility>

#include "ui/printing/preview_window.h"
#include "ui/results_window.h"
#include "ui/scoreboard.h"

namespace quorvane {
namespace {

// What a box asks is told with the window that it belongs to.
QString PageOf(const QWidget* window) {
  static const std::map<std::string, const char*> kPages = {{"frmSerialPort", "link"},
                                                            {"frmPractice", "practice"},
                                                            {"frmLog", "laps-and-cuts"},
                                                            {"frmKeyboard", "keys"},
                                                            {"frmAbout", "index"}};
  for (; window != nullptr; window = window->parentWidget()) {
    if (const auto* form = dynamic_cast<const FormWindow*>(window)) {
      const auto page = kPages.find(form->Of().Name());
      return QString::fromLatin1(page == kPages.end() ? "console" : page->second);
    }
    if (dynamic_cast<const ResultsWindow*>(window) != nullptr) return QStringLiteral("results");
    if (dynamic_cast<const Scoreboard*>(window) != nullptr) return QStringLiteral("scoreboard");
    if (const auto* preview = dynamic_cast<const PreviewWindow*>(window)) {
      const bool protest = preview->Shown() == Report::Protest;
      return protest ? QStringLiteral("protests") : QStringLiteral("printing");
    }
  }
  return QStringLiteral("console");
}

}  // namespace

Manual::Manual(Program& program, ProgramWindows& windows, QString folder, Show show)
    : program_(program), folder_(std::move(folder)), show_(std::move(show)) {
  program_.judge().mnuManual.onClick = [this] { Open(QStringLiteral("index")); };
  auto* keys = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_F1), &windows.Console());
  keys->setContext(Qt::ApplicationShortcut);
  keys->setAutoRepeat(false);
  QObject::connect(keys, &QShortcut::activated, [this] { Open(PageOf(QApplication::activeWindow())); });
}

QString Manual::Installed() {
  return SharedFolder(QStringLiteral("doc/quorvane/manual"));
}

bool Manual::InBrowser(const QString& file) {
  return QDesktopServices::openUrl(QUrl::fromLocalFile(file));
}

// No box: it would take the keys from the hands that judge.
void Manual::Open(const QString& page) {
  const QString file = folder_ + QLatin1Char('/') + page + QStringLiteral(".html");
  const bool there = QFileInfo::exists(file);
  if (there && show_(file)) return;
  const std::string notice = there ? "No program shows web pages. The manual is " + file.toStdString()
                                   : "The manual is not installed: " + folder_.toStdString();
  program_.door().Post([this, notice] { program_.judge().ShowNotice(notice); });
}

}  // namespace quorvane
