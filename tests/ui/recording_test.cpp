// The whole program as it is put together for a race day: on a pseudo-terminal, with its session recorded.

#include <QDir>
#include <QElapsedTimer>
#include <algorithm>

#include "replay/replay.h"
#include "tests/ui/fixture.h"
#include "ui/session_recording.h"

namespace quorvane {
namespace {

class RecordingTest : public ProgramOn<QtSerial> {
 public:
  RecordingTest() {
    ConnectPort5();
    serial.SetDoor(&program.door());
    serial.SetOpened(std::bind_front(&SessionRecorder::NoteOpened, &recording.Recorder()));
  }
  ~RecordingTest() override { serial.SetDoor(nullptr); }

 protected:
  void Begin(const std::string& journal) {
    const std::vector<int> ports = serial.Ports();
    recording.Begin({.settings = settings.All(), .ports = ports, .projectUnasked = true}, journal);
    Load();
  }
  // Each lap is seen a moment after it was on the air.
  void FlyHeat() {
    const auto starter = [](bool running) { return Frame(3, 6, 70000).With(3, running ? 1 : 0); };
    modem.Send(starter(true));
    WaitFor([&] { return program.race().RaceActive; });
    std::vector<qint64> delays;
    for (int lap = 1; lap <= 10; ++lap) {
      Frame timers(4, 3, 0);
      for (int i = 0; i < 4; ++i) timers.Lane(i, i == 3 ? lap / 2 : lap, 1);
      const auto* cell = Shown<CaptionLabel>(program.lane(0).lblLap[lap - 1]);
      const QString before = cell->Text();
      QElapsedTimer passed;
      passed.start();
      modem.Send(timers);
      EXPECT_TRUE(WaitFor([&] { return cell->Text() != before; })) << lap;
      delays.push_back(passed.elapsed());
      QTest::qWait(12);  // until the lap lights are out
    }
    std::sort(delays.begin(), delays.end());
    EXPECT_LT(delays[5], 50) << "ms";
    modem.Send(starter(false));
    EXPECT_TRUE(WaitFor([&] { return program.judge().HasRun(1); }));
  }
  QStringList Journals() const { return QDir(folder.path()).entryList({"*.journal"}); }

  Modem modem{InFolder("radio")};
  SessionRecording recording{program, windows};
};

TEST_F(RecordingTest, SwitchedOnLateItTellsTheWholeSessionAndItsReplayGivesTheSameFileAndFrames) {
  Begin("");
  Click("frmSerialPort.chkSystemController");  // so that the console has something to send
  FlyHeat();
  EXPECT_TRUE(Journals().isEmpty());
  Click("frmJudge.mnuRecordSession");
  EXPECT_EQ(settings.GetSetting("frmJudge", "RecordSession", ""), "True");
  EXPECT_FALSE(recording.Notice()->isHidden());
  windows.Console().resize(1100, 760);
  Click("frmJudge.cmdReset");
  recording.End();
  ASSERT_EQ(Journals().size(), 1);
  EXPECT_TRUE(Journals().front().startsWith("test-20")) << Journals().front().toStdString();
  const std::string journal = InFolder(Journals().front().toStdString());
  EXPECT_NE(FileBytes(journal).find(" tx 55AA"), std::string::npos);
  EXPECT_NE(FileBytes(project).find("Timestamp"), std::string::npos);
  const SessionJournal session = ReadJournal(FileBytes(journal));
  Replay replay(session, {.verify = true});
  replay.Run();
  const Verdict verdict = Verify(session, replay, "");
  EXPECT_TRUE(verdict.same) << verdict.text;
}

TEST_F(RecordingTest, AfterARestartTheJournalOfTheLostHeatIsKept) {
  const std::string journal = InFolder("day.journal");
  std::ofstream(journal) << "quorvane-journal 1\n0 start 2026-11-21T09:00:00\n";
  Begin(journal);
  EXPECT_TRUE(program.judge().mnuRecordSession.Checked());
  EXPECT_EQ(program.judge().lblNotice.Caption(),
            "Recording into day-2.journal, as day.journal has a session already");
  // Switched off and on again, it does not write over its own either.
  Click("frmJudge.mnuRecordSession");
  Click("frmJudge.mnuRecordSession");
  recording.End();
  EXPECT_EQ(FileBytes(journal), "quorvane-journal 1\n0 start 2026-11-21T09:00:00\n");
  EXPECT_NE(FileBytes(InFolder("day-2.journal")).find("\n# stopped "), std::string::npos);
  EXPECT_NE(FileBytes(InFolder("day-3.journal")).find(" end\n"), std::string::npos);
}

TEST_F(RecordingTest, AFileThatIsNoJournalIsRefusedAndTheRaceGoesOn) {
  const std::string notes = InFolder("notes.txt");
  std::ofstream(notes) << "Wind from the west.\n";
  Begin(notes);
  EXPECT_EQ(recording.Notice()->text(),
            "Recording stopped: the file may not be replaced, it is a file of another kind");
  EXPECT_EQ(recording.Notice()->grab().toImage().pixelColor(3, 3), QColor(0xB0, 0, 0));
  EXPECT_FALSE(recording.Recorder().Recording());
  FlyHeat();
  EXPECT_EQ(FileBytes(notes), "Wind from the west.\n");
}

}  // namespace
}  // namespace quorvane
