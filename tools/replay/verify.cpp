#include "tools/replay/verify.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <set>
#include <utility>

#include "common/journal_text.h"
#include "common/text.h"
#include "records/profile_file.h"
#include "records/project.h"

namespace quorvane {
namespace {

struct Difference {
  std::int64_t ms;
  std::string what;
};

using Differences = std::vector<Difference>;

std::string Bytes(const std::string& path) {
  std::string bytes;
  FileStamp stamp;
  SystemFiles().ReadFile(path, std::size_t{1} << 30, bytes, stamp);
  return bytes;
}

std::string FrameText(const std::vector<Replay::Frame>& frames, std::size_t index) {
  if (index >= frames.size()) return "none";
  std::string record = SentRecord(frames[index].ms, frames[index].bytes);
  record.pop_back();
  return "\"" + record + "\"";
}

void CompareFrames(const SessionJournal& journal, const std::vector<Replay::Frame>& replayed,
                   Differences& differences) {
  std::vector<Replay::Frame> recorded;
  for (const JournalRecord& record : journal.records) {
    if (record.kind == JournalRecord::Kind::Sent) recorded.push_back({record.ms, record.event.bytes});
  }
  const auto equal = [](const Replay::Frame& a, const Replay::Frame& b) {
    return a.ms == b.ms && a.bytes == b.bytes;
  };
  const auto [first, second] =
      std::mismatch(recorded.begin(), recorded.end(), replayed.begin(), replayed.end(), equal);
  if (first == recorded.end() && second == replayed.end()) return;
  // A session that was killed may have lost what its last event sent.
  const bool lostTail = first == recorded.end() && !journal.hasEnd && second->ms >= journal.records.back().ms;
  if (lostTail) return;
  const auto index = static_cast<std::size_t>(first - recorded.begin());
  std::int64_t ms = kLastJournalMs;
  if (first != recorded.end()) ms = std::min(ms, first->ms);
  if (second != replayed.end()) ms = std::min(ms, second->ms);
  differences.push_back({ms, "frame " + std::to_string(index + 1) + ": recorded " +
                                 FrameText(recorded, index) + ", replayed " + FrameText(replayed, index)});
}

using Name = std::pair<std::string, std::string>;  // section, key

std::set<Name> NamesIn(const std::string& bytes) {
  std::set<Name> names;
  std::string section;
  std::string text = bytes;
  std::replace(text.begin(), text.end(), '\r', '\n');
  for (const std::string& line : Split(text, '\n')) {
    const std::size_t equals = line.find('=');
    if (line.starts_with('[')) {
      section = line.substr(1, line.find(']') - 1);
    } else if (equals != std::string::npos) {
      names.emplace(section, line.substr(0, equals));
    }
  }
  return names;
}

std::string ValueText(const std::optional<std::string>& value) {
  return value ? JsonString(*value) : "none";
}

// When the replay last gave the entry another value: that is where it took the other way.
std::int64_t TimeOfChange(const Name& name, const std::vector<const ReplayFiles::Version*>& versions,
                          std::int64_t otherwise) {
  std::int64_t ms = otherwise;
  std::optional<std::string> before;
  for (const ReplayFiles::Version* version : versions) {
    std::optional<std::string> now = ProfileFile(version->bytes).Read(name.first, name.second);
    if (now != before) ms = version->ms;
    before = std::move(now);
  }
  return ms;
}

void CompareProject(Replay& replay, const std::string& recordedPath, const std::string& copyPath,
                    Differences& differences) {
  const std::string recorded = Bytes(recordedPath);
  const std::string replayed = Bytes(copyPath);
  if (recorded == replayed) return;
  std::vector<const ReplayFiles::Version*> versions;
  const std::string fullPath = std::filesystem::weakly_canonical(copyPath).string();
  for (const auto& version : replay.files().Versions()) {
    if (version.path == copyPath || version.path == fullPath) versions.push_back(&version);
  }
  const ProfileFile first(recorded);
  const ProfileFile second(replayed);
  std::set<Name> names = NamesIn(recorded);
  names.merge(NamesIn(replayed));
  const std::size_t before = differences.size();
  for (const Name& name : names) {
    const auto was = first.Read(name.first, name.second);
    const auto is = second.Read(name.first, name.second);
    if (was == is) continue;
    differences.push_back({TimeOfChange(name, versions, replay.Now()),
                           recordedPath + ": [" + name.first + "] " + name.second + ": recorded " +
                               ValueText(was) + ", replayed " + ValueText(is)});
  }
  if (differences.size() == before) {
    differences.push_back({replay.Now(), recordedPath + ": the same values, differently written"});
  }
}

// Returns what was compared, for the operator.
std::string CompareProjects(Replay& replay, const std::string& project, Differences& differences,
                            std::vector<std::string>& notes) {
  std::string compared;
  for (const ReplayFolder::Copy& copy : replay.folder().Copies()) {
    const bool open = copy.path == replay.program().race().ProjectFile;
    const std::string recorded = open && !project.empty() ? project : copy.original;
    if (FileExists(recorded)) {
      CompareProject(replay, recorded, copy.path, differences);
      compared += ", " + recorded;
    } else if (FileExists(copy.path)) {
      notes.push_back(recorded + " is not there and was not compared");
    }
  }
  return compared;
}

}  // namespace

Verdict Verify(const SessionJournal& journal, Replay& replay, const std::string& project) {
  Verdict verdict;
  Differences differences;
  CompareFrames(journal, replay.Sent(), differences);
  const std::string compared = CompareProjects(replay, project, differences, verdict.notes);
  verdict.same = differences.empty();
  if (verdict.same) {
    verdict.text = "same: " + std::to_string(replay.Sent().size()) + " frames" + compared;
    return verdict;
  }
  const auto first = std::min_element(differences.begin(), differences.end(),
                                      [](const Difference& a, const Difference& b) { return a.ms < b.ms; });
  verdict.text = "different at " + std::to_string(first->ms) + " ms: " + first->what;
  return verdict;
}

}  // namespace quorvane
