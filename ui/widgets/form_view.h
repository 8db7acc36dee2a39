#pragma once

#include <QFont>
#include <QHash>
#include <QWidget>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "forms/door.h"
#include "ui/widgets/control_view.h"
#include "ui/widgets/form_design.h"

class QLabel;

namespace quorvane {

// The inside of a form: a widget for each of its controls, placed by the form's design at any size, never by
// an earlier size. Other forms can be embedded in it. Outlived by its form.
class FormView : public QWidget {
 public:
  // `spoken` stands before the accessible name of every control ("Lane 1 ").
  FormView(Form& form, FormDesign design, Door& door, QWidget* parent, const QString& spoken = {});

  Form& Of() const { return form_; }
  const FormDesign& Design() const { return design_; }
  // Null for null, and what the design does not place. Makes the widget of one that has not been shown yet.
  ControlView* Find(const Control* control);
  QWidget* FindWidget(const std::string& name);
  void Changed(const Control& control, Property property);

  // Shows everything of the form that has changed.
  void Apply();

  // Puts another form where the named control of this one stands.
  void Embed(FormView& panel, const std::string& name);
  void SetDesignWidth(int width);
  int DesignWidth() const { return designWidth_; }

  // The focus goes to a place where a key does no harm.
  void FocusHome();
  // The same for a form that has just been shown, or to its option that is ticked.
  void FocusFirst();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  bool event(QEvent* event) override;
  // A panel has no menu bar: its menu entries are offered where the operator asks for them.
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  using Stacks = std::map<const ControlView*, std::vector<ControlView*>>;  // cell -> its marks

  struct Unseen {
    Control* control;
    const Place* place;
    bool operator==(const Unseen&) const = default;
  };

  ControlView& Make(Unseen unseen);
  void MakeShown();
  void Arrange(ControlView& view);
  void AddText(const StaticText& text);
  QRect Scaled(const QRect& design) const;  // in the form as it is
  QFont Letters(double points, LookFlags look) const;
  void Arrange();
  QRect RoomOf(const Place& place) const;
  void Put(ControlView& view, const QRect& at);
  void FitRow();
  std::vector<QRect> Standing() const;
  QRect ColumnUnder(const ControlView& cell) const;
  QRect RoomUnder(const ControlView& cell, const Stacks& stacks, int wanted) const;
  void PlaceStacks();
  void PlaceAnchored();

  Form& form_;
  const FormDesign design_;
  Door& door_;
  const QString spoken_;
  int designWidth_;
  bool arranged_ = false;
  FormView* around_ = nullptr;                       // the form that this one is embedded in
  std::vector<std::unique_ptr<ControlView>> views_;  // in the order of the design
  // What has never been shown has no widget: a lane has forty marks, and most races need none of them.
  std::vector<Unseen> unseen_;
  QHash<const Control*, ControlView*> byControl_;
  std::vector<ControlView*> row_;  // of Look::Row
  struct RowFit {
    QFont full = {};                  // as designed
    QHash<QString, int> widths = {};  // of captions in it
    QString widest = {};
    int width = -1;  // that each has
    QFont fitted = {};
  };
  RowFit fit_;
  std::vector<std::pair<const StaticText*, QLabel*>> texts_;
  std::vector<std::pair<FormView*, QRect>> panels_;  // embedded here, and where
};

inline constexpr int kLeastMarkRow = 16;  // holds a line of the smallest text

// Shares the room among that many marks: one under the other while they fit, then in columns side by side. A
// mark of two lines is twice as high where there is room.
std::vector<QRect> StackCells(int count, const QRect& room, int lines = 1);

// Where a pop-up of that size stands next to the mark: on its right, or on its left where the form ends.
QRect BesideMark(const QRect& mark, const QSize& popUp, const QSize& form);

}  // namespace quorvane
