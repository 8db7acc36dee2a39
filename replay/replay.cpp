#include "replay/replay.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>

#include "base/text.h"
#include "records/project.h"
#include "results/results_formats.h"

namespace quorvane {
namespace {

constexpr const char* kProjectSection = "DiskFile";
constexpr const char* kProjectKey = "FileName";

// The program was killed while a box was open. No std::exception, like NoWayOut.
struct KilledInBox {};

constexpr std::size_t kMostCopied = std::size_t{64} << 20;

void PutFile(const std::string& path, const std::string& bytes) {
  MakeFolderPath(ParentFolder(path));
  std::ofstream(PathOf(path), std::ios::binary) << bytes;
}

// With its last separator.
std::string MakeTemporaryFolder() {
  std::random_device random;
  std::filesystem::path folder;
  do {
    folder = std::filesystem::temp_directory_path() / ("quorvane-replay-" + std::to_string(random()));
  } while (!std::filesystem::create_directory(folder));
  return folder.string() + "/";
}

}  // namespace

std::error_code ReplayFiles::Rename(const std::string& from, const std::string& to) {
  if (clock_) versions_.push_back({clock_(), to, ContentOf(from, kMostReplayed).value_or("")});
  return FileOps::Rename(from, to);
}

LockResult ReplayFiles::Lock(const std::string& target, FileLock& lock) {
  return held_[WholePath(target)] ? LockResult::HeldElsewhere : FileOps::Lock(target, lock);
}

void ReplayFolder::Remove() {
  std::error_code ignored;
  if (!folder_.empty()) std::filesystem::remove_all(PathOf(folder_), ignored);
}

const ReplayFolder::Copy* ReplayFolder::Find(const std::string& original) const {
  const auto found = std::ranges::find_if(
      copies_, [&](const Copy& copy) { return copy.original == original || copy.path == original; });
  return found == copies_.end() ? nullptr : &*found;
}

const std::string& ReplayFolder::CopyOf(const std::string& original, bool asItStands) {
  if (const Copy* copy = Find(original)) return copy->path;
  if (folder_.empty()) folder_ = MakeTemporaryFolder();
  std::string name = FileNameOf(original);
  if (name.empty() || name == "." || name == "..") name = "project.ini";
  // Files of one name from several folders must not meet.
  const std::string folder = folder_ + (copies_.empty() ? "" : std::to_string(copies_.size()) + "/");
  const auto same = journal_.sameFiles.find(original);
  if (same != journal_.sameFiles.end() && !journal_.sameFiles.contains(same->second)) {
    const std::string copy = WholePath(CopyOf(same->second));
    MakeFolderPath(folder);
    std::error_code ignored;
    std::filesystem::create_symlink(PathOf(copy), PathOf(folder + name), ignored);
  }
  const std::string& path = Use(folder + name, original);
  if (!asItStands || FileExists(path)) return path;
  if (const auto bytes = ContentOf(original, kMostCopied)) PutFile(path, *bytes);
  return path;
}

const std::string& ReplayFolder::Use(const std::string& path, const std::string& original) {
  copies_.push_back({original, path});
  const auto kept = std::ranges::find(journal_.projects, original, &SessionJournal::KeptProject::path);
  if (kept != journal_.projects.end() && !FileExists(path)) PutFile(path, kept->bytes);
  return copies_.back().path;
}

Replay::Replay(const SessionJournal& journal, const ReplayOptions& options)
    : journal_(journal), options_(options), folder_(journal), program_(platform_, serial_, files_) {
  platform_.start = journal_.start;
  platform_.mostDismissals = 1;
  platform_.whileOpen = [this](const DialogBox&) { WhileOpen(); };
  for (const auto& setting : journal_.settings) {
    platform_.settings.SaveSetting(setting.section, setting.key, setting.value);
  }
  std::string recorded = platform_.settings.GetSetting(kProjectSection, kProjectKey, "");
  if (recorded.empty()) recorded = ProjectDate(journal_.start) + ".ini";
  const std::string project =
      options_.project.empty() ? folder_.CopyOf(recorded) : folder_.Use(options_.project, recorded);
  PutKeptRaces(recorded, project);
  platform_.settings.SaveSetting(kProjectSection, kProjectKey, project);
  platform_.homeFolder = ParentFolder(project);
  platform_.programFolder = platform_.homeFolder;
  if (options_.verify) files_.KeepVersions([this] { return Now(); });
  program_.door().SetJournal(&made_);
}

void Replay::Run() {
  try {
    while (!platform_.ended && Step()) {
    }
  } catch (const NoWayOut& way) {
    stuckIn_ = OneLine(way.box.title + ": " + way.box.text);
  } catch (const KilledInBox&) {
  }
}

// The next thing that happens: in one and the same millisecond records come before timers.
bool Replay::Step() {
  if (next_ >= journal_.records.size()) return false;
  const JournalRecord& record = journal_.records[next_];
  if (!journal_.timersRecorded && platform_.FireTimerBefore(program_.door(), record.ms)) return true;
  ++next_;
  platform_.SetClock(record.ms);
  Take(record);
  return true;
}

// Time goes on behind an open box until it has its answer.
void Replay::WhileOpen() {
  while (!platform_.ended && platform_.answers.empty() && Step()) {
  }
  if (platform_.answers.empty() && options_.verify && !journal_.hasEnd) throw KilledInBox{};
}

void Replay::Take(const JournalRecord& record) {
  switch (record.kind) {
    case JournalRecord::Kind::Input:
      TakeEvent(record);
      return;
    case JournalRecord::Kind::Answer: {
      DialogAnswer answer = record.answer;
      const bool file = answer.word == DialogAnswer::Word::File && !answer.text.empty();
      if (file) answer.text = PathFor(answer.text);
      platform_.answers.push_back(answer);
      return;
    }
    case JournalRecord::Kind::Busy:
      serial_.busy[record.port] = {record.event.number, record.event.text};
      return;
    case JournalRecord::Kind::Held:
    case JournalRecord::Kind::Free:
      files_.Hold(PathFor(record.event.text), record.kind == JournalRecord::Kind::Held);
      return;
    case JournalRecord::Kind::Clock:
      platform_.start = AddMilliseconds(record.moment, -(record.ms - record.ms % 1000));
      program_.door().FollowLocalClock();
      return;
    case JournalRecord::Kind::Computer:
      platform_.computer = record.computer;
      platform_.computer.utcMs -= record.ms;
      platform_.computer.sinceBootMs -= record.ms;
      return;
    case JournalRecord::Kind::Sent:
    case JournalRecord::Kind::End:
      return;
  }
}

// The file that stands for this one of the journal.
std::string Replay::PathFor(const std::string& named) {
  const bool first = !folder_.HasCopyOf(named);
  if (first && options_.inPlace) return named;
  std::string path = folder_.CopyOf(named, !journal_.timersRecorded);
  if (first) PutKeptRaces(named, path);
  return path;
}

// The races that the session has found beside a project.
void Replay::PutKeptRaces(const std::string& original, const std::string& copy) {
  for (const char* ending : kKeptRaces) {
    const auto found = std::ranges::find(journal_.projects, BesideProject(original, ending),
                                         &SessionJournal::KeptProject::path);
    if (found != journal_.projects.end()) program_.keeper().Keep(BesideProject(copy, ending), found->bytes);
  }
}

void Replay::TakeEvent(const JournalRecord& record) {
  const Event& event = record.event;
  if (event.kind == EventKind::Ports) {
    serial_.ports = {event.numbers.begin(), event.numbers.end()};
    if (!loaded_) return;
  }
  if (event.kind == EventKind::Load) loaded_ = true;
  if (!Names(event)) {
    notes_.push_back("line " + std::to_string(record.line) + ": there is no " + event.target +
                     ", the record does nothing");
    return;
  }
  if (event.kind == EventKind::Timer) {
    program_.door().FireTimer(*program_.door().AllForms().FindControl(event.target));
  } else {
    program_.door().Enter(event);
  }
}

// Whether the program has what the record names.
bool Replay::Names(const Event& event) {
  if (event.target.empty()) return true;
  const Forms& forms = program_.door().AllForms();
  if (event.target.find('.') == std::string::npos) return forms.Find(event.target) != nullptr;
  const Control* control = forms.FindControl(event.target);
  return control != nullptr && (event.kind != EventKind::Timer || control->Kind() == ControlKind::Timer);
}

}  // namespace quorvane
