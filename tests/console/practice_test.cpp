#include "console/practice.h"

#include <fmt/ranges.h>
#include <gtest/gtest.h>

#include "console/first_start.h"
#include "tests/support/console_rig.h"

namespace quorvane {
namespace {

TEST(Practice, BecomesOptionsOfTheSimulatedField) {
  const std::string always = "--heats 0 --pause 15000 --mode ";
  const std::pair<PracticeOptions, std::string> cases[] = {
      {{}, "2"},
      {{.mode = 0}, "all"},
      {{.mode = 5, .radio = PracticeOptions::Radio::kBad}, "5 --noise 0.2 --loss 0.08 --damage 0.08"},
      {{.silentJudge = true, .starterRestarts = true, .lostTimers = true},
       "2 --silent P2@75000 --silent TM@95000 --restart 85000"}};
  for (const auto& [options, arguments] : cases) {
    EXPECT_EQ(fmt::format("{}", fmt::join(FieldArguments(options), " ")), always + arguments);
  }
}

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
