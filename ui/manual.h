#pragma once

#include <QString>
#include <functional>

#include "ui/program_windows.h"

namespace quorvane {

// The manual, shown by the browser of the desktop: Help > Manual opens its first page, Ctrl+F1 that of the
// window in hand. Where it is not installed the console's notice line says so.
class Manual {
 public:
  using Show = std::function<bool(const QString& file)>;  // false: it cannot be shown

  // The folder has an HTML file for each page.
  Manual(Program& program, ProgramWindows& windows, QString folder = Installed(), Show show = InBrowser);

  static QString Installed();  // where it lies beside the program, in the build's folder too
  static bool InBrowser(const QString& file);

 private:
  void Open(const QString& page);

  Program& program_;
  const QString folder_;
  const Show show_;
};

}  // namespace quorvane
