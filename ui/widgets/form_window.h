#pragma once

#include <QLabel>
#include <QWidget>
#include <optional>

#include "ui/widgets/form_view.h"
#include "ui/widgets/menu_view.h"
#include "ui/window_place.h"

namespace quorvane {

// A window of its own with one form in it. Shown and hidden, and closed, only as the form says.
class FormWindow : public QWidget {
 public:
  FormWindow(Form& form, FormDesign design, Door& door, QSize minimum, QWidget* owner = nullptr);

  Form& Of() const { return view_->Of(); }
  FormView& View() const { return *view_; }
  MenuView* Menu() const { return menu_; }
  // Notes that one of the form's menu entries has changed; Follow shows it.
  void MenuChanged() { menuChanged_ = true; }
  // Shows the form's caption, and the window exactly while the form is visible.
  void Follow();
  // Above the others and with the keyboard.
  void Activate() { place_->BringForward(); }
  // The form is now designed that wide, at the same scale; the window follows.
  void SetDesignWidth(int width);
  // Whether it opens where the operator has left it, and not where the program would put it.
  bool Remembered() const { return remembered_.value_or(false); }
  // After the program has moved it.
  void KeepOnScreen() { place_->KeepOnScreen(); }

 protected:
  bool event(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  Door& door_;
  FormView* view_;
  MenuView* menu_;
  bool menuChanged_ = true;
  QLabel* statusTip_;  // over the lower edge, while a menu has something to tell of its entry
  WindowPlace* place_;
  std::optional<bool> remembered_;  // once it has got its first place
};

}  // namespace quorvane
