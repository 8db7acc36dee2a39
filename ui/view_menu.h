#pragma once

#include <QObject>
#include <string>

#include "forms/platform.h"
#include "ui/widgets/form_window.h"

class QMenu;

namespace quorvane {

// The console's menu "View", which concerns the windows alone: the scheme of colours, that of the desktop or
// one of ours. It is kept for the user, and dresses the program at once. Belongs to the console's window.
class ViewMenu : public QObject {
 public:
  ViewMenu(FormWindow& console, SettingsStore& settings);

  QMenu& Menu() { return *menu_; }

 private:
  QMenu* NewSchemes();
  void AskDesktop();
  void Dress();

  SettingsStore& settings_;
  QMenu* menu_;
  std::string chosen_;
  // What the desktop asks for: 1 dark, 2 light; 1 high contrast; 0 as its theme is.
  unsigned desktopColors_ = 0;
  unsigned desktopContrast_ = 0;
};

}  // namespace quorvane
