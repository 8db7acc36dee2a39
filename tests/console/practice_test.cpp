#include <gtest/gtest.h>

#include "console/first_start.h"
#include "tests/support/console_rig.h"

namespace quorvane {
namespace {

struct NotedField : PracticeField {
  void Start(const PracticeOptions&) override { running = true; }
  bool running = false;
};

TEST(Practice, BeginsByItselfAfterAFirstStartThatAskedForItAndOnlyThen) {
  ConsoleRig rig;
  NotedField field;
  rig.judge().SetPracticeField(&field);
  ASSERT_EQ(
      PrepareFirstStart({.eventName = "Reno", .project = rig.file, .radio = FirstAnswers::Radio::kPractice},
                        rig.platform.settings),
      "");
  rig.judge().SetStartupProject(rig.file);
  rig.program.door().Enter({EventKind::Load});
  EXPECT_TRUE(rig.platform.shown.empty()) << rig.LastBox();
  EXPECT_TRUE(rig.judge().Practising() && field.running && rig.judge().Practice().Visible());
  rig.Click("frmPractice.cmdEnd");
  EXPECT_EQ(rig.judge().EventName(), "Reno");
  EXPECT_FALSE(TakePracticeAtStart(rig.platform.settings));
  rig.judge().SetPracticeField(nullptr);
}

}  // namespace
}  // namespace quorvane
