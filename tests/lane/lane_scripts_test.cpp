// Lanes that are flown, judged, saved and loaded step by step, and what is kept and shown after each.

#include <gtest/gtest.h>

#include <optional>

#include "tests/lane/lane_fixture.h"
#include "tests/support/script.h"
#include "tests/support/test_data.h"

namespace quorvane {
namespace {

// What a line of steps has changed, one item a line.
std::string Played(LaneRig& rig, const std::string& steps) {
  const auto before = rig.Look();
  std::string told;
  try {
    rig.Play(steps);
  } catch (const RunTimeError& error) {
    told = std::string("  refused: ") + error.what() + "\n";
  }
  told += std::exchange(rig.owner.calls, {});
  const auto after = rig.Look();
  for (const auto& [name, text] : after) {
    const auto was = before.find(name);
    if (was == before.end() || was->second != text) told += "  " + name + ": " + text + "\n";
  }
  for (const auto& [name, text] : before) {
    if (!after.contains(name)) told += "  " + name + " is gone\n";
  }
  if (steps == "save1" || steps == "keep") {
    for (const auto& [key, value] : rig.owner.values) told += "  " + key.second + "=" + value + "\n";
  }
  return told;
}

class LaneScripts : public testing::TestWithParam<const char*> {};

TEST_P(LaneScripts, DoWhatTheySay) {
  std::optional<LaneRig> rig;
  PlayScript(
      TestData() + "/lane/" + GetParam() + ".txt", [&](const std::string&) { rig.emplace(); },
      [&](const std::string& line) { return Played(*rig, line); });
}

INSTANTIATE_TEST_SUITE_P(All, LaneScripts,
                         testing::Values("laps", "corrections", "cuts", "finish", "records"));

}  // namespace
}  // namespace quorvane
