#pragma once

#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <functional>
#include <map>
#include <memory>
#include <unordered_set>
#include <vector>

#include "ui/widgets/form_window.h"

class QWindow;

namespace quorvane {

// All windows of the program. Told of every change of a control, it shows the changes together when an event
// has ended, when the race logic wants them painted, and before a dialog box opens.
class Windows : public QObject, public ControlObserver {
 public:
  explicit Windows(Door& door);
  ~Windows() override;

  FormWindow& AddWindow(Form& form, FormDesign design, QSize minimum, QWidget* owner = nullptr);
  // Shows a form inside another one, where the named control of that one stands.
  void AddPanel(Form& form, FormDesign design, FormView& into, const std::string& place,
                const QString& spoken);

  // The same when the form is first shown, or its window asked for.
  void AddLater(const Form& form, std::function<void()> add) { later_[&form] = std::move(add); }

  FormWindow* FindWindow(const Form& form);
  FormView* FindView(const Form& form);
  // The window that a dialog box belongs to; null while none is shown.
  QWidget* DialogParent();

  void Apply();
  // Shows the changes and paints them now, unless it has just done so; nothing else happens meanwhile.
  void Paint();
  void BringForward(const Form& form);

  void ControlChanged(const Control& control, Property property) override;
  void FormChanged(const Form& form) override { dirty_.insert(&form); }

  // The operator has come from one window of this program to another one.
  void FocusMoved(QWindow* window);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void FollowActive();
  void Expect(const FormWindow& window);

  Door& door_;
  std::vector<std::unique_ptr<FormWindow>> windows_;
  QHash<const Form*, FormView*> views_;
  std::map<const Form*, std::function<void()>> later_;
  std::unordered_set<const Form*> dirty_;
  const Form* active_ = nullptr;   // as last seen
  FormWindow* focused_ = nullptr;  // the window that had the focus last, null when it was not one of ours
  // Brought forward by the program, not by the operator, since his last key or click. The desktop may move
  // the focus to and fro between several that open together.
  std::unordered_set<const FormWindow*> expected_;
  QElapsedTimer expectedSince_;
  QElapsedTimer focusLost_;  // since no window of this program has had it
  QElapsedTimer painted_;    // since the last Paint
};

}  // namespace quorvane
