#include "journal/journal_recorder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <random>
#include <semaphore>
#include <set>
#include <sstream>
#include <thread>

#include "base/checked.h"
#include "base/text.h"
#include "journal/journal_text.h"
#include "replay/replay.h"
#include "tests/support/console_rig.h"
#include "tests/support/scratch_folder.h"

namespace quorvane {
namespace {

// A console whose session is recorded. Its clock goes on while it works, as a real one does.
class Recorded {
 public:
  Recorded() {
    rig.serial.ports = {3, 5};
    rig.platform.settings.SaveSetting("frmSerialPort", "CommPort", "5");
    rig.program.door().SetJournal(&recorder);
    rig.platform.msPerLook = 3;
    rig.serial.onOpened = [this](int port, const SerialError& error) {
      recorder.NoteOpened(port, error.number, error.description);
    };
  }
  void Begin(bool unasked = false) {
    SessionStart start;
    start.start = rig.program.door().LocalStart();
    for (const auto& [name, value] : rig.platform.settings.All()) {
      start.settings.push_back({name.first, name.second, value});
    }
    start.ports = {3, 5};
    start.project = rig.file;
    start.projectUnasked = unasked;
    recorder.Begin(start);
  }
  // A session that is recorded from its start on.
  void Start() {
    Begin();
    recorder.Record(path);
    rig.Load();
  }
  // One race more, flown and saved.
  void FlyRace() {
    rig.Click("frmJudge.cmdStart");
    rig.At(rig.platform.ClockMs() + 70000);
    rig.Click("frmLane1.cmdLap");
    rig.Click("frmJudge.cmdSave");
  }
  Verdict Verified(const std::string& text) {
    journal = ReadJournal(text);
    replay = std::make_unique<Replay>(journal, ReplayOptions{.verify = true});
    replay->Run();
    Verdict verdict = Verify(journal, *replay, "");
    replay->folder().Remove();
    return verdict;
  }
  // Ends the recording and replays it.
  void ExpectVerified() {
    recorder.End(rig.platform.ClockMs());
    const Verdict verdict = Verified(FileBytes(path));
    EXPECT_TRUE(verdict.same) << verdict.text;
  }

