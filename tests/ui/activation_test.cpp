#include <QWindow>

#include "tests/ui/ui_fixture.h"

namespace quorvane {
namespace {

// Two forms in windows of their own, told where the focus goes as the desktop would.
class ActivationTest : public UiTest {
 protected:
  ActivationTest() {
    FormDesign design;
    design.width = design.height = 100;
    for (Form* each : {static_cast<Form*>(&form), static_cast<Form*>(&other)}) {
      windows.AddWindow(*each, design, QSize(50, 50));
      each->SetVisible(true);
    }
    windows.Apply();
    OperatorActs();
    FocusOn(form);
    form.activated = other.activated = 0;
  }
  void OperatorActs() {
    Settle();  // what the platform itself tells of the focus
    Press(windows.FindWindow(form), Qt::Key_Space);
  }
  void FocusOn(const Form& at) { windows.FocusMoved(windows.FindWindow(at)->windowHandle()); }
  int Activations() {
    const int count = form.activated + other.activated;
    form.activated = other.activated = 0;
    return count;
  }

  MadeUpForm other{door.AllForms(), "frmOther"};
  Windows windows{door};
};

TEST_F(ActivationTest, OnlyComingFromAnotherFormActivates) {
  FocusOn(other);
  EXPECT_EQ(other.activated, 1);
  EXPECT_EQ(Activations(), 1);
  FocusOn(other);
  EXPECT_EQ(Activations(), 0);

  QWindow dialog;
  windows.FocusMoved(&dialog);
  FocusOn(other);
  EXPECT_EQ(Activations(), 0);
  windows.FocusMoved(&dialog);
  FocusOn(form);
  EXPECT_EQ(Activations(), 0);

  windows.FocusMoved(nullptr);  // another program's window
  WaitFor([] { return false; }, 200);
  FocusOn(other);
  EXPECT_EQ(Activations(), 0);

  windows.FocusMoved(nullptr);  // merely on the way
  FocusOn(form);
  EXPECT_EQ(Activations(), 1);
}

// However often the desktop moves the focus between windows that open together.
TEST_F(ActivationTest, FormThatTheProgramShowsIsActivatedOnce) {
  door.AllForms().Show(form);
  windows.Apply();
  door.AllForms().Show(other);
  windows.Apply();
  for (const Form* at : {&other, &form, &other}) FocusOn(*at);
  EXPECT_EQ(other.activated, 1);
  OperatorActs();
  FocusOn(form);
  FocusOn(other);
  EXPECT_EQ(other.activated, 2);
}

}  // namespace
}  // namespace quorvane
