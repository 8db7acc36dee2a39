#include "common/door.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tools/replay/virtual_platform.h"

namespace quorvane {
namespace {

class Desk : public Form {
 public:
  explicit Desk(Forms& forms)
      : Form(forms, "frmDesk"),
        fra(Add(ControlKind::Frame, "fra")),
        cmd(Add(ControlKind::Button, "cmd", &fra)),
        chk(Add(ControlKind::CheckBox, "chk")),
        txt(Add(ControlKind::TextBox, "txt")),
        cbo(Add(ControlKind::ComboBox, "cbo")),
        tmr(Add(ControlKind::Timer, "tmr")),
        tmrOther(Add(ControlKind::Timer, "tmrOther")) {
    SetVisible(true);
    forms.SetMain(*this);
  }
  void KeyDown(const std::string& key) override { keys.push_back(key); }

  Control& fra;
  Control& cmd;
  Control& chk;
  Control& txt;
  Control& cbo;
  Control& tmr;
  Control& tmrOther;
  std::vector<std::string> keys;
};

class Radio : public DeviceEvents {
 public:
  void Load() override { log += "L"; }
  void BytesArrived(const std::vector<std::uint8_t>&) override {
    log += "B";
    if (onBytes) onBytes();
  }
  void LineError(int) override { log += "E"; }
  void PortsChanged(const std::vector<int>&) override { log += "P"; }
  void EventEnded() override { ++ended; }
  std::string log;
  int ended = 0;
  std::function<void()> onBytes;
};

class DoorTest : public testing::Test {
 protected:
  DoorTest() : door(platform), desk(door.AllForms()) { door.SetDevices(&radio); }

  void Click(const std::string& control) { door.Enter({EventKind::Click, control}); }
  void Bytes() { door.Enter({.kind = EventKind::Bytes, .bytes = {1}}); }