  ConsoleRig rig;
  SessionRecorder recorder;
  std::string path = rig.folder / "session.journal";
  SessionJournal journal;
  std::unique_ptr<Replay> replay;
};

// Starter, timers and pylon judges on the air, the operator's hands everywhere, a port that fails and one
// that is pulled out: whatever happens, the replay sends and saves the same.
void LiveThrough(Recorded& session, unsigned seed, int events) {
  std::mt19937 random(seed);
  const auto pick = [&](std::size_t n) { return static_cast<int>(random() % n); };
  ConsoleRig& rig = session.rig;
  Door& door = rig.program.door();
  const std::vector<std::string> clicks = Split(
      "frmJudge.cmdStart frmJudge.cmdReset frmJudge.cmdSave frmLane1.cmdLap frmLane2.cmdLap frmLane3.cmdCut "
      "frmJudge.cmdRefly frmJudge.cmdDecHeat frmSerialPort.chkSystemController frmJudge.lblComm "
      "frmSerialPort.cmdHide frmSerialPort.optPort(1) frmSerialPort.optPort(2) frmJudge.chkSixtySecondCount",
      ' ');
  static constexpr const char* kKeys[] = {"F1", "F2", "F5", "7"};
  int laps = 0;
  for (int i = 0; i < events; ++i) {
    rig.At(rig.platform.ClockMs() + pick(1500));
    const std::int32_t clock = static_cast<std::int32_t>(rig.platform.ClockMs() % 140000);
    rig.Answer(static_cast<DialogAnswer::Word>(pick(5)), "5");
    const int what = pick(9);
    if (i % 97 == 50) rig.platform.start = AddMilliseconds(rig.platform.start, i * 9000);  // the clock is set
    if (what < 2) rig.Starter(clock, clock < 120000);
    if (what == 2 || what == 3) {
      laps = clock < 60000 ? 0 : laps + 1;
      rig.Receive(Frame(4, 3, clock).Lane(0, laps, 100).Lane(1, laps, 100));
    }
    if (what == 4) rig.serial.busy[5] = {pick(2) * 8005, "Access is denied"};
    if (what == 5) {
      rig.serial.ports = pick(2) == 0 ? std::set<int>{3} : std::set<int>{3, 5};
      door.Enter({.kind = EventKind::Ports, .numbers = {rig.serial.ports.begin(), rig.serial.ports.end()}});
    }
    if (what == 6) rig.Key(kKeys[pick(4)]);
    if (what > 6) rig.Click(clicks[static_cast<std::size_t>(pick(clicks.size()))]);
    rig.platform.answers.clear();
  }
}

TEST(Recorder, ARecordedSessionReplaysToTheSameFileAndFrames) {
  std::size_t frames = 0;
  for (unsigned seed = 1; seed <= 12; ++seed) {
    Recorded session;
    const bool old = seed > 8;
    const bool named = seed > 10;
    if (old)
      PutFile(session.rig.file, "[Current]\nTitle=Cup\nHeatsPerRound=4\n[Race1]\nTimestamp=46347.1, x\n");
    session.Begin(named);
    // Switched on late, it is written from the start all the same.
    if (seed % 2 == 0) session.recorder.Record(session.path);
    if (named) session.rig.judge().SetStartupProject(session.rig.file);
    if (old && !named) session.rig.Answer(DialogAnswer::Word::Yes);
    session.rig.Load();
    EXPECT_EQ(session.rig.race().RaceNumber, old ? 2 : 1);
    session.rig.platform.answers.clear();
    LiveThrough(session, seed, 200);
    if (seed % 2 == 1) session.recorder.Record(session.path);
    LiveThrough(session, seed + 100, 50);
    if (seed % 3 == 0) {  // the system ends the program behind a box
      session.rig.platform.whileOpen = [&](const DialogBox&) {
        session.rig.program.door().Enter({EventKind::Quit});
      };
      session.rig.Click("frmJudge.mnuExit");
    }
    session.ExpectVerified();
    ASSERT_EQ(session.replay->StuckIn(), "");
    ASSERT_NE(session.replay->program().race().ProjectFile, session.rig.file);
    frames += session.replay->Sent().size();
  }
  EXPECT_GT(frames, 100U);
}

TEST(Recorder, VerifyNamesTheFirstDifferenceWithItsTime) {
  Recorded session;
  session.rig.platform.msPerLook = 0;
  session.Start();
  session.rig.Type("frmJudge.txtComments", "gusty");
  session.FlyRace();
  session.FlyRace();
  session.recorder.End(140500);
  std::string text = FileBytes(session.path);
  text.replace(text.find("gusty"), 5, "windy");
  const Verdict verdict = session.Verified(text);
  EXPECT_FALSE(verdict.same);
  EXPECT_EQ(verdict.text, "different at 70000 ms: " + session.rig.file +
                              ": [Race1] Comments: recorded \"gusty\", replayed \"windy\"");
}

TEST(Recorder, ASoundSessionIsNotAccused) {
  enum class What { SavesPdf, StopsRecording, IsKilled, GoesOnInAnotherSession };
  for (const What what :
       {What::SavesPdf, What::StopsRecording, What::IsKilled, What::GoesOnInAnotherSession}) {
    Recorded session;
    ConsoleRig& rig = session.rig;
    session.Start();
    session.FlyRace();
    if (what == What::SavesPdf) {
      rig.Answer(DialogAnswer::Word::File, rig.folder / "race.pdf");
      rig.Click("frmJudge.mnuSavePdf");
      PutFile(rig.folder / "race.pdf", "%PDF");
    }
    if (what == What::StopsRecording) session.recorder.Stop();
    const std::string killed = [&] {
      while (FileBytes(session.path).find("frmJudge.cmdSave") == std::string::npos) {
      }
      return FileBytes(session.path);
    }();
    if (what == What::IsKilled || what == What::StopsRecording) session.FlyRace();
    session.recorder.End(rig.platform.ClockMs());
    if (what == What::GoesOnInAnotherSession) session.FlyRace();
    const Verdict verdict = session.Verified(what == What::IsKilled ? killed : FileBytes(session.path));
    EXPECT_TRUE(verdict.same) << verdict.text;
    EXPECT_EQ(verdict.text.find("race.pdf"), std::string::npos);
    EXPECT_EQ(verdict.text.find("where the recording was stopped") != std::string::npos,
              what == What::StopsRecording)
        << verdict.text;
    EXPECT_EQ(verdict.notes.size(), what == What::SavesPdf ? 0U : 1U);
  }
}

// Another console holds the project at the start, and lets go of it later.
TEST(Recorder, AProjectThatIsHeldElsewhereIsHeldInTheReplay) {
  Recorded session;
  ConsoleRig& rig = session.rig;
  PutFile(rig.file, "[Current]\nTitle=Cup\nHeatsPerRound=4\n");
  ProjectStore other(rig.file);
  ASSERT_EQ(other.TryLock(), LockResult::Locked);
  rig.Answer(DialogAnswer::Word::Yes);
  rig.Answer(DialogAnswer::Word::Ok);
  rig.Answer(DialogAnswer::Word::File, rig.folder / "mine.ini");
  session.Start();
  session.FlyRace();
  other.Unlock();
  rig.Answer(DialogAnswer::Word::File, rig.file);
  rig.Click("frmJudge.mnuSelectFile");
  EXPECT_EQ(rig.race().ProjectFile, rig.file);
  session.FlyRace();
  // By another name it is the same project.
  std::filesystem::create_symlink(rig.file, rig.folder / "link.ini");
  rig.Answer(DialogAnswer::Word::File, rig.folder / "link.ini");
  rig.Click("frmJudge.mnuSelectFile");
  session.FlyRace();
  rig.Answer(DialogAnswer::Word::File, rig.folder / "mine.ini");  // a platform with windows asks nobody
  rig.Type("frmJudge.mnuOpenRecent", rig.folder / "mine.ini");
  EXPECT_EQ(rig.race().ProjectFile, rig.folder / "mine.ini");
  session.FlyRace();
  session.ExpectVerified();
}

// Practice flies in a file that the journal does not hold, and goes back to the contest.
TEST(Recorder, ASessionWithPracticeIsReplayed) {
  Recorded session;
  ConsoleRig& rig = session.rig;
  session.Start();
  session.FlyRace();
  rig.Click("frmSerialPort.cmdPractice");
  rig.Answer(DialogAnswer::Word::Yes);
  rig.Click("frmPractice.cmdBegin");
  const auto field = [&](int port) {
    rig.serial.ports = port != 0 ? std::set<int>{3, 5, port} : std::set<int>{3, 5};
    Door& door = rig.program.door();
    door.Enter({.kind = EventKind::Ports, .numbers = {rig.serial.ports.begin(), rig.serial.ports.end()}});
    door.Enter({.kind = EventKind::Field, .text = port == 0 ? "gone" : "", .number = port});
  };
  field(31);
  session.FlyRace();
  field(0);
  rig.Click("frmPractice.cmdEnd");
  session.FlyRace();
  ASSERT_TRUE(rig.judge().HasRun(2));
  session.ExpectVerified();
  EXPECT_TRUE(session.replay->program().judge().HasRun(2));
}

TEST(Recorder, AnErrorThatWasContainedIsKeptAndTold) {
  Recorded session;
  session.Start();
  session.rig.program.door().Post([] { throw OverflowError(); });
  EXPECT_EQ(session.rig.judge().lblNotice.Caption(), "Something failed and was left undone: Overflow");
  session.ExpectVerified();
  EXPECT_NE(FileBytes(session.path).find("# error "), std::string::npos);
  EXPECT_EQ(FileBytes(session.path).find(" busy "), std::string::npos) << "the port has opened";
}

// A disk that does not answer before it is told to, and then is full.
struct SlowFullDisk : std::stringbuf {
  std::binary_semaphore answer{0};
  std::streamsize xsputn(const char*, std::streamsize) override {
    answer.acquire();
    errno = ENOSPC;
    return 0;
  }
};

TEST(Recorder, NeverWaitsForTheDiskAndAFullOneEndsTheRecordingOnly) {
  SlowFullDisk disk;
  Recorded session;
  session.Begin();
  session.recorder.Record({}, std::make_unique<std::ostream>(&disk));
  session.rig.Load();
  EXPECT_EQ(session.recorder.Problem(), "");
  disk.answer.release();
  while (session.recorder.Problem().empty()) std::this_thread::yield();
  EXPECT_EQ(session.recorder.Problem(), "No space left on device");
  session.rig.Click("frmJudge.cmdStart");
  EXPECT_TRUE(session.rig.race().RaceActive);
  // Another disk will do, and nothing is missing there.
  ASSERT_TRUE(session.recorder.Record(session.path));
  EXPECT_EQ(session.recorder.Problem(), "");
  session.ExpectVerified();
}

TEST(Recorder, ASessionTooLongForMemoryIsRecordedFromItsStartOrNotAtAll) {
  const ScratchFolder folder;
  SessionRecorder recorder(1000);
  recorder.Begin({});
  recorder.Record(folder / "a.journal");
  recorder.Entered(0, {.kind = EventKind::Load});
  for (int ms = 0; ms < 200; ++ms) recorder.Entered(ms, {.kind = EventKind::Key, .text = "F1"});
  recorder.Stop();
  EXPECT_EQ(ReadJournal(FileBytes(folder / "a.journal")).records.size(), 202U);
  EXPECT_FALSE(recorder.Record(folder / "b.journal"));
  EXPECT_NE(recorder.Problem(), "");
  EXPECT_EQ(folder.Entries(), 1);
}

}  // namespace
}  // namespace quorvane
