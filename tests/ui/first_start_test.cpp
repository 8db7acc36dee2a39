// The form of the first start under real keys and clicks, and the practice field as a real program.

#include "ui/first_start.h"

#include <fmt/format.h>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <csignal>
#include <utility>

#include "tests/ui/fixture.h"
#include "ui/practice_field.h"

namespace quorvane {
namespace {

class FirstStartTest : public PlatformTest {
 protected:
  void Open() {
    form = std::make_unique<FirstStartForm>(settings, FirstStartForm::Ports{{5, "ttyUSB0"}},
                                            InFolder("docs/"), MomentOf(2026, 11, 21));
    form->show();
    Settle();
  }
  template <typename T>
  T* Field(const char* name) {
    for (T* field : form->findChildren<T*>()) {
      if (field->accessibleName() == name || field->property("text") == name) return field;
    }
    ADD_FAILURE() << name;
    return nullptr;
  }
  std::string Told() { return form->findChild<QLabel*>("told")->text().toStdString(); }

  std::unique_ptr<FirstStartForm> form;
};

TEST_F(FirstStartTest, IsAnsweredByKeysAlone) {
  Open();
  EXPECT_FALSE(Field<QPushButton>("&Start")->isEnabled());
  EXPECT_EQ(Field<QPushButton>("&Start")->toolTip(), "Name the event first");
  QTest::keyClicks(form->focusWidget(), "Autumn Cup");
  QTest::keyClick(form->focusWidget(), Qt::Key_Tab);
  auto* heats = Field<QSpinBox>("Heats per round");
  EXPECT_TRUE(heats->hasFocus());
  for (int i = 0; i < 9; ++i) Press(heats, Qt::Key_Down);
  EXPECT_EQ(heats->value(), 2);
  auto* radio = Field<QComboBox>("Radio");
  radio->setFocus();
  for (int i = 0; i < 2; ++i) Press(radio, Qt::Key_Down);
  EXPECT_EQ(radio->currentText(), "COM5: ttyUSB0");
  form->ShowPorts({});
  EXPECT_EQ(radio->currentText(), "No radio, judged by hand");
  form->ShowPorts({{3, "ttyS3"}, {5, "ttyUSB0"}});
  Press(heats, Qt::Key_Return);
  EXPECT_FALSE(form->isVisible());
  EXPECT_EQ(form->Project(), InFolder("docs/Autumn Cup 21-Nov-2026.ini"));
  const std::string project = FileBytes(form->Project());
  EXPECT_NE(project.find("Title=Autumn Cup"), std::string::npos);
  EXPECT_NE(project.find("HeatsPerRound=2"), std::string::npos);
  EXPECT_EQ(settings.GetSetting("frmSerialPort", "CommPort", ""), "5");
}

TEST_F(FirstStartTest, OpensAProjectThatStandsThereAndRefusesWhatIsNone) {
  const std::string old = "[Current]\r\nTitle=Reno\r\nHeatsPerRound=6\r\n";
  PutFile(InFolder("reno.ini"), old);
  PutFile(InFolder("notes.txt"), "Wind from the west.\n");
  Open();
  auto* file = Field<QLineEdit>("Project file");
  const auto type = [&](const std::string& path) {
    ClickOn(file);
    file->selectAll();
    QTest::keyClicks(file, QString::fromStdString(path));
  };
  auto* event = Field<QLineEdit>("Event");
  QTest::keyClicks(event, "Cup");
  auto* heats = Field<QSpinBox>("Heats per round");
  heats->setValue(3);
  const auto fields = [&] {
    return fmt::format("{} {} {:d}{:d}", event->text().toStdString(), heats->value(), event->isEnabled(),
                       heats->isEnabled());
  };
  type(InFolder("notes.txt"));
  EXPECT_EQ(Told(), "This file is no project. It stays as it is: choose another one.");
  EXPECT_EQ(Field<QPushButton>("&Start")->toolTip().toStdString(), Told());
  type(InFolder("reno.ini"));
  EXPECT_TRUE(Told().starts_with("This project exists: it is opened as it is")) << Told();
  EXPECT_EQ(fields(), "Reno 6 00");
  type(InFolder("new.ini"));
  EXPECT_EQ(fields(), "Cup 3 11");
  type(InFolder("reno.ini"));
  ClickOn(Field<QPushButton>("&Start"));
  EXPECT_EQ(form->Project(), InFolder("reno.ini"));
  EXPECT_EQ(FileBytes(InFolder("reno.ini")), old);
}

TEST_F(FirstStartTest, LeftWithoutAnAnswerItPreparesNothingAndComesAgainOnlyWhereItWasClosedByItsFrame) {
  for (const bool byFrame : {true, false}) {
    Open();
    QTest::keyClicks(form->focusWidget(), "Cup");
    byFrame ? static_cast<void>(form->close()) : Press(form.get(), Qt::Key_Escape);
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(form->Project(), "");
    EXPECT_EQ(form->ClosedByFrame(), byFrame);
    EXPECT_EQ(settings.All().size(), byFrame ? 0U : 1U);
  }
  EXPECT_FALSE(NothingConfigured({settings.All()[0].section}));
  EXPECT_FALSE(QFileInfo::exists(folder.filePath("docs")));
}

class PracticeTest : public ProgramOn<QtSerial> {
 public:
  PracticeTest() { serial.SetDoor(&program.door()); }
  ~PracticeTest() override { serial.SetDoor(nullptr); }

