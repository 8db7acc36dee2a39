#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "forms/platform.h"
#include "race/race_state.h"
#include "records/project_store.h"

namespace quorvane {

// The open project file of the program: RaceState's ProjectFile, and the only way to it. What is missing
// reads as the fallback; a write that fails is tried again (see Saved).
class Project {
 public:
  // `behind`: a disk that is slow is not waited for (ProjectStore::SetPatience).
  explicit Project(RaceState& race, FileOps& files = SystemFiles(), bool behind = false);

  // With a clock a read asks the disk once in kLookMs at most, never while a race is flown; a write always.
  static constexpr std::int64_t kLookMs = 1000;
  void SetClock(const EventClock& clock) { clock_ = &clock; }

  enum class Opened : std::uint8_t {
    Yes,
    HeldElsewhere,  // another console has it open, under this name or another
    NoProject,      // it has contents, but no section of a project
    Unreadable,     // something stands there that cannot be read; OpenProblem() says why
  };
  // The file need not exist. If it does not become the project, the open one stays. What the old one could
  // not save yet goes on being tried, and is there again when that project is opened again.
  Opened Open(const std::string& path);
  const std::string& OpenProblem() const { return openProblem_; }

  std::string GetProjectValue(const std::string& section, const std::string& key,
                              const std::string& fallback) {
    return store_->Read(section, key, fallback);
  }
  void SetProjectValue(const std::string& section, const std::string& key, const std::string& value) {
    store_->Write(section, key, value);
  }
  // From any file, without opening it as the project.
  std::string ReadProfileString(const std::string& section, const std::string& key,
                                const std::string& fallback, const std::string& file) {
    return ProjectStore(file, files_).Read(section, key, fallback);
  }

  // False while anything written is not on the disk; Problem() says why, in words for the operator.
  bool Saved() const { return store_->Saved() && unsaved_.empty(); }
  std::string Problem() const { return unsaved_.empty() ? store_->Problem() : unsaved_.front()->Problem(); }
  bool Retry();
  // The same for a timer: while a race is flown only where it holds up nobody's hands.
  void RetryByItself();
  // The projects of which something is not on the disk.
  std::vector<const ProjectStore*> Unsaved() const;
  bool HasPending() const { return store_->Pending() > 0; }  // of the open one
  PendingTaken TakePending(const std::string& text) { return store_->TakePending(text); }
  // Races and reflies saved under another number than their own, in words for the operator, each once.
  std::vector<std::string> TakeMoved();
  // Files as they were before another program took a flight out of them, by their paths, each told once.
  std::map<std::string, std::string> TakeReplaced();

  struct Group : WriteGroup {
    explicit Group(Project& project) : WriteGroup(*project.store_) {}
  };

 private:
  void TakeNews(ProjectStore& store);
  bool MayLook();
  int Patience() const;
  Opened Use(std::unique_ptr<ProjectStore> next);

  RaceState& race_;
  FileOps& files_;
  const bool behind_;
  const EventClock* clock_ = nullptr;
  std::int64_t lookedAt_ = -kLookMs;
  std::string openProblem_;
  std::unique_ptr<ProjectStore> store_;
  std::vector<std::string> moved_;
  std::map<std::string, std::string> replaced_;
  std::vector<std::unique_ptr<ProjectStore>> unsaved_;  // projects left with something not on the disk
};

bool FileExists(const std::string& path);
bool FolderExists(const std::string& path);
// Up to and including the last separator ("\" or "/") when that stands at the second place or later, else "".
std::string ParentFolder(const std::string& path);
// Makes each missing folder along the path. Errors are ignored.
void MakeFolderPath(const std::string& path);
// Up to the last "." when that stands at the second place or later, else all of it.
std::string WithoutExtension(const std::string& path);
// What follows the last separator.
std::string FileNameOf(const std::string& path);

// Creates the results file with its header line when there is none; one that exists is never touched.
void CreateResultsFile(const std::string& path);

// Where the project file begins to count its days.
inline constexpr LocalDateTime kDayZero = MomentOf(1899, 12, 30);

// "21-Nov-2026".
std::string ProjectDate(const LocalDateTime& date);
// "2:05 PM".
std::string TimeOfDay(const LocalDateTime& at);
// The moment as days since 30 December 1899 in the shortest decimal form, ", ", and 11/21/2026 9:00:00 AM.
std::string TimestampText(const LocalDateTime& moment);

}  // namespace quorvane
