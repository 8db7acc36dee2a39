#include <cstdlib>
#include <random>

#include "common/run_time_error.h"
#include "tests/link/link_fixture.h"

namespace quorvane {
namespace {

using testing_frames::Frame;

// Anything may come at any time: whatever it is, the link goes on and a good frame is heard afterwards.
class LinkRandomTest : public LinkTest {
 protected:
  int Below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random_); }

  Bytes Noise(int count) {
    Bytes bytes(static_cast<std::size_t>(count));
    for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(Below(256));
    return bytes;
  }

  Bytes RandomFrame() {
    Bytes frame = Noise(36);
    frame[0] = 0x55;
    frame[1] = 0xAA;
    if (Below(2) == 0) frame[5] = static_cast<std::uint8_t>(Below(8));
    frame[2] = static_cast<std::uint8_t>(testing_frames::Check(frame) ^ (Below(10) == 0 ? 1 : 0));
    return frame;
  }

  void ClickSomething() {
    std::vector<const Control*> targets;
    for (const Control& control : link.Controls()) targets.push_back(&control);
    Click(targets[static_cast<std::size_t>(Below(static_cast<int>(targets.size())))]->Name());
  }

  void Step() {
    switch (Below(40)) {
      case 0:
        Activate();
        break;
      case 1:
        Ports(Below(2) == 0 ? std::vector<int>{3} : std::vector<int>{3, 5});
        break;
      case 2:
        serial.busy =
            Below(2) == 0 ? std::map<int, SerialError>{} : std::map<int, SerialError>{{5, {5, "Busy"}}};
        break;
      case 3:
        Line(1000 + Below(15));
        break;
      case 4:
        Enter(EventKind::Close, "frmSerialPort");
        break;
      case 5:
        door.AllForms().Show(link);
        break;
      case 6:
        state.RaceActive = !state.RaceActive;
        break;
      case 7:
      case 8:
        ClickSomething();
        break;
      case 9:
        RunUntil(platform.ClockMs() + Below(5000));
        break;
      case 10:
        Rx(Noise(Below(100)));
        break;
      default:
        Rx(RandomFrame());
        break;
    }
  }

  std::mt19937 random_;
};

TEST_F(LinkRandomTest, SurvivesAnything) {
  EnterLoad();
  race.onFrame = [&](const StationMessage& frame) {
    if (frame.Strt == 7) throw OverflowError();
    if (frame.Strt == 8) link.SendMessage(3, 4);
    if (frame.Strt == 9) door.Ask({DialogKind::OkCancel, "", ""});
    if (race.frames.size() > 1000) race.frames.clear();
  };
  platform.whileOpen = [&](const DialogBox&) {
    if (Below(2) == 0) Rx(RandomFrame());
    if (Below(4) == 0) ClickSomething();
    if (Below(4) == 0) RunUntil(platform.ClockMs() + 2001);
  };
  const int steps = std::getenv("QUORVANE_LONG") != nullptr ? 1500000 : 20000;
  for (int i = 0; i < steps; ++i) {
    if (Below(2) == 0) Answer(static_cast<DialogAnswer::Word>(Below(6)));
    if (platform.answers.size() > 10) platform.answers.clear();
    if (platform.shown.size() > 100) platform.shown.clear();
    if (serial.sent.size() > 100) serial.sent.clear();
    Step();
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
