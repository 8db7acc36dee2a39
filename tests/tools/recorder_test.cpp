#include "common/journal_recorder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <thread>

#include "common/journal_text.h"
#include "tests/support/console_rig.h"
#include "tools/replay/replay.h"
#include "tools/replay/verify.h"

namespace quorvane {
namespace {

std::string BytesOf(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

// A console whose session is recorded. Its clock goes on while it works, as a real one does.
class Recorded {
 public:
  Recorded() {
    rig.serial.ports = {3, 5};
    rig.platform.settings.SaveSetting("frmSerialPort", "CommPort", "5");
    rig.program.door().SetJournal(&recorder);
    rig.platform.msPerLook = 3;
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
  // Ends the recording and replays it.
  Verdict Verified() {
    recorder.End(rig.platform.ClockMs());
    journal = ReadJournal(BytesOf(path));
    replay = std::make_unique<Replay>(journal, ReplayOptions{.keepVersions = true, .stopInOpenBox = true});
    replay->Run();
    return Verify(journal, *replay, "");
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
  const auto pick = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
  ConsoleRig& rig = session.rig;
  Door& door = rig.program.door();
  static const std::vector<std::string> kClicks = {"frmJudge.cmdStart",
                                                   "frmJudge.cmdReset",
                                                   "frmJudge.cmdSave",
                                                   "frmLane1.cmdLap",
                                                   "frmLane2.cmdLap",
                                                   "frmLane3.cmdCut",
                                                   "frmJudge.cmdRefly",
                                                   "frmJudge.cmdDecHeat",
                                                   "frmSerialPort.chkSystemController",
                                                   "frmJudge.lblComm",
                                                   "frmSerialPort.cmdHide",
                                                   "frmSerialPort.optPort(1)",
                                                   "frmSerialPort.optPort(2)",
                                                   "frmJudge.chkSixtySecondCount"};
  int laps = 0;
  for (int i = 0; i < events; ++i) {
    rig.At(rig.platform.ClockMs() + pick(1500));
    const std::int32_t clock = static_cast<std::int32_t>(rig.platform.ClockMs() % 140000);
    rig.Answer(static_cast<DialogAnswer::Word>(pick(5)), "5");
    switch (pick(9)) {
      case 0:
      case 1:
        rig.Starter(clock, clock < 120000);
        break;
      case 2:
      case 3:
        laps = clock < 60000 ? 0 : laps + 1;
        rig.Receive(Frame(4, 3, clock).Lane(0, laps, 100).Lane(1, laps, 100));
        break;
      case 4:
        rig.serial.busy[5] = {pick(2) * 8005, "Access is denied"};
        break;
      case 5:
        rig.serial.ports = pick(2) == 0 ? std::set<int>{3} : std::set<int>{3, 5};
        door.Enter({.kind = EventKind::Ports, .numbers = {rig.serial.ports.begin(), rig.serial.ports.end()}});
        break;
      case 6:
        rig.Key(std::vector<std::string>{"F1", "F2", "F5", "7"}[random() % 4]);
        break;
      default:
        rig.Click(kClicks[random() % kClicks.size()]);
    }
    rig.platform.answers.clear();
  }
}

TEST(Recorder, ARecordedSessionReplaysToTheSameFileAndFrames) {
  std::size_t frames = 0;
  for (unsigned seed = 1; seed <= 12; ++seed) {
    Recorded session;
    session.rig.serial.onOpened = [&](int port, const SerialError& error) {
      session.recorder.NoteOpened(port, error.number, error.description);
    };
    session.Begin();
    if (seed % 2 == 0) {
      ASSERT_TRUE(session.recorder.Record(session.path));
    }
    session.rig.Load();
    LiveThrough(session, seed, 400);
    // Switched on late, it is written from the start all the same.
    if (seed % 2 == 1) {
      ASSERT_TRUE(session.recorder.Record(session.path));
    }
    LiveThrough(session, seed + 100, 100);
    const Verdict verdict = session.Verified();
    ASSERT_TRUE(verdict.same) << seed << ": " << verdict.text;
    ASSERT_EQ(session.replay->StuckIn(), "");
    frames += session.replay->Sent().size();
    ASSERT_NE(session.replay->program().race().ProjectFile, session.rig.file);
  }
  EXPECT_GT(frames, 300U);
}

TEST(Recorder, AnExistingProjectIsKeptWithTheJournal) {
  for (const bool unasked : {false, true}) {
    Recorded session;
    std::ofstream(session.rig.file)
        << "[Current]\nTitle=Cup\nHeatsPerRound=4\n[Race1]\nTimestamp=46347.1, x\n";
    session.Begin(unasked);
    ASSERT_TRUE(session.recorder.Record(session.path));
    if (unasked) {
      session.rig.judge().SetStartupProject(session.rig.file);
    } else {
      session.rig.Answer(DialogAnswer::Word::Yes);
    }
    session.rig.program.door().Enter({EventKind::Load});
    EXPECT_EQ(session.rig.race().RaceNumber, 2);
    LiveThrough(session, 3, 100);
    const Verdict verdict = session.Verified();
    EXPECT_TRUE(verdict.same) << verdict.text;
  }
}

TEST(Recorder, VerifyNamesTheFirstDifferenceWithItsTime) {
  Recorded session;
  session.rig.platform.msPerLook = 0;
  session.Begin();
  session.recorder.Record(session.path);
  session.rig.Load();
  session.rig.At(5000);
  session.rig.Type("frmJudge.txtComments", "gusty");
  session.rig.Click("frmJudge.cmdStart");
  session.rig.At(60000);
  session.rig.Click("frmJudge.cmdSave");
  session.rig.At(70000);
  session.rig.Click("frmJudge.cmdDecHeat");
  session.recorder.End(70500);
  std::string text = BytesOf(session.path);
  text.replace(text.find("gusty"), 5, "windy");
  const SessionJournal changed = ReadJournal(text);
  Replay replay(changed, {.keepVersions = true});
  replay.Run();
  const Verdict verdict = Verify(changed, replay, "");
  EXPECT_FALSE(verdict.same);
  EXPECT_EQ(verdict.text, "different at 60000 ms: " + session.rig.file +
                              ": [Race1] Comments: recorded \"gusty\", replayed \"windy\"");
}

TEST(Recorder, AFullDiskEndsTheRecordingAndNothingElse) {
  if (!std::filesystem::exists("/dev/full")) GTEST_SKIP();
  Recorded session;
  session.Begin();
  session.recorder.Record("/dev/full");
  session.rig.Load();
  for (int i = 0; i < 500 && session.recorder.Problem().empty(); ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  EXPECT_EQ(session.recorder.Problem(), "No space left on device");
  session.rig.Click("frmJudge.cmdStart");
  EXPECT_TRUE(session.rig.race().RaceActive);
  // Another disk will do, and nothing is missing there.
  ASSERT_TRUE(session.recorder.Record(session.path));
  EXPECT_EQ(session.recorder.Problem(), "");
  const Verdict verdict = session.Verified();
  EXPECT_TRUE(verdict.same) << verdict.text;

  SessionRecorder lost;
  lost.Record(session.rig.folder / "no such folder/x.journal");
  EXPECT_EQ(lost.Problem(), "No such file or directory");
}

TEST(Recorder, ASessionTooLongForMemoryIsRecordedFromItsStartOrNotAtAll) {
  TempFolder folder;
  SessionRecorder recorder(1000);
  recorder.Begin({});
  recorder.Record(folder / "a.journal");
  recorder.Entered(0, {.kind = EventKind::Load});
  for (int ms = 0; ms < 200; ++ms) recorder.Entered(ms, {.kind = EventKind::Key, .text = "F1"});
  recorder.Stop();
  EXPECT_EQ(ReadJournal(BytesOf(folder / "a.journal")).records.size(), 202U);
  EXPECT_FALSE(recorder.Record(folder / "b.journal"));
  EXPECT_NE(recorder.Problem(), "");
  EXPECT_FALSE(std::filesystem::exists(folder / "b.journal"));
}

// A disk that does not answer, played by a pipe that nobody empties.
TEST(Recorder, AppendingNeverWaitsForTheDisk) {
  TempFolder folder;
  const std::string path = folder / "pipe";
  ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
  const int reader = ::open(path.c_str(), O_RDONLY | O_NONBLOCK);
  std::string read;
  {
    SessionRecorder recorder;
    recorder.Begin({});
    recorder.Record(path);
    recorder.Entered(0, {.kind = EventKind::Load});
    const Event frame{.kind = EventKind::Bytes, .bytes = std::vector<std::uint8_t>(36, 0x55)};
    std::vector<std::int64_t> times;
    for (int i = 0; i < 20000; ++i) {
      const auto before = std::chrono::steady_clock::now();
      recorder.Entered(i, frame);
      const auto after = std::chrono::steady_clock::now();
      times.push_back(std::chrono::duration_cast<std::chrono::microseconds>(after - before).count());
    }
    // A busy machine may put the whole program aside now and then.
    std::nth_element(times.begin(), times.end() - 200, times.end());
    EXPECT_LT(*(times.end() - 200), 1000);
    ::fcntl(reader, F_SETFL, 0);
    std::thread emptying([&] {
      std::array<char, 65536> piece{};
      for (ssize_t n = 1; n > 0;) {
        n = ::read(reader, piece.data(), piece.size());
        if (n > 0) read.append(piece.data(), static_cast<std::size_t>(n));
      }
    });
    recorder.End(20000);
    emptying.join();
  }
  ::close(reader);
  EXPECT_EQ(ReadJournal(read).records.size(), 20003U);
}

}  // namespace
}  // namespace quorvane
