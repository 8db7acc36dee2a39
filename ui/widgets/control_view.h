#pragma once

#include <QWidget>
#include <functional>
#include <memory>

#include "forms/door.h"
#include "ui/widgets/form_design.h"

class QKeyEvent;

namespace quorvane {

// The widget that shows one control. An action of the operator is handed to the door, and the widget then
// shows what has become of the control. Lives as long as its form's view; the widget belongs to its parent.
class ControlView : public QObject {
 public:
  struct Part {
    Control& control;
    const Place& place;
    Door& door;
    QWidget* parent;
  };
  // The control must be one that is shown as a widget, no timer or menu entry.
  static std::unique_ptr<ControlView> Create(const Part& part);

  // The palette's roles that the control's colours go to.
  struct Roles {
    QPalette::ColorRole back = QPalette::Base;
    QPalette::ColorRole fore = QPalette::Text;
  };
  ControlView(const Part& part, QWidget* widget, Roles roles);

  Control& Of() const { return part_.control; }
  const Place& Design() const { return part_.place; }
  bool Looks(LookFlags look) const { return part_.place.look.testAnyFlags(look); }
  QWidget* Widget() const { return widget_; }

  // Notes that a property has changed; Apply shows it.
  void Changed(Property property) { dirty_ |= Bit(property); }
  bool IsDirty() const { return dirty_ != 0; }
  // Another scheme of colours.
  void Recolor() { dirty_ |= Bit(Property::BackColor); }
  // Returns whether where it stands may have changed too.
  bool Apply();

  // Hands an action to the door and shows its outcome. A click or a choice first ends typing elsewhere.
  void Act(EventKind kind, std::string text = {}, int number = 0);

  // Called when the focus should leave: a text box is done with, or the widget goes grey or out of sight.
  std::function<void()> leave;
  QString spokenPrefix;
  std::string tip;  // what it is for; told while the control itself has nothing to tell
  QRect at;         // in the form's design; another one than designed for what is anchored

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

  virtual void Show(Property property) = 0;  // caption, text, value, items, entry of the list
  virtual void SetColors(const QColor& back, const QColor& fore);
  QString Caption() const;  // in the operator's language
  bool Painted() const { return Of().BackColor() != kButtonFace; }
  bool IsRedAlone() const { return Looks(Look::RedLine) && Of().ForeColor() == kRed; }

 private:
  static constexpr unsigned Bit(Property property) { return 1U << static_cast<unsigned>(property); }
  void Speak();
  QColor Back() const;
  void SetUsable(bool usable);
  void SelectOnArrival();
  bool TakesKey(const QKeyEvent& press);

  const Part part_;
  QWidget* const widget_;
  const Roles roles_;
  unsigned dirty_ = ~0U;
  bool arrived_ = false;  // a text box has got the focus, and its text is still to be selected
};

// Whether that widget takes typed text.
bool IsTextField(const QWidget* widget);

// A number that is being typed into a box that waits for its end counts now.
void FinishTyping();

}  // namespace quorvane
