// Whether a replay has gone as its session did.

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <set>
#include <utility>

#include "base/text.h"
#include "journal/journal_text.h"
#include "records/profile_file.h"
#include "records/project.h"
#include "replay/replay.h"

namespace quorvane {
namespace {

struct Difference {
  std::int64_t ms;
  std::string what;
};

using Differences = std::vector<Difference>;

std::string FrameText(const std::vector<Replay::Frame>& frames, std::size_t index) {
  if (index >= frames.size()) return "none";
  std::string record = FrameRecords({frames[index]});
  record.pop_back();
  return "\"" + record + "\"";
}

void CompareFrames(const SessionJournal& journal, const std::vector<Replay::Frame>& replayed,
                   Differences& differences) {
  std::vector<Replay::Frame> recorded;
  for (const JournalRecord& record : journal.records) {
    if (record.kind == JournalRecord::Kind::Sent) recorded.push_back({record.ms, record.event.bytes});
  }
  const auto [first, second] = std::ranges::mismatch(recorded, replayed);
  if (first == recorded.end() && second == replayed.end()) return;
  // A session that was killed may have lost what its last event sent.
  const bool lostTail = first == recorded.end() && !journal.hasEnd && second->ms >= journal.LastMs();
  if (lostTail) return;
  const auto index = static_cast<std::size_t>(first - recorded.begin());
  const std::int64_t ms = std::min(first == recorded.end() ? kLastJournalMs : first->ms,
                                   second == replayed.end() ? kLastJournalMs : second->ms);
  differences.push_back({ms, fmt::format("frame {}: recorded {}, replayed {}", index + 1,
                                         FrameText(recorded, index), FrameText(replayed, index))});
}

using Name = std::pair<std::string, std::string>;  // section, key

std::set<Name> NamesIn(const std::string& bytes) {
  std::set<Name> names;
  std::string section;
  for (const std::string& line : Split(Replaced(bytes, "\r", "\n"), '\n')) {
    const std::size_t equals = line.find('=');
    if (line.starts_with('[')) {
      section = line.substr(1, line.find(']') - 1);
    } else if (equals != std::string::npos) {
      names.emplace(section, line.substr(0, equals));
    }
  }
  return names;
}

// The race that an entry belongs to: "Race5" for the section "Race5" or "Race5_Lane2", "Refly1" likewise,
// otherwise "". Which refly repeats a race may be said in it much later.
std::string RaceOf(const Name& name) {
  const std::string race = name.first.substr(0, name.first.find('_'));
  const std::size_t digits = race.find_first_of("0123456789");
  const std::string word = race.substr(0, digits);
  const bool numbered =
      digits != std::string::npos && race.find_first_not_of("0123456789", digits) == std::string::npos;
  return numbered && (word == "Race" || word == "Refly") && name.second != "ReflyID" ? race : "";
}

// One project file as the session left it, and as the replay did.
class ProjectComparison {
 public:
  ProjectComparison(const SessionJournal& journal, Replay& replay, std::string path, std::string recorded,
                    std::string copyPath)
      : journal_(journal),
        replay_(replay),
        path_(std::move(path)),
        copyPath_(std::move(copyPath)),
        recordedBytes_(std::move(recorded)),
        replayedBytes_(ContentOf(copyPath_, kMostReplayed).value_or("")) {}

  void Compare(Differences& differences, std::vector<std::string>& notes) {
    if (recordedBytes_ == replayedBytes_) return;
    std::set<Name> names = NamesIn(recordedBytes_);
    names.merge(NamesIn(replayedBytes_));
    Differences elsewhere;
    std::set<std::string> later;
    const std::size_t before = differences.size();
    for (const Name& name : names) {
      const std::string race = RaceOf(name);
      if (!race.empty() && IsLater(race)) {
        later.insert(race);
      } else if (auto difference = DifferenceIn(name)) {
        (race.empty() ? elsewhere : differences).push_back(std::move(*difference));
      }
    }
    // What is no race follows the contest, which has gone on when the journal has no end, or races have come.
    if (journal_.hasEnd && later.empty()) {
      if (differences.size() == before && elsewhere.empty()) {
        elsewhere.push_back({replay_.Now(), path_ + ": the same values, differently written"});
      }
      differences.insert(differences.end(), elsewhere.begin(), elsewhere.end());
    }
    if (later.empty()) return;
    notes.push_back(fmt::format("{} has gone on after the journal: {}", path_, fmt::join(later, ", ")));
  }

