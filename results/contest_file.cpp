#include "results/contest_file.h"

#include <utility>

#include "files/output_guard.h"
#include "records/lane_colors.h"
#include "records/profile_file.h"
#include "records/project_store.h"
#include "results/race_records.h"

namespace quorvane {
namespace {

constexpr std::size_t kLargestProject = std::size_t{256} << 20;

std::error_code ReadText(FileOps& files, const std::string& path, ProfileFile& text) {
  std::string bytes;
  FileStamp stamp;
  if (const std::error_code error = files.ReadFile(path, kLargestProject, bytes, stamp)) return error;
  text = ProfileFile(std::move(bytes));
  return {};
}

// Good for as long as the text lives.
ProjectSource SourceOf(const ProfileFile& text, const std::string& path) {
  return {[&text](const std::string& section, const std::string& key, const std::string& fallback) {
            return ProfileString(text, section, key, fallback);
          },
          TextFromBytes(path)};
}

}  // namespace

std::error_code ReadProject(FileOps& files, const std::string& path, ContestRecord& contest) {
  ProfileFile text("");
  if (const std::error_code error = ReadText(files, path, text)) return error;
  contest = ReadContest(SourceOf(text, path));
  return {};
}

std::error_code ReadRaces(FileOps& files, const std::string& path, const SettingsStore& settings,
                          const std::vector<int>& numbers, std::vector<RaceRecord>& races) {
  ProfileFile text("");
  if (const std::error_code error = ReadText(files, path, text)) return error;
  ProjectSource project = SourceOf(text, path);
  project.laneColorScheme = LoadLaneColorScheme(settings);
  for (const int number : numbers) races.push_back(ReadRace(project, number));
  if (!numbers.empty()) return {};
  for (RaceRecord& race : ReadContest(project).races) {
    if (race.stands) races.push_back(std::move(race));
  }
  return {};
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
