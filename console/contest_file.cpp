#include "console/contest_file.h"

#include <utility>

#include "console/race_records.h"
#include "records/profile_file.h"
#include "records/project_store.h"

namespace quorvane {
namespace {

constexpr std::size_t kLargestProject = std::size_t{256} << 20;

}  // namespace

std::error_code ReadProject(FileOps& files, const std::string& path, ContestRecord& contest) {
  std::string bytes;
  FileStamp stamp;
  if (const std::error_code error = files.ReadFile(path, kLargestProject, bytes, stamp)) return error;
  const ProfileFile text(std::move(bytes));
  contest =
      ReadContest({[&](const std::string& section, const std::string& key, const std::string& fallback) {
                     return ProfileString(text, section, key, fallback);
                   },
                   path});
  return {};
}

std::optional<std::string> SaveResults(FileOps& files, const std::string& path, const std::string& project,
                                       const std::string& bytes) {
  std::string target;
  FileStamp seen;
  FileStamp source;
  std::error_code error = files.Resolve(path, target);
  if (!error) error = files.Look(target, seen);
  if (!error) error = files.Look(project, source);
  if (error) return error.message();
  if (seen.kind != FileStamp::Kind::Missing) {
    if (seen.kind != FileStamp::Kind::File) return "it is not a file";
    if (seen.device == source.device && seen.number == source.number) return "it is the project itself";
  }
  error = ReplaceFile(files, target, bytes, seen);
  return error ? std::optional(error.message()) : std::nullopt;
}

}  // namespace quorvane