  VirtualPlatform platform;
  Door door;
  Desk desk;
  Radio radio;
};

TEST_F(DoorTest, AnErrorEndsItsEventAndNothingElse) {
  desk.cmd.onClick = [] { throw OverflowError(); };
  Click("frmDesk.cmd");
  EXPECT_EQ(door.ErrorsContained(), 1);
  EXPECT_EQ(radio.ended, 1);
  Bytes();
  EXPECT_EQ(radio.log, "B");
}

TEST_F(DoorTest, NothingReachesWhatTheOperatorCannotReach) {
  int clicks = 0;
  desk.cmd.onClick = [&] { ++clicks; };
  desk.cmd.SetEnabled(false);
  Click("frmDesk.cmd");
  desk.cmd.SetEnabled(true);
  desk.fra.SetVisible(false);
  Click("frmDesk.cmd");
  desk.fra.SetVisible(true);
  desk.SetVisible(false);
  Click("frmDesk.cmd");
  door.Enter({.kind = EventKind::Key, .text = "F1"});
  EXPECT_TRUE(desk.keys.empty());
  Click("frmDesk.nothing");
  Click("nothing");
  Click("frmDesk.cmd(4)");
  EXPECT_EQ(clicks, 0);
  desk.SetVisible(true);
  Click("frmDesk.cmd");
  EXPECT_EQ(clicks, 1);
}

TEST_F(DoorTest, TimeStandsStillInsideAnEventAndMovesBehindABox) {
  std::vector<std::int64_t> seen;
  platform.whileOpen = [&](const DialogBox&) { platform.SetClock(900); };
  desk.cmd.onClick = [&] {
    seen.push_back(door.Now());
    platform.SetClock(500);
    seen.push_back(door.Now());
    door.Ask({DialogKind::Ok, "t", "x"});
    seen.push_back(door.Now());
  };
  platform.SetClock(100);
  Click("frmDesk.cmd");
  EXPECT_EQ(seen, (std::vector<std::int64_t>{100, 100, 900}));
}

TEST_F(DoorTest, EventsWaitForTheEventInHandButTheRadioPassesAnOpenBox) {
  std::string order;
  desk.chk.onClick = [&] { order += "c"; };
  radio.onBytes = [&] { order += "b"; };
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
    order += "]";
  };
  Click("frmDesk.cmd");
  EXPECT_EQ(order, "[b(b)]b");
}

TEST_F(DoorTest, AnEventInsideABoxIsNotInterruptedEither) {
  std::string order;
  platform.whileOpen = [&](const DialogBox&) { Bytes(); };
  radio.onBytes = [&] {
    order += "<";
    if (order.size() == 1) Bytes();
    order += ">";
  };
  desk.cmd.onClick = [&] { door.Ask({DialogKind::Ok, "t", "x"}); };
  Click("frmDesk.cmd");
  EXPECT_EQ(order, "<><>");
}

TEST_F(DoorTest, PostedActionsRunAfterTheEventAndNeverOverAnOpenBox) {
  std::string order;
  radio.onBytes = [&] {
    door.Post([&] { order += "p"; });
    order += "b";
  };
  platform.whileOpen = [&](const DialogBox&) { Bytes(); };
  desk.cmd.onClick = [&] {
    door.Ask({DialogKind::Ok, "t", "x"});
    order += "c";
  };
  Click("frmDesk.cmd");
  EXPECT_EQ(order, "bcp");
  Bytes();
  EXPECT_EQ(order, "bcpbp");
}

TEST_F(DoorTest, TimersFireInOrderAndAreArmedAnewBeforeTheyRun) {
  std::string order;
  desk.tmr.SetInterval(100);
  desk.tmrOther.SetInterval(100);
  desk.tmrOther.SetEnabled(true);
  desk.tmr.SetEnabled(true);
  desk.tmrOther.onTimer = [&] { order += "o"; };
  desk.tmr.onTimer = [&] { order += "t"; };
  platform.RunUntil(door, 100);
  EXPECT_EQ(order, "");
  platform.RunUntil(door, 101);
  EXPECT_EQ(order, "ot");
  desk.tmr.SetInterval(100);  // the same: not armed anew
  desk.tmr.SetEnabled(true);
  platform.RunUntil(door, 201);
  EXPECT_EQ(order, "otot");
  desk.tmr.onTimer = [&] {
    order += "t";
    desk.tmr.SetEnabled(false);
  };
  desk.tmrOther.SetInterval(0);
  platform.RunUntil(door, 2000);
  EXPECT_EQ(order, "otott");
}

TEST_F(DoorTest, ATimerStoppedWhileItsEventWaitsDoesNotRun) {
  int fired = 0;
  desk.tmr.onTimer = [&] { ++fired; };
  desk.tmr.SetInterval(10);
  desk.tmr.SetEnabled(true);
  desk.cmd.onClick = [&] {
    door.FireTimer(desk.tmr);
    desk.tmr.SetEnabled(false);
  };
  Click("frmDesk.cmd");
  EXPECT_EQ(fired, 0);
}

TEST_F(DoorTest, BoxesAndListsTellOnlyRealChanges) {
  std::string order;
  desk.chk.onClick = [&] { order += std::to_string(desk.chk.Value()); };
  Click("frmDesk.chk");
  desk.chk.SetValue(1);
  desk.chk.SetValue(0);
  EXPECT_EQ(order, "10");
  desk.txt.onChange = [&] { order += "t"; };
  desk.txt.SetText("5");
  door.Enter({EventKind::Type, "frmDesk.txt", "5"});
  EXPECT_EQ(order, "10");
  door.Enter({EventKind::Type, "frmDesk.txt", "6"});
  desk.cbo.onChange = [&] { order += "l"; };
  desk.cbo.SetItems({"a", "b"});
  desk.cbo.SetListIndex(1);
  for (const int index : {1, 7, -3})
    door.Enter({.kind = EventKind::Choose, .target = "frmDesk.cbo", .number = index});
  EXPECT_EQ(order, "10t");
  door.Enter({.kind = EventKind::Choose, .target = "frmDesk.cbo", .number = 0});
  EXPECT_EQ(order, "10tl");
  EXPECT_EQ(desk.cbo.Text(), "a");
}

}  // namespace
}  // namespace quorvane
