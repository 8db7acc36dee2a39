#include "results/contest_file.h"

#include <functional>
#include <utility>

#include "files/output_guard.h"
#include "records/lane_colors.h"
#include "records/profile_file.h"
#include "records/project_store.h"
#include "results/race_records.h"

namespace quorvane {
namespace {

constexpr std::size_t kLargestProject = std::size_t{256} << 20;

std::error_code Read(FileOps& files, const std::string& path, const std::function<void(ProjectSource)>& use) {
  std::string bytes;
  FileStamp stamp;
  if (const std::error_code error = files.ReadFile(path, kLargestProject, bytes, stamp)) return error;
  const ProfileFile text(std::move(bytes));
  const auto read = [&text](const std::string& section, const std::string& key, const std::string& fallback) {
    return ProfileString(text, section, key, fallback);
  };
  use({read, TextFromBytes(path)});
  return {};
}

}  // namespace

std::error_code ReadProject(FileOps& files, const std::string& path, ContestRecord& contest) {
  return Read(files, path, [&](const ProjectSource& project) { contest = ReadContest(project); });
}

std::error_code ReadRaces(FileOps& files, const std::string& path, const SettingsStore& settings,
                          const std::vector<int>& numbers, std::vector<RaceRecord>& races) {
  return Read(files, path, [&](ProjectSource project) {
    project.laneColorScheme = LoadLaneColorScheme(settings);
    for (const int number : numbers) races.push_back(ReadRace(project, number));
    if (!numbers.empty()) return;
    races = ReadContest(project).races;
    std::erase_if(races, [](const RaceRecord& race) { return !race.stands; });
  });
}

std::optional<std::string> SaveResults(FileOps& files, const std::string& path, const std::string& project,
                                       const std::string& bytes) {
  if (auto reason = WhyNotWrite(path, FileKind::Other, {project})) return reason;
  std::string target;
  FileStamp seen;
  std::error_code error = files.Resolve(path, target);
  if (!error) error = files.Look(target, seen);
  if (!error) error = ReplaceFile(files, target, bytes, seen);
  return error ? std::optional(error.message()) : std::nullopt;
}

}  // namespace quorvane