 private:
  // Whether the race was saved after the journal's last moment.
  bool IsLater(const std::string& race) const {
    const std::string saved = recorded_.Read(race, "Timestamp").value_or("");
    const double lastSecond =
        LeadingNumber(TimestampText(AddMilliseconds(journal_.start, journal_.LastMs())));
    const double moment = LeadingNumber(saved);
    return moment > lastSecond || (moment == lastSecond && replayed_.Read(race, "Timestamp") != saved);
  }

  std::optional<Difference> DifferenceIn(const Name& name) const {
    const auto was = recorded_.Read(name.first, name.second);
    const auto is = replayed_.Read(name.first, name.second);
    if (was == is) return std::nullopt;
    const std::int64_t ms = TimeOfChange(name);
    // A session that was killed may have lost what its last event saved.
    if (!journal_.hasEnd && ms >= journal_.LastMs()) return std::nullopt;
    return Difference{ms, fmt::format("{}: [{}] {}: recorded {}, replayed {}", path_, name.first, name.second,
                                      was ? JsonString(*was) : "none", is ? JsonString(*is) : "none")};
  }

  // When the replay last gave the entry another value: that is where it took the other way.
  std::int64_t TimeOfChange(const Name& name) const {
    std::int64_t ms = replay_.Now();
    std::optional<std::string> before;
    for (const ReplayFiles::Version& version : replay_.files().Versions()) {
      if (!SamePath(version.path, copyPath_)) continue;
      std::optional<std::string> now = ProfileFile(version.bytes).Read(name.first, name.second);
      if (now != before) ms = version.ms;
      before = std::move(now);
    }
    return ms;
  }

  const SessionJournal& journal_;
  Replay& replay_;
  const std::string path_;
  const std::string copyPath_;
  const std::string recordedBytes_;
  const std::string replayedBytes_;
  const ProfileFile recorded_{recordedBytes_};
  const ProfileFile replayed_{replayedBytes_};
};

// What was compared, for the operator: only files that the session has opened as its project.
std::string CompareProjects(const SessionJournal& journal, Replay& replay, const std::string& project,
                            Differences& differences, std::vector<std::string>& notes) {
  std::string compared;
  for (const ReplayFolder::Copy& copy : replay.folder().Copies()) {
    const bool otherName = journal.sameFiles.contains(copy.original);
    if (otherName || !replay.Projects().contains(copy.path)) continue;
    const bool open = SamePath(copy.path, replay.program().race().ProjectFile);
    const std::string recorded = open && !project.empty() ? project : copy.original;
    if (auto bytes = ContentOf(recorded, kMostReplayed)) {
      ProjectComparison(journal, replay, recorded, std::move(*bytes), copy.path).Compare(differences, notes);
      compared += ", " + recorded;
    } else if (FileExists(copy.path)) {
      notes.push_back(recorded + (FileExists(recorded) ? " cannot be read" : " is not there") +
                      " and was not compared");
    }
  }
  return compared;
}

// "same", and up to where when the journal does not go to the end of its session.
std::string SameWords(const SessionJournal& journal) {
  if (journal.hasEnd) return "same";
  const std::string ms = std::to_string(journal.LastMs()) + " ms, where the ";
  return "same up to " + ms + (journal.stoppedMs >= 0 ? "recording was stopped" : "journal breaks off");
}

}  // namespace

Verdict Verify(const SessionJournal& journal, Replay& replay, const std::string& project) {
  Verdict verdict;
  Differences differences;
  CompareFrames(journal, replay.Sent(), differences);
  const std::string compared = CompareProjects(journal, replay, project, differences, verdict.notes);
  verdict.same = differences.empty();
  if (verdict.same) {
    verdict.text = SameWords(journal) + ": " + std::to_string(replay.Sent().size()) + " frames" + compared;
    return verdict;
  }
  const auto first = std::ranges::min_element(differences, {}, &Difference::ms);
  verdict.text = "different at " + std::to_string(first->ms) + " ms: " + first->what;
  return verdict;
}

}  // namespace quorvane
