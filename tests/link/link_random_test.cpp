#include <cstdlib>
#include <random>

#include "common/run_time_error.h"
#include "tests/link/link_fixture.h"

namespace quorvane {
namespace {

using testing_frames::Frame;

// Anything may come at any time: whatever it is, the link knows whether its port is open, and a good frame is
// heard afterwards.
class LinkRandomTest : public LinkTest {
 protected:
  int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
  Bytes Noise(int count) {
    Bytes bytes(static_cast<std::size_t>(count));
    for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random_());
    return bytes;
  }
  void RxFrame() {
    Bytes frame = Noise(36);
    frame[0] = 0x55;
    frame[1] = 0xAA;
    if (Below(2) == 0) frame[5] = static_cast<std::uint8_t>(Below(8));
    frame[2] = static_cast<std::uint8_t>(testing_frames::Check(frame) ^ (Below(10) == 0 ? 1 : 0));
    Rx(frame);
  }
  void ClickSomething() {
    std::vector<std::string> names;
    for (const Control& control : link.Controls()) names.push_back(control.Name());
    Click(names[static_cast<std::size_t>(Below(static_cast<int>(names.size())))]);
  }

  const std::vector<std::function<void()>> rare_ = {
      [&] { Activate(); },
      [&] {
        Ports(Below(2) == 0 ? std::vector{3} : std::vector{3, 5});
      },
      [&] {
        serial.busy[5] = {5, "Busy"};
      },
      [&] { serial.busy.clear(); },
      [&] { Line(1000 + Below(15)); },
      [&] { Close(); },
      [&] { door.AllForms().Show(link); },
      [&] { state.RaceActive = !state.RaceActive; },
      [&] { ClickSomething(); },
      [&] { RunUntil(platform.ClockMs() + Below(5000)); },
      [&] { Rx(Noise(Below(100))); }};
  std::mt19937 random_;
};

TEST_F(LinkRandomTest, SurvivesAnything) {
  race.onFrame = [&](const StationMessage& frame) {
    if (frame.Strt == 7) throw OverflowError();
    if (frame.Strt == 8) link.SendMessage(3, 4);
    if (frame.Strt == 9) door.Ask({DialogKind::OkCancel, "", ""});
  };
  platform.whileOpen = [&](const DialogBox&) {
    if (Below(2) == 0) RxFrame();
    if (Below(4) == 0) ClickSomething();
    if (Below(4) == 0) RunUntil(platform.ClockMs() + 2001);
  };
  const int steps = std::getenv("QUORVANE_LONG") != nullptr ? 1500000 : 20000;
  for (int i = 0; i < steps; ++i) {
    platform.answers.assign(1, {static_cast<DialogAnswer::Word>(Below(6)), {}});
    platform.shown.clear();
    serial.sent.clear();
    race.frames.clear();
    const auto choice = static_cast<std::size_t>(Below(40));
    choice < rare_.size() ? rare_[choice]() : RxFrame();
    ASSERT_EQ(state.CommActive, serial.PortOpen()) << "step " << i;
  }
  Ports({3, 5});
  serial.busy.clear();
  door.AllForms().Show(link);
  Click("optPort(1)");
  Rx(Bytes(72, 0));
  race.frames.clear();
  Rx(Frame(254, 1));
  EXPECT_EQ(race.frames.size(), 1U);
}

}  // namespace
}  // namespace quorvane
