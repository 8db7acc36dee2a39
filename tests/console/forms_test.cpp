#include <gtest/gtest.h>

#include "tests/support/console_rig.h"
#include "tests/support/test_data.h"

namespace quorvane {
namespace {

// What the operator reads before anything has happened, and what can be used then.
TEST(Forms, AreReadyAsTheyWere) {
  ConsoleRig rig(true);
  rig.Load();
  std::string told;
  for (const Form* form : rig.program.door().AllForms().All()) {
    told += form->Name() + " " + form->Caption() + "\n";
    for (const Control& control : form->Controls()) {
      if (control.Name() == "lblBuiltWith") continue;  // the compiler of the day
      told += "  " + control.Name() + (control.Visible() ? "" : " hidden") +
              (control.Enabled() ? "" : " off") + " | " + control.Caption() + " | " + control.ToolTip();
      for (const std::string& item : control.Items()) told += " / " + item;
      told += "\n";
    }
  }
  ExpectGolden(TestData() + "/console/forms.golden", told);
}

}  // namespace
}  // namespace quorvane
