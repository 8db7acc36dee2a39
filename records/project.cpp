#include "records/project.h"

#include <fmt/chrono.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <utility>

#include "base/text.h"

namespace quorvane {
namespace {

constexpr std::string_view kResultsHeader =
    "Round,Heat(racemode&time),Lane,Finish,Cuts,Time,Lap1,Lap2,Lap3,Lap4,Lap5,Lap6,Lap7,Lap8,Lap9,Lap10,"
    "Comments";

// "2:05 PM", with seconds "2:05:09 PM".
std::string TwelveHourClock(const std::tm& at, bool seconds) {
  return fmt::format("{}:{:%M}{} {:%p}", (at.tm_hour + 11) % 12 + 1, at,
                     seconds ? fmt::format(":{:%S}", at) : "", at);
}

double DaySerial(const LocalDateTime& at) {
  const std::int64_t seconds = (at - kDayZero).count();
  const std::int64_t days = seconds / 86400;
  return static_cast<double>(days) + static_cast<double>(seconds % 86400) / 86400.0;
}

}  // namespace

Project::Project(RaceState& race, FileOps& files, bool behind)
    : race_(race), files_(files), behind_(behind), store_(std::make_unique<ProjectStore>("", files)) {}

Project::Opened Project::Open(const std::string& path) {
  auto next = std::make_unique<ProjectStore>(path, files_);
  openProblem_ = next->Unreadable();
  if (!SameFile(next->Path(), store_->Path())) {
    const Opened opened = Use(std::move(next));
    if (opened == Opened::Yes) race_.ProjectFile = path;
    return opened;
  }
  // Under the name of a hard link it would be another file as soon as this one is saved.
  const bool onlyLinked = !SamePath(next->Path(), store_->Path());
  race_.ProjectFile = onlyLinked ? store_->Path() : path;
  return Opened::Yes;
}

Project::Opened Project::Use(std::unique_ptr<ProjectStore> next) {
  const auto left = std::find_if(unsaved_.begin(), unsaved_.end(),
                                 [&](const auto& store) { return SameFile(store->Path(), next->Path()); });
  if (left != unsaved_.end()) {
    next = std::move(*left);
    unsaved_.erase(left);
  } else if (!next->Unreadable().empty()) {
    return Opened::Unreadable;
  } else if (next->Kind() != FileKind::Empty && next->Kind() != FileKind::Project) {
    return Opened::NoProject;
  } else if (next->TryLock() == LockResult::HeldElsewhere) {
    return Opened::HeldElsewhere;
  }
  next->SetOwner([this] { return MayLook(); }, [this] { return race_.RaceActive; });
  if (behind_) next->SetPatience([this] { return Patience(); });
  TakeNews(*store_);
  if (!store_->Saved()) unsaved_.push_back(std::move(store_));
  store_ = std::move(next);
  return Opened::Yes;
}

bool Project::MayLook() {
  if (clock_ == nullptr) return true;
  if (race_.RaceActive && !race_.RaceDone) return false;
  const std::int64_t now = clock_->Now();
  if (now - lookedAt_ < kLookMs) return false;
  lookedAt_ = now;
  return true;
}

// ms. Of a disk that is well nobody notices either.
int Project::Patience() const {
  return race_.BeingFlown() ? 5 : 300;
}

std::vector<std::string> Project::TakeMoved() {
  TakeNews(*store_);
  return std::exchange(moved_, {});
}

std::map<std::string, std::string> Project::TakeReplaced() {
  TakeNews(*store_);
  return std::exchange(replaced_, {});
}

void Project::TakeNews(ProjectStore& store) {
  store.TakeMoved(moved_);
  if (std::string text = store.TakeReplaced(); !text.empty())
    replaced_.emplace(store.Path(), std::move(text));
}

std::vector<const ProjectStore*> Project::Unsaved() const {
  std::vector<const ProjectStore*> stores;
  for (const auto& store : unsaved_) stores.push_back(store.get());
  if (store_->Pending() > 0) stores.push_back(store_.get());
  return stores;
}

bool Project::Retry() {
  std::erase_if(unsaved_, [this](const auto& store) {
    const bool saved = store->Retry();
    TakeNews(*store);
    return saved;
  });
  store_->Retry();
  return Saved();
}

void Project::RetryByItself() {
  if (behind_ || !race_.BeingFlown()) Retry();
}

bool FileExists(const std::string& path) {
  std::error_code ignored;
  const auto status = std::filesystem::status(PathOf(path), ignored);
  return std::filesystem::exists(status) && !std::filesystem::is_directory(status);
}

bool FolderExists(const std::string& path) {
  std::error_code ignored;
  return std::filesystem::is_directory(PathOf(path), ignored);
}

std::string ParentFolder(const std::string& path) {
  const std::size_t at = path.find_last_of("\\/");
  return at == std::string::npos || at == 0 ? std::string() : path.substr(0, at + 1);
}

void MakeFolderPath(const std::string& path) {
  std::error_code ignored;
  std::filesystem::create_directories(PathOf(path), ignored);
}

std::string WithoutExtension(const std::string& path) {
  const std::size_t dot = path.rfind('.');
  return dot == std::string::npos || dot == 0 ? path : path.substr(0, dot);
}

std::string FileNameOf(const std::string& path) {
  return path.substr(path.find_last_of("\\/") + 1);
}

void CreateResultsFile(const std::string& path) {
  if (path.empty() || FileExists(path) || FolderExists(path)) return;
  std::ofstream file(PathOf(path), std::ios::binary);
  file << kResultsHeader << "\r\n";
}

std::string ProjectDate(const LocalDateTime& date) {
  return fmt::format("{:%d-%b-%Y}", CalendarOf(date));
}

std::string TimeOfDay(const LocalDateTime& at) {
  return TwelveHourClock(CalendarOf(at), false);
}

std::string TimestampText(const LocalDateTime& at) {
  const std::tm day = CalendarOf(at);
  return fmt::format("{}, {}/{}/{} {}", DaySerial(at), day.tm_mon + 1, day.tm_mday, day.tm_year + 1900,
                     TwelveHourClock(day, true));
}

}  // namespace quorvane
