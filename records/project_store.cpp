#include "records/project_store.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <set>
#include <system_error>
#include <utility>

#include "base/text.h"
#include "records/race_record.h"

namespace quorvane {

namespace {

constexpr size_t kMostCharacters = 2047;
// How long the end of the program waits for a save that is still in hand.
constexpr int kEndMs = 5000;
constexpr const char* kUnsaved = "Unsaved";  // the section of what is kept for a later run of the program
constexpr const char* kChange = "\nChange";
// How often a save starts over because another program keeps changing the file.
constexpr int kMostAttempts = 5;

// A relative path is made absolute at once, because file dialogs change the current folder.
std::string Absolute(const std::string& path) {
  if (path.empty() || path.find('\0') != std::string::npos) return path;
  std::error_code error;
  const std::filesystem::path absolute = std::filesystem::absolute(PathOf(path), error);
  return error ? path : Utf8Of(absolute);
}

std::string Reason(const char* what, const std::string& path, const std::error_code& error) {
  return std::string(what) + " " + path + ": " + error.message();
}

// What a look at the file has found.
struct Glance {
  std::error_code error;
  FileStamp stamp;
  std::string bytes;
  bool same = false;  // as it was seen last
};

void LookAt(FileOps& files, const std::string& path, const std::optional<FileStamp>& last, Glance& glance) {
  glance.error = files.Look(path, glance.stamp);
  glance.same = !glance.error && last == glance.stamp;
  if (glance.error || glance.same || glance.stamp.kind == FileStamp::Kind::Missing) return;
  glance.error = files.ReadFile(path, kLargestProject, glance.bytes, glance.stamp);
}

constexpr std::string_view kRace = "Race";
constexpr std::string_view kRefly = "Refly";

std::string SectionOf(std::string_view kind, int number) {
  return fmt::format("{}{}", kind, number);
}

std::string Stamp(const ProfileFile& file, const std::string& section) {
  const std::string stamp = file.Read(section, "Timestamp").value_or("");
  return LeadingNumber(stamp) != 0.0 ? stamp : "";
}

bool IsKey(const KeptChange& change, std::string_view key) {
  return EqualsIgnoringCase(change.key, key);
}

// A flight's number from the name of its section.
std::optional<int> NumberOf(std::string_view section, std::string_view kind) {
  if (section.size() <= kind.size() || !EqualsIgnoringCase(section.substr(0, kind.size()), kind)) return {};
  const std::string_view digits = section.substr(kind.size());
  if (digits.find_first_not_of("0123456789") != std::string_view::npos || digits.size() > 5) return {};
  return static_cast<int>(LeadingNumber(digits));
}

bool IsFree(const ProfileFile& file, const std::vector<KeptChange>& changes, const std::string& section) {
  return Stamp(file, section).empty() &&
         std::none_of(changes.begin(), changes.end(), [&](const KeptChange& change) {
           return IsKey(change, "Timestamp") && EqualsIgnoringCase(change.section, section);
         });
}

// The next free number, going on with 1 after the last; the number itself where there is none.
int NextFree(const ProfileFile& file, const std::vector<KeptChange>& changes, std::string_view kind,
             int number) {
  for (int step = 1; step < kLastRace; ++step) {
    const int next = (number - 1 + step) % kLastRace + 1;
    if (IsFree(file, changes, SectionOf(kind, next))) return next;
  }
  return number;
}

// The value that a key of "Current" is going to have.
std::string Current(const ProfileFile& file, const std::vector<KeptChange>& changes, std::string_view key) {
  std::string value = file.Read("Current", key).value_or("");
  for (const KeptChange& change : changes) {
    if (EqualsIgnoringCase(change.section, "Current") && IsKey(change, key)) value = change.value;
  }
  return value;
}

// The flight's own section and those of its lanes.
void Rename(std::vector<KeptChange>& changes, const std::string& from, const std::string& to) {
  const std::string lanes = from + "_";
  for (KeptChange& change : changes) {
    const std::string_view head = std::string_view(change.section).substr(0, lanes.size());
    if (EqualsIgnoringCase(change.section, from) || EqualsIgnoringCase(head, lanes)) {
      change.section = to + change.section.substr(from.size());
    }
  }
}

// What the changes say of the flight: a race's reflies and its own section name the race, a race its refly.
void Renumber(const ProfileFile& file, std::vector<KeptChange>& changes, std::string_view kind, int from,
              int to) {
  const int heats = std::max(1, static_cast<int>(LeadingNumber(Current(file, changes, "HeatsPerRound"))));
  for (KeptChange& change : changes) {
    const std::string_view text = change.value;
    if (LeadingNumber(text) != from) continue;
    if (kind == kRace && IsKey(change, "CurrentRace")) {
      change.value = fmt::format("{} (h={}, r={})", to, (to - 1) % heats + 1, (to - 1) / heats + 1);
    }
    if (kind == kRefly && IsKey(change, "ReflyID")) {
      change.value = fmt::format("{}{}", to, text.substr(std::min(text.find(' '), text.size())));
    }
  }
  if (kind == kRefly && LeadingNumber(Current(file, changes, "NumberReflys")) < to) {
    changes.push_back({"Current", "NumberReflys", std::to_string(to)});
  }
}

// A console that did not see the file has counted from nothing.
void KeepReflyCount(const ProfileFile& file, std::vector<KeptChange>& changes) {
  const std::string counted = file.Read("Current", "NumberReflys").value_or("");
  for (KeptChange& change : changes) {
    if (!EqualsIgnoringCase(change.section, "Current") || !IsKey(change, "NumberReflys")) continue;
    if (LeadingNumber(change.value) < LeadingNumber(counted)) change.value = counted;
  }
}

// When the flights in the file were flown.
std::set<std::string> Stamps(const ProfileFile& file) {
  std::set<std::string> stamps;
  for (const std::string& section : file.SectionNames()) {
    if (NumberOf(section, kRace) || NumberOf(section, kRefly)) stamps.insert(Stamp(file, section));
  }
  stamps.erase("");
  return stamps;
}

// Whether the file has the event name of `ours`, a flight in common, or nothing of a contest yet.
bool SameContest(const ProfileFile& ours, const ProfileFile& file) {
  const std::string title = file.Read("Current", "Title").value_or("");
  if (!title.empty() && title == ours.Read("Current", "Title").value_or("")) return true;
  const std::set<std::string> there = Stamps(file), here = Stamps(ours);
  return there.empty() ? title.empty()
                       : std::ranges::any_of(there, [&](const auto& stamp) { return here.contains(stamp); });
}

// Makes changes kept in memory fit a file that has changed: a race or refly whose number is taken there gets
// the next free one, with all that refers to it. Returns what was moved, in words for the operator.
std::vector<std::string> MoveTakenRaces(const ProfileFile& file, std::vector<KeptChange>& changes) {
  std::vector<std::string> moved;
  const std::vector<KeptChange> before = changes;
  for (const KeptChange& change : before) {
    if (!IsKey(change, "Timestamp")) continue;
    const std::string there = Stamp(file, change.section);
    if (there.empty() || there == change.value) continue;
    for (const std::string_view kind : {kRace, kRefly}) {
      const std::optional<int> number = NumberOf(change.section, kind);
      if (!number) continue;
      const int to = NextFree(file, changes, kind, *number);
      Rename(changes, change.section, SectionOf(kind, to));
      Renumber(file, changes, kind, *number, to);
      moved.push_back(fmt::format("{} {} is in the project already: saved as {}", kind, *number, to));
    }
  }
  KeepReflyCount(file, changes);
  return moved;
}

}  // namespace

// What is to be put in the place of the file, and what has become of it.
struct ProjectStore::Replacement {
  std::string bytes;
  std::uint64_t revision = 0;  // of the text
  FileStamp seen;
  std::error_code error = {};
};

ProjectStore::ProjectStore(const std::string& path, FileOps& files) : files_(files), path_(Absolute(path)) {
  Refresh();
}

ProjectStore::~ProjectStore() {
  if (saving_ && disk_.Wait(kEndMs)) {
    patience_ = [] { return kEndMs; };
    Retry();
  }
  Unlock();
}

LockResult ProjectStore::TryLock() {
  if (lock_.held()) return LockResult::Locked;
  std::string target;
  if (files_.Resolve(path_, target)) return LockResult::Unavailable;
  const LockResult result = files_.Lock(target, lock_);
  if (result == LockResult::Locked) files_.RemoveLeftovers(target);
  return result;
}

std::string ProjectStore::Read(std::string_view section, std::string_view key, std::string_view fallback) {
  if (groups_ == 0 && mayLook_()) Refresh();
  return ProfileString(text_, section, key, fallback);
}

void ProjectStore::Write(std::string_view section, std::string_view key, std::string_view value) {
  pending_.push_back({std::string(section), std::string(key), std::string(value)});
  if (text_.Write(section, key, value)) differs_ = true;
  ++revision_;
  if (groups_ == 0) Commit();
}

void ProjectStore::Begin() {
  if (groups_++ == 0) Refresh();
}

void ProjectStore::End() {
  if (--groups_ == 0 && !pending_.empty()) Commit();
}

bool ProjectStore::Retry() {
  if (groups_ == 0 && (!pending_.empty() || !Saved())) Commit();
  return Saved();
}

std::string ProjectStore::PendingText() const {
  ProfileFile file;
  file.Write(kUnsaved, "Title", title_);
  for (std::size_t i = 0; i < pending_.size(); ++i) {
    const auto& [section, key, value] = pending_[i];
    file.Write(kUnsaved, fmt::format("Change{}", i), fmt::format("{};{};{};", section, key, value));
  }
  return file.Serialize();
}

PendingTaken ProjectStore::TakePending(const std::string& text) {
  const ProfileFile file(text);
  const std::string title = file.Read(kUnsaved, "Title").value_or("");
  if (!title.empty() && !title_.empty() && title != title_) return PendingTaken::OtherContest;
  std::vector<KeptChange> changes;
  for (int i = 0; const auto change = file.Read(kUnsaved, fmt::format("Change{}", i)); ++i) {
    const std::size_t key = change->find(';') + 1, value = change->find(';', key) + 1;
    if (key == 0 || value == 0 || value == change->size() || change->back() != ';') continue;
    changes.push_back({change->substr(0, key - 1), change->substr(key, value - 1 - key),
                       change->substr(value, change->size() - 1 - value)});
  }
  // A missing number ends them early.
  std::size_t told = 0;
  for (auto at = text.find(kChange); at != std::string::npos; at = text.find(kChange, at + 1)) ++told;
  const bool all = !changes.empty() && told == changes.size();
  for (std::string& move : MoveTakenRaces(text_, changes)) moved_.push_back(std::move(move));
  const WriteGroup group(*this);
  for (const auto& [section, key, value] : changes) Write(section, key, value);
  return all ? PendingTaken::All : PendingTaken::NotAll;
}

// True: done. False: it takes longer than the caller is to wait.
bool ProjectStore::Behind(std::function<void()> job) {
  if (patience_) return disk_.Do(std::move(job), patience_());
  job();
  return true;
}

// Looks whether the file is still the one last seen, and takes in what another program has changed. False:
// the disk takes too long, or is busy with what this program writes.
bool ProjectStore::Refresh() {
  if (saving_ || (patience_ && disk_.Busy())) return false;
  const auto glance = std::make_shared<Glance>();
  const auto last = looked_ && unreadable_.empty() ? std::optional(seen_) : std::nullopt;
  if (!Behind([&files = files_, path = path_, last, glance] { LookAt(files, path, last, *glance); }))
    return false;
  if (glance->same) return true;
  looked_ = true;
  foreign_.clear();
  const bool missing = !glance->error && glance->stamp.kind == FileStamp::Kind::Missing;
  const bool disappeared = missing && seen_.kind == FileStamp::Kind::File;
  seen_ = glance->stamp;
  unreadable_.clear();
  if (glance->error && (seen_.kind == FileStamp::Kind::Folder || seen_.kind == FileStamp::Kind::Other)) {
    unreadable_ = path_ + " is not a file";
  } else if (glance->error) {
    unreadable_ = Reason("Cannot read", path_, glance->error);
  } else if (missing) {
    // It must be written again even if the next write changes nothing in it.
    if (disappeared) differs_ = true;
  } else {
    TakeIn(std::move(glance->bytes));
  }
  return true;
}

void ProjectStore::TakeIn(std::string bytes) {
  const FileKind kind = KindOfContent(bytes);
  if (kind_ == FileKind::Project && kind == FileKind::Empty) {
    // Not written again at once: a program that empties a file is often about to fill it.
    problem_ = path_ + " was emptied by another program";
    differs_ = true;
    return;
  }
  if (kind_ == FileKind::Project && kind != FileKind::Project) {
    unreadable_ = path_ + " is no project any more";
    return;
  }
  ProfileFile file(std::move(bytes));
  if (!FitsIn(file)) return;
  kind_ = kind;
  if (pending_.empty()) problem_.clear();
  const ProfileFile before = std::exchange(text_, std::move(file));
  differs_ = false;
  for (const KeptChange& change : pending_) {
    if (text_.Write(change.section, change.key, change.value)) differs_ = true;
  }
  // An older copy, or somebody's slip.
  if (replaced_.empty() && !std::ranges::includes(Stamps(text_), Stamps(before))) {
    replaced_ = before.Serialize();
  }
  files_.FollowLock(path_, lock_);
}

// Whether what is kept in memory, or about to be written, may go into the file, which has changed.
bool ProjectStore::FitsIn(const ProfileFile& file) {
  const std::string title = file.Read("Current", "Title").value_or("");
  const bool renamed = !title.empty() && title == title_;  // here, and not yet in the file
  const bool ours = !pending_.empty() || raceAtStake_();
  if (ours && !renamed && !SameContest(text_, file)) {
    foreign_ = path_ + " holds another contest, which is left alone";
    return false;
  }
  title_ = title;
  for (std::string& move : MoveTakenRaces(file, pending_)) moved_.push_back(std::move(move));
  return true;
}

void ProjectStore::TakeMoved(std::vector<std::string>& moved) {
  moved.insert(moved.end(), moved_.begin(), moved_.end());
  moved_.clear();
}

void ProjectStore::Commit() {
  if (!foreign_.empty()) looked_ = false;  // the event's name may have changed
  problem_ = ReplaceOnDisk();
  if (!problem_.empty()) return;
  title_ = text_.Read("Current", "Title").value_or("");
  differs_ = false;
  pending_.clear();
}

// False: the disk takes too long, and it goes on behind.
bool ProjectStore::BeginReplacement() {
  saving_ = std::make_shared<Replacement>(Replacement{text_.Serialize(), revision_, seen_});
  if (saving_->bytes.size() > kLargestProject) {
    saving_->error = std::make_error_code(std::errc::file_too_large);
    return true;
  }
  return Behind([&files = files_, path = path_, saving = saving_] {
    std::string target;
    saving->error = files.Resolve(path, target);
    if (!saving->error) saving->error = ReplaceFile(files, target, saving->bytes, saving->seen);
  });
}

std::error_code ProjectStore::EndReplacement() {
  const auto saved = std::exchange(saving_, nullptr);
  seen_ = saved->seen;
  if (saved->error == kFileChanged) return saved->error;
  if (!saved->error) kind_ = KindOfContent(saved->bytes);
  files_.FollowLock(path_, lock_);
  // What was written meanwhile has to follow.
  if (!saved->error) differs_ = saved->revision != revision_;
  return saved->error;
}

// Brings `text_` to the disk; returns why it could not, or nothing.
std::string ProjectStore::ReplaceOnDisk() {
  std::string slow = problem_.empty() ? "Writing " + path_ + " takes long" : problem_;
  if (patience_ && disk_.Busy()) return slow;
  std::error_code error;
  for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
    if (!saving_) {
      if (!Refresh()) return slow;
      if (!unreadable_.empty()) return unreadable_;
      if (!foreign_.empty()) return foreign_;
      if (!differs_) return {};
      if (!BeginReplacement()) return slow;
    }
    error = EndReplacement();
    if (error ? error != kFileChanged : !differs_) break;
  }
  return error ? Reason("Cannot write", path_, error) : std::string();
}

std::string ProfileString(const ProfileFile& file, std::string_view section, std::string_view key,
                          std::string_view fallback) {
  while (fallback.ends_with(' ')) fallback.remove_suffix(1);
  const std::optional<std::string> value = file.Read(section, key);
  return std::string(FirstCharacters(value ? *value : fallback, kMostCharacters));
}

}  // namespace quorvane
