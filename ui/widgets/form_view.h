#pragma once

#include <QWidget>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "forms/door.h"
#include "ui/widgets/control_view.h"
#include "ui/widgets/form_design.h"
#include "ui/widgets/form_scaler.h"

namespace quorvane {

// The inside of a form: a widget for each of its controls, placed by the form's design at any size. Other
// forms can be embedded in it. Outlived by its form.
class FormView : public QWidget {
 public:
  // `spoken` stands before the accessible name of every control ("Lane 1 ").
  FormView(Form& form, FormDesign design, Door& door, QWidget* parent, const QString& spoken = {});
  ~FormView() override;

  Form& Of() const { return form_; }
  const FormDesign& Design() const { return design_; }
  ControlView* Find(const Control& control) const;
  QWidget* FindWidget(const std::string& name) const;

  // Shows everything of the form that has changed.
  void Apply();

  // Puts another form where the named control of this one stands.
  void Embed(FormView& panel, const std::string& name);
  void SetDesignWidth(int width);
  int DesignWidth() const { return scaler_.DesignWidth(); }

  // The focus goes to a place where a key does no harm.
  void FocusHome();
  // The same for a form that has just been shown, or to its option that is ticked.
  void FocusFirst();

  std::vector<QWidget*> TabChain() const;
  // Controls that the design forgets; they are not shown.
  const std::vector<std::string>& Unplaced() const { return unplaced_; }

 protected:
  void resizeEvent(QResizeEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Text {
    StaticText design;
    QWidget* label;
  };
  struct Panel {
    FormView* view;
    clsRect rect;
  };

  void AddControl(Control& control, const QString& spoken);
  void AddText(const StaticText& text);
  void Watch(ControlView& view);
  void Arrange();
  void ArrangeView(ControlView& view);
  void PlaceAnchored();
  void PlaceStacks();
  void SetScaled(ControlView& view, const clsRect& rect);
  clsRect RoomUnder(const clsRect& anchor) const;
  bool TextShown(const StaticText& text) const;
  void FitRow();
  using Stacks = std::map<const Control*, std::vector<ControlView*>>;
  bool IsFree(const clsRect& room, const Control& anchor, const Stacks& stacks) const;
  ControlView* HoverFrame(ControlView& view) const;
  void TellArrival();

  Form& form_;
  const FormDesign design_;
  Door& door_;
  FormScaler scaler_;
  std::vector<std::unique_ptr<ControlView>> views_;
  std::unordered_map<const Control*, ControlView*> byControl_;
  std::unordered_map<const QObject*, ControlView*> byWidget_;
  std::unordered_map<const ControlView*, clsRect> anchoredAt_;  // in the design
  ControlView* arrived_ = nullptr;                              // has got the focus and has not been told yet
  std::vector<ControlView*> row_;                               // of Look::Row
  std::vector<Text> texts_;
  std::vector<Panel> panels_;
  std::vector<std::string> unplaced_;
};

}  // namespace quorvane
