// Practice on the simulated field, and the contest that must know nothing of it.

#include "console/practice.h"

#include <fmt/ranges.h>
#include <gtest/gtest.h>

#include "console/first_start.h"
#include "tests/support/console_rig.h"

namespace quorvane {
namespace {

using Word = DialogAnswer::Word;

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
  void Start(const PracticeOptions& options) override {
    running = true;
    last = options;
  }
  void Stop() override { running = false; }
  bool running = false;
  PracticeOptions last;
};

// A contest on the console with the radio at port 5, and a field that answers at port 31 when it is told to.
struct PracticeRig : ConsoleRig {
  PracticeRig() : ConsoleRig(true) {
    judge().SetPracticeField(&field);
    Load();
    Click("frmSerialPort.cmdPractice");
  }
  ~PracticeRig() { judge().SetPracticeField(nullptr); }
  void Begin(Word word = Word::Yes) {
    Answer(word);
    Click("frmPractice.cmdBegin");
  }
  void FieldIs(int port, const std::string& trouble = {}) {
    serial.ports = port != 0 ? std::set<int>{5, port} : std::set<int>{5};
    program.door().Enter({.kind = EventKind::Ports, .numbers = {serial.ports.begin(), serial.ports.end()}});
    program.door().Enter({.kind = EventKind::Field, .text = trouble, .number = port});
  }
  void FlyAndSave() {
    const std::int64_t zero = platform.ClockMs();
    Starter(70000, true);
    At(zero + 12000);
    Receive(Frame(4, 3, 82000).Lane(0, 1, 200));
    Starter(90000, false);
  }
  NotedField field;
};

TEST(Practice, FliesInAProjectOfItsOwnAndLeavesTheContestAsItWas) {
  PracticeRig rig;
  rig.FlyAndSave();
  ASSERT_TRUE(rig.judge().HasRun(1));
  const std::string contest = FileBytes(rig.file);
  const auto settings = rig.platform.settings.All();
  rig.Begin(Word::No);
  EXPECT_FALSE(rig.judge().Practising() || rig.field.running);
  rig.Begin();
  EXPECT_NE(rig.platform.shown.back().box.text.find(rig.file), std::string::npos);
  const std::string practice = rig.race().ProjectFile;
  EXPECT_EQ(practice, rig.folder / "Practice/Practice 2026-11-21 090012.ini");
  EXPECT_FALSE(rig.serial.PortOpen()) << "a radio would be heard in practice";
  rig.FieldIs(31);
  EXPECT_EQ(rig.serial.CommPort(), 31);
  EXPECT_TRUE(rig.serial.PortOpen() && rig.judge().lblPractice.Visible());
  EXPECT_EQ(rig.judge().lblComm.Caption(), "Practice");
  for (const char* locked : {"frmJudge.mnuSelectFile", "frmSerialPort.optPort(1)"}) {
    EXPECT_FALSE(rig.program.door().AllForms().FindControl(locked)->Enabled()) << locked;
  }
  rig.program.door().Enter({.kind = EventKind::Activate, .target = "frmSerialPort"});
  EXPECT_EQ(rig.serial.CommPort(), 31) << "the radio's port was opened";
  rig.FlyAndSave();
  EXPECT_EQ(FileBytes(rig.file), contest);
  EXPECT_NE(FileBytes(practice).find("Title=Practice"), std::string::npos);
  EXPECT_NE(FileBytes(practice).find("[Race1_Lane1]\r\nNumEvents=1"), std::string::npos);

  rig.Click("frmPractice.cmdEnd");
  EXPECT_FALSE(rig.judge().Practising() || rig.field.running || rig.judge().lblPractice.Visible());
  EXPECT_EQ(rig.race().ProjectFile, rig.file);
  EXPECT_EQ(rig.judge().lblComm.Caption(), "COM5");
  EXPECT_EQ(rig.race().RaceNumber, 2);
  EXPECT_EQ(FileBytes(rig.file), contest);
  EXPECT_EQ(rig.platform.settings.All(), settings);
  EXPECT_TRUE(rig.judge().mnuSelectFile.Enabled());
}

// Whatever the operator has at stake is not put aside: the buttons are locked and say why.
TEST(Practice, NeitherBeginsNorEndsOverARace) {
  for (const bool practising : {false, true}) {
    PracticeRig rig;
    if (practising) rig.Begin();
    const std::string project = rig.race().ProjectFile;
    const auto expectLocked = [&](const std::string& why) {
      Control& button = practising ? rig.judge().Practice().cmdEnd : rig.judge().Practice().cmdBegin;
      EXPECT_TRUE(!button.Enabled() && button.ToolTip().starts_with(why)) << button.ToolTip();
      EXPECT_NE(rig.judge().Practice().lblState.Caption().find(why), std::string::npos);
      rig.Click(button.FullName());
      EXPECT_EQ(rig.race().ProjectFile, project);
    };
    rig.Click("frmJudge.cmdStart");
    expectLocked("A race is being flown");
    rig.At(rig.platform.ClockMs() + 200000);
    ASSERT_TRUE(rig.race().Unsaved);
    expectLocked("A race is not saved");
    rig.Click("frmJudge.cmdSave");
    rig.Click(practising ? "frmPractice.cmdEnd" : "frmSerialPort.chkSystemController");
    if (!practising) expectLocked("System Controller is on");
    EXPECT_EQ(rig.judge().Practising(), false);
  }
  // A race that the radio begins behind the question.
  PracticeRig rig;
  rig.platform.whileOpen = [&](const DialogBox&) { rig.Starter(70000, true); };
  rig.Begin();
  EXPECT_TRUE(rig.race().BeingFlown() && !rig.judge().Practising());
  EXPECT_EQ(rig.race().ProjectFile, rig.file);
}

TEST(Practice, AFieldThatDiesIsToldAndItsRaceGoesOn) {
  PracticeRig rig;
  rig.Begin();
  rig.FieldIs(0, "The field does not answer");
  EXPECT_EQ(rig.judge().lblNotice.Caption(), "Practice field: The field does not answer");
  rig.Click("frmPractice.cmdBegin");  // without a question
  rig.FieldIs(31);
  rig.Starter(70000, true);
  rig.FieldIs(0, "The field has ended");
  EXPECT_TRUE(rig.race().BeingFlown() && rig.judge().Practising());
  EXPECT_EQ(rig.judge().lblComm.Caption(), "Practice - Off");
  EXPECT_TRUE(rig.lane(0).cmdLap.Reachable()) << "hands judge on";
}

// The contest's file went away or to another console meanwhile: the operator is asked, and never left in
// practice without a way out.
TEST(Practice, WhereTheContestCannotBeHadAnotherFileIsAskedFor) {
  PracticeRig rig;
  rig.Begin();
  PutFile(rig.file, "Wind from the west.\n");
  rig.Answer(Word::Ok);
  rig.Answer(Word::Cancel);
  rig.Click("frmPractice.cmdEnd");
  EXPECT_TRUE(rig.judge().Practising());
  rig.Answer(Word::Ok);
  rig.Answer(Word::File, rig.folder / "other.ini");
  for (const char* text : {"4", "Cup"}) rig.Answer(Word::Text, text);
  rig.Click("frmPractice.cmdEnd");
  EXPECT_FALSE(rig.judge().Practising());
  EXPECT_EQ(rig.race().ProjectFile, rig.folder / "other.ini");
  EXPECT_EQ(FileBytes(rig.file), "Wind from the west.\n");
}

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
