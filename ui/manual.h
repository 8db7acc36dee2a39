#pragma once

#include <QObject>
#include <QString>
#include <functional>

#include "ui/program_windows.h"

namespace quorvane {

// The manual in the desktop's browser: Help > Manual opens its first page, Ctrl+F1 that of the window in
// hand, also of a box or of a form before the console. Where it is not installed the notice line says so.
class Manual : public QObject {
 public:
  using Show = std::function<bool(const QString& file)>;  // false: it cannot be shown

  // The folder has an HTML file for each page.
  explicit Manual(Program& program, QString folder = Installed(), Show show = InBrowser);

  void OpenFor(const QWidget* window);

  static QString Installed();  // where it lies beside the program, in the build's folder too
  static bool InBrowser(const QString& file);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Open(const QString& page);
  void Tell(const std::string& trouble);

  Program& program_;
  const QString folder_;
  const Show show_;
};

}  // namespace quorvane
