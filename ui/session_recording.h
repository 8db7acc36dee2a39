#pragma once

#include <string>

#include "journal/journal_recorder.h"
#include "ui/program_windows.h"

class QLabel;

namespace quorvane {

// Records the session of the console into a journal: into the file of the command line, or, while "Record
// Session" is checked, into one beside the project; the next free name when that is there already. Says at
// the right end of the menu bar that it does, or why it cannot go on; nothing of it ever stops the race.
class SessionRecording {
 public:
  SessionRecording(Program& program, ProgramWindows& windows);
  ~SessionRecording() { End(); }

  // Before the Load event enters. `start` knows settings, ports and whether the project was named; `journal`
  // is the file of the command line, empty: as the menu says.
  void Begin(SessionStart start, const std::string& journal);
  // The program ends. Nothing is recorded after it.
  void End();

  SessionRecorder& Recorder() { return recorder_; }
  // Null while nothing has been recorded yet.
  QLabel* Notice() const { return notice_; }

 private:
  void AddNotice();
  void FollowMenu();
  void Start();
  void Complain() const;
  void Show(const QString& text, bool bad);

  Program& program_;
  ProgramWindows& windows_;
  QLabel* notice_ = nullptr;
  SessionRecorder recorder_;
  bool begun_ = false;
  bool given_ = false;    // the command line names the file, and the menu has not been checked for it yet
  bool wanted_ = false;   // as the menu said last
  bool stopped_ = false;  // by a problem, which the notice names
  std::string named_;     // where this session is to be recorded, once that is known
  std::string file_;      // where it is, or was last
  std::string news_;      // of another name for it, until the window says so
};

}  // namespace quorvane