 protected:
  void Begin() {
    Load();
    ClickOn(Shown(program.link().cmdPractice));
    ASSERT_TRUE(windows.All().FindWindow(program.judge().Practice())->isVisible());
    ClickOn(Shown(program.judge().Practice().cmdBegin));
  }
  std::string State() { return program.judge().Practice().lblState.Caption(); }
};

TEST_F(PracticeTest, TheFieldAnswersIsHeardAndEndsWithThePractice) {
  QtPracticeField field(program, serial);
  Begin();
  ASSERT_TRUE(WaitFor([&] { return program.race().CommActive; }, 15000)) << State();
  EXPECT_TRUE(Shown(program.judge().lblPractice)->isVisible());
  EXPECT_EQ(Shown<CaptionLabel>(program.judge().lblComm)->Text(), "Practice");
  EXPECT_TRUE(WaitFor([&] { return program.link().Counters().good > 5; }));
  EXPECT_EQ(settings.GetSetting("Ports", "COM31", ""), "") << "remembered";
  auto process = static_cast<pid_t>(field.ProcessId());
  ASSERT_GT(process, 0);
  // It is killed, and started again.
  ASSERT_EQ(kill(process, SIGKILL), 0);
  ASSERT_TRUE(WaitFor([&] { return State().starts_with("The field has ended"); })) << State();
  EXPECT_FALSE(program.race().CommActive);
  ClickOn(Shown(program.judge().Practice().cmdBegin));
  ASSERT_TRUE(WaitFor([&] { return program.race().CommActive; }, 15000)) << State();
  process = static_cast<pid_t>(field.ProcessId());
  ClickOn(Shown(program.judge().Practice().cmdEnd));
  EXPECT_FALSE(Shown(program.judge().lblPractice)->isVisible());
  EXPECT_EQ(program.race().ProjectFile, project);
  EXPECT_TRUE(WaitFor([&] { return kill(process, 0) != 0; })) << "it still runs";
}

TEST_F(PracticeTest, AFieldThatIsMissingOrSaysNothingButWhyIsTold) {
  const QString silent = QString::fromStdString(InFolder("silent"));
  PutFile(silent.toStdString(), "#!/bin/sh\necho no terminal >&2\nexit 1\n");
  QFile::setPermissions(silent, QFile::ReadOwner | QFile::ExeOwner);
  const QString missing = QString::fromStdString(InFolder("none"));
  Load();
  for (const auto& [program_, told] : {std::pair{missing, missing + " is not there"},
                                       std::pair{silent, QString("The field has ended: no terminal")}}) {
    QtPracticeField field(program, serial, program_);
    Click("frmSerialPort.cmdPractice");
    Click("frmPractice.cmdBegin");
    EXPECT_TRUE(WaitFor([&, text = told.toStdString()] { return State() == text; })) << State();
    EXPECT_EQ(program.judge().lblNotice.Caption(), "Practice field: " + told.toStdString());
    Click("frmPractice.cmdEnd");
    EXPECT_FALSE(program.judge().Practising());
  }
}

}  // namespace
}  // namespace quorvane
