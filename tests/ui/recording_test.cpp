#include <QLabel>
#include <filesystem>

#include "replay/verify.h"
#include "tests/support/console_rig.h"
#include "tests/ui/modem.h"
#include "tests/ui/program_fixture.h"
#include "ui/qt/qt_serial.h"
#include "ui/session_recording.h"

namespace quorvane {
namespace {

// A console on a pseudo-terminal whose session is recorded, put together as the program does it.
class RecordingTest : public testing::Test {
 protected:
  RecordingTest() {
    settings.SaveSetting("frmSerialPort", "CommPort", "5");
    platform.SetAnswerer([](const DialogBox& box) { return std::optional(Demo::Answer(box)); });
    program.judge().SetStartupProject(project);
    serial.SetDoor(&program.door());
    serial.SetOpened([this](int port, int number, const std::string& description) {
      recording.NoteOpened(port, number, description);
    });
  }
  ~RecordingTest() override { serial.SetDoor(nullptr); }

  void Begin(const std::string& journal) {
    const std::vector<int> ports = serial.Ports();
    recording.Begin({.settings = settings.All(), .ports = ports, .projectUnasked = true}, journal);
    program.door().Enter({.kind = EventKind::Load});
  }
  void Click(const std::string& control) {
    program.door().Enter({.kind = EventKind::Click, .target = control});
  }
  void Send(const Frame& frame) {
    const std::vector<std::uint8_t> bytes = frame.Bytes();
    modem.Send(std::string(bytes.begin(), bytes.end()));
  }
  void FlyHeat() {
    const auto starter = [](bool running) { return Frame(3, 6, 70000).With(3, running ? 1 : 0); };
    Send(starter(true));
    WaitFor([&] { return program.race().RaceActive; });
    for (int lap = 1; lap <= 10; ++lap) {
      Frame timers(4, 3, 0);
      for (int i = 0; i < 4; ++i) timers.Lane(i, i == 3 ? lap / 2 : lap, 1);
      Send(timers);
      WaitFor([&] { return program.lane(0).Laps() >= lap; });
      WaitFor([] { return false; }, 12);  // until the lap lights are out
    }
    Send(starter(false));
    WaitFor([&] { return program.judge().HasRun(1); });
  }
  static Verdict Replayed(const std::string& journal) {
    const SessionJournal session = ReadJournal(BytesOf(journal));
    Replay replay(session, {.keepVersions = true, .stopInOpenBox = true});
    replay.Run();
    return Verify(session, replay, "");
  }
  std::vector<std::string> Journals() const {
    std::vector<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path().toStdString())) {
      if (entry.path().extension() == ".journal") found.push_back(entry.path().string());
    }
    return found;
  }

  QTemporaryDir folder;
  const std::string project = folder.filePath("test.ini").toStdString();
  QtSettings settings{folder.filePath("settings.ini").toStdString()};
  QtPlatform platform{settings};
  const std::string link = folder.filePath("radio").toStdString();
  Modem modem{link};
  QtSerial serial{settings, {{5, link}}};
  Program program{platform, serial};
  ProgramWindows windows{program, platform};
  SessionRecording recording{program, windows};
};

TEST_F(RecordingTest, SwitchedOnLateItTellsTheWholeSessionAndItsReplayGivesTheSameFileAndFrames) {
  Begin("");
  Click("frmSerialPort.chkSystemController");  // so that the console has something to send
  FlyHeat();
  EXPECT_TRUE(Journals().empty());
  Click("frmJudge.mnuRecordSession");
  EXPECT_EQ(settings.GetSetting("frmJudge", "RecordSession", ""), "True");
  EXPECT_FALSE(recording.Notice()->isHidden());
  windows.Console().resize(1100, 760);
  Click("frmJudge.cmdReset");
  recording.End();
  ASSERT_EQ(Journals().size(), 1U);
  const std::string journal = Journals().front();
  EXPECT_EQ(journal.rfind(WithoutExtension(project) + "-20", 0), 0U) << journal;
  EXPECT_NE(BytesOf(journal).find(" tx 55AA"), std::string::npos);
  EXPECT_NE(BytesOf(project).find("Timestamp"), std::string::npos);
  const Verdict verdict = Replayed(journal);
  EXPECT_TRUE(verdict.same) << verdict.text;
}

TEST_F(RecordingTest, AfterARestartTheJournalOfTheLostHeatIsKept) {
  const std::string journal = folder.filePath("day.journal").toStdString();
  std::ofstream(journal) << "quorvane-journal 1\n0 start 2026-11-21T09:00:00\n";
  Begin(journal);
  EXPECT_TRUE(program.judge().mnuRecordSession.Checked());
  EXPECT_EQ(program.judge().lblNotice.Caption(),
            "Recording into day-2.journal, as day.journal has a session already");
  // Switched off and on again, it does not write over its own either.
  Click("frmJudge.mnuRecordSession");
  Click("frmJudge.mnuRecordSession");
  recording.End();
  EXPECT_EQ(BytesOf(journal), "quorvane-journal 1\n0 start 2026-11-21T09:00:00\n");
  EXPECT_NE(BytesOf(folder.filePath("day-2.journal").toStdString()).find("\n# stopped "), std::string::npos);
  EXPECT_NE(BytesOf(folder.filePath("day-3.journal").toStdString()).find(" end\n"), std::string::npos);
}

TEST_F(RecordingTest, AFileThatIsNoJournalIsRefusedAndTheRaceGoesOn) {
  const std::string notes = folder.filePath("notes.txt").toStdString();
  std::ofstream(notes) << "Wind from the west.\n";
  Begin(notes);
  EXPECT_EQ(recording.Notice()->text(),
            "Recording stopped: the file may not be replaced, it is a file of another kind");
  EXPECT_FALSE(recording.Recorder().Recording());
  FlyHeat();
  EXPECT_TRUE(program.judge().HasRun(1));
  EXPECT_EQ(BytesOf(notes), "Wind from the west.\n");
}

}  // namespace
}  // namespace quorvane
