#pragma once

#include <QWidget>
#include <functional>
#include <memory>

#include "forms/door.h"
#include "ui/widgets/form_design.h"

namespace quorvane {

// The widget that shows one control. It says what the control says and nothing else: an action of the
// operator is handed to the door, and the widget then shows what has become of the control. Lives as long as
// its form's view; the widget belongs to its parent.
class ControlView {
 public:
  // Null for a control that is no widget (timers, menu entries).
  static std::unique_ptr<ControlView> Create(Control& control, const Place& place, Door& door,
                                             QWidget* parent);

  ControlView(Control& control, const Place& place, Door& door);
  virtual ~ControlView() = default;
  ControlView(const ControlView&) = delete;
  ControlView& operator=(const ControlView&) = delete;

  Control& Of() const { return control_; }
  const Place& Design() const { return place_; }
  virtual QWidget* Widget() const = 0;

  // Notes that a property has changed; Apply shows it.
  void Changed(Property property) { dirty_ |= Bit(property); }
  bool IsDirty() const { return dirty_ != 0; }
  // Returns whether where it stands may have changed too.
  bool Apply();

  // The font in pixels at the present size, and the least that text may shrink to.
  virtual void SetFontPixels(double pixels, double leastPixels);
  // The widest caption in the row of this control, and the least width there.
  virtual void SetRow(const QString& /*widest*/, int /*width*/) {}

  // Hands an action on this control to the door and shows its outcome. What is being typed elsewhere counts
  // before a click or a choice.
  void Act(EventKind kind, std::string text = {}, int number = 0);

  // Called when the operator has finished with a text box and the focus should leave it.
  std::function<void()> onFinished;
  // Called before the widget loses the focus because it is disabled or hidden.
  std::function<void()> onFocusLost;
  QString spokenPrefix;

 protected:
  virtual void Show(Property property) = 0;  // all but Enabled and Visible
  virtual void SetUsable(bool usable) { Widget()->setEnabled(usable); }
  void Speak(const QString& caption);  // sets the accessible name
  QColor Back() const;
  QColor Fore() const;
  bool Painted() const { return control_.BackColor() != kButtonFace; }
  void SetPaletteColors(QPalette::ColorRole back, QPalette::ColorRole fore);

 private:
  static constexpr unsigned Bit(Property property) { return 1U << static_cast<unsigned>(property); }
  void ShowEnabled();
  void ShowVisible();

  Control& control_;
  const Place place_;
  Door& door_;
  unsigned dirty_ = ~0U;
};

// Whether that widget takes typed text.
bool IsTextField(const QWidget* widget);

// A number that is being typed into a box that waits for its end counts now.
void FinishTyping();

}  // namespace quorvane
