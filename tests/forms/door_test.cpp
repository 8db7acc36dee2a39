#include "forms/door.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "replay/virtual_platform.h"

namespace quorvane {
namespace {

class Desk : public Form {
 public:
  explicit Desk(Forms& forms) : Form(forms, "frmDesk") {
    SetVisible(true);
    forms.SetMain(*this);
  }
  void KeyDown(const std::string& key) override { keys.push_back(key); }

  Control& fra = Add(ControlKind::Frame, "fra");
  Control& cmd = Add(ControlKind::Button, "cmd", &fra);
  Control& chk = Add(ControlKind::CheckBox, "chk");
  Control& txt = Add(ControlKind::TextBox, "txt");
  Control& cbo = Add(ControlKind::ComboBox, "cbo");
  Control& tmr = Add(ControlKind::Timer, "tmr");
  Control& tmrOther = Add(ControlKind::Timer, "tmrOther");
  std::vector<std::string> keys;
};

// Writes down in which order things happen; radio bytes are "b" and whatever a test adds.
class DoorTest : public testing::Test, public DeviceEvents {
 protected:
  DoorTest() { door.SetDevices(this); }

  void BytesArrived(const std::vector<std::uint8_t>&) override {
    order += "b";
    if (onBytes) onBytes();
  }
  void EventEnded() override { ++ended; }

  void Click(const std::string& control) { door.Enter({EventKind::Click, control}); }
  void Bytes() { door.Enter({.kind = EventKind::Bytes}); }

  VirtualPlatform platform;
  Door door{platform};
  Desk desk{door.AllForms()};
  std::string order;
  int ended = 0;
  std::function<void()> onBytes;
};

TEST_F(DoorTest, AnErrorEndsItsEventAndNothingElseAndNothingReachesWhatTheOperatorCannotReach) {
  desk.cmd.onClick = [] { throw OverflowError(); };
  Click("frmDesk.cmd");
  EXPECT_EQ(door.ErrorsContained(), 1);
  EXPECT_EQ(ended, 1);
  EXPECT_TRUE(door.Contain([] {}));
  desk.cmd.onClick = [&] { order += "c"; };
  const std::function<void(bool)> blocks[] = {[&](bool free) { desk.cmd.SetEnabled(free); },
                                              [&](bool free) { desk.fra.SetVisible(free); },
                                              [&](bool free) { desk.SetVisible(free); }};
  for (const auto& reachable : blocks) {
    reachable(false);
    Click("frmDesk.cmd");
    reachable(true);
  }
  for (const char* unknown : {"frmDesk.nothing", "nothing", "frmDesk.cmd(4)"}) Click(unknown);
  desk.SetVisible(false);
  door.Enter({.kind = EventKind::Key, .text = "F1"});
  desk.SetVisible(true);
  EXPECT_TRUE(desk.keys.empty());
  EXPECT_EQ(order, "");
  Click("frmDesk.cmd");
  EXPECT_EQ(order, "c");
}

TEST_F(DoorTest, AtTheEndOfTheProgramABoxEndsWhatAskedItAndIsNoError) {
  door.Enter({.kind = EventKind::Quit});
  EXPECT_FALSE(door.Contain([&] { door.Ask({DialogKind::Ok, "t", "x"}); }));
  EXPECT_EQ(door.ErrorsContained(), 0);
}

TEST_F(DoorTest, TimeStandsStillInsideAnEventAndMovesBehindABox) {
  platform.whileOpen = [&](const DialogBox&) { platform.SetClock(900); };
  desk.cmd.onClick = [&] {
    platform.SetClock(500);
    order += std::to_string(door.Now());
    door.Ask({DialogKind::Ok, "t", "x"});
    order += std::to_string(door.Now());
  };
  platform.SetClock(100);
  Click("frmDesk.cmd");
  EXPECT_EQ(order, "100900");
}

TEST_F(DoorTest, EventsWaitForTheEventInHandButTheRadioPassesAnOpenBox) {
  desk.chk.onClick = [&] { order += "c"; };
  desk.cmd.onClick = [&] {
    Bytes();  // waits until the box opens
    order += "[";
    platform.whileOpen = [&](const DialogBox&) {
      order += "(";
      Click("frmDesk.chk");  // a modal box: lost
      Bytes();
      order += ")";
    };
    door.Ask({DialogKind::YesNo, "t", "x"});
    Bytes();  // waits for the end
    Click("frmDesk.chk");
    order += "]";
  };
  Click("frmDesk.cmd");
  EXPECT_EQ(order, "[b(b)]bc");
}

TEST_F(DoorTest, InsideABoxEventsAreNotInterruptedAndPostedActionsWait) {
  onBytes = [&] {
    door.Post([&] { order += "p"; });
    if (order.size() == 1) Bytes();
    order += ">";
  };
  platform.whileOpen = [&](const DialogBox&) { Bytes(); };
  desk.cmd.onClick = [&] {
    door.Ask({DialogKind::Ok, "t", "x"});
    order += "c";
  };
  Click("frmDesk.cmd");
  EXPECT_EQ(order, "b>b>cpp");
  Bytes();
  EXPECT_EQ(order, "b>b>cppb>p");
}

TEST_F(DoorTest, TimersFireInOrderAndAreArmedAnewBeforeTheyRun) {
  const auto runs = [&](std::int64_t ms) {
    platform.RunUntil(door, ms);
    return order;
  };
  for (Control* timer : {&desk.tmrOther, &desk.tmr}) {
    timer->SetInterval(100);
    timer->SetEnabled(true);
    timer->onTimer = [this, timer] { order += timer == &desk.tmr ? "t" : "o"; };
  }
  EXPECT_EQ(runs(100), "");
  EXPECT_EQ(runs(101), "ot");
  desk.tmr.SetInterval(100);  // the same: not armed anew
  desk.tmr.SetEnabled(true);
  EXPECT_EQ(runs(201), "otot");
  desk.tmrOther.SetInterval(0);
  desk.cmd.onClick = [&] {
    door.FireTimer(desk.tmr);  // waits, and is stopped meanwhile
    desk.tmr.SetEnabled(false);
  };
  Click("frmDesk.cmd");
  EXPECT_EQ(runs(2000), "otot");
  desk.tmr.onTimer = [&] {
    order += "t";
    desk.tmr.SetEnabled(false);
  };
  desk.tmr.SetEnabled(true);
  EXPECT_EQ(runs(4000), "otott");
}

TEST_F(DoorTest, BoxesAndListsTellOnlyRealChanges) {
  desk.chk.onClick = [&] { order += std::to_string(desk.chk.Value()); };
  desk.txt.onChange = [&] { order += desk.txt.Text(); };
  desk.cbo.onChange = [&] { order += "c" + desk.cbo.Text(); };
  Click("frmDesk.chk");
  desk.chk.SetValue(1);
  desk.chk.SetValue(0);
  EXPECT_EQ(order, "10");
  desk.txt.SetText("5");
  for (const char* text : {"5", "6"}) door.Enter({EventKind::Type, "frmDesk.txt", text});
  EXPECT_EQ(order, "106");
  desk.cbo.SetItems({"a", "b"});
  desk.cbo.SetListIndex(1);
  for (const int entry : {1, 2, -1, 0}) {
    door.Enter({.kind = EventKind::Choose, .target = "frmDesk.cbo", .number = entry});
  }
  EXPECT_EQ(order, "106ca");
}

}  // namespace
}  // namespace quorvane
