#include "records/race_story.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>

#include "base/stations.h"
#include "base/text.h"
#include "records/project.h"

namespace quorvane {
namespace {

constexpr const char* kArrow = " \xE2\x86\x92 ";

void Remark(StoryRow& row, const std::string& text) {
  row.remark += (row.remark.empty() ? "" : "; ") + text;
}

void Doubt(StoryRow& row, const std::string& why) {
  Remark(row, why);
  row.doubtful = true;
}

std::string AmendedOn(const LocalDateTime& when) {
  return "amended " + ProjectDate(when) + ": ";
}

// Goes through a lane's log as it is counted.
class Story {
 public:
  Story(const RaceRecord& race, const LaneRecord& lane)
      : lane_(lane), laps_(FlownLaps(lane)), watchesTurns_(TurnsWereWatched(race)) {}

  std::vector<StoryRow> Tell() {
    for (const EntryRecord& entry : lane_.entries) {
      StoryRow row{.time = FormatSeconds(entry.time), .from = MakerText(entry.by)};
      if (entry.kind == "L") {
        TellLap(row, entry);
      } else if (entry.kind == "T") {
        TellTurn(row);
      } else {
        TellCut(row, entry);
      }
      rows_.push_back(row);
    }
    DoubtLastTurn();
    for (const CorrectionRecord& correction : lane_.corrections) TellCorrection(correction);
    for (const AmendedText& place : lane_.places) {
      rows_.push_back({.time = TimeOfDay(place.when),
                       .what = "Placed",
                       .remark = AmendedOn(place.when) + place.before + kArrow + place.after,
                       .correction = true});
    }
    return rows_;
  }

 private:
  int FreeLaps() const { return lane_.novice ? 1 : 0; }

  void TellLap(StoryRow& row, const EntryRecord& entry) {
    row.what = fmt::format("Lap {}", entry.count - FreeLaps());
    if (lane_.novice && entry.count == 1) {
      row.what = "Free lap";
      return;
    }
    const auto flown = std::ranges::find_if(laps_, [&](const FlownLap& lap) {
      return lap.number == entry.count - FreeLaps() && lap.time == entry.time;
    });
    if (flown != laps_.end() && flown->split) row.split = FormatSeconds(*flown->split);
    if (entry.count > lane_.lapTarget) return Remark(row, "after the finish");
    if (flown == laps_.end()) Remark(row, "replaced by a later entry");
    if (watchesTurns_ && turn_ < 0) Doubt(row, "LAP WITHOUT ITS TURN");
    turn_ = -1;
    finished_ = entry.count == lane_.lapTarget;
    if (finished_) Remark(row, "finish");
  }

  void TellTurn(StoryRow& row) {
    row.what = "Turn";
    if (finished_) return Remark(row, "after the finish");
    DoubtLastTurn();
    turn_ = std::ssize(rows_);
  }

  void TellCut(StoryRow& row, const EntryRecord& entry) {
    const bool withdrawn = entry.kind == "-C";
    row.what = withdrawn || entry.kind == "C" ? "Cut " + entry.pylon : entry.kind;
    if (withdrawn) Remark(row, "withdrawn");
    if (entry.firstReported != 0 && entry.firstReported != entry.time) {
      Remark(row, "first reported " + FormatSeconds(entry.firstReported));
    }
    if (finished_) return Remark(row, "after the finish");
    Remark(row, fmt::format("in lap {}", std::max(1, entry.count - FreeLaps() + 1)));
  }

  // No lap came between it and the next one, or the end of the log.
  void DoubtLastTurn() {
    if (turn_ >= 0) Doubt(rows_[static_cast<std::size_t>(turn_)], "TURN WITHOUT ITS LAP");
    turn_ = -1;
  }

  // As the entries are told: the free lap of a novice is no lap.
  std::string Told(EntryRecord entry) const {
    if (entry.kind == "L") entry.count -= FreeLaps();
    return EntryText(entry);
  }

  void TellCorrection(const CorrectionRecord& correction) {
    const auto& amended = correction.amended;
    StoryRow row{.time = correction.time > 0 ? FormatSeconds(correction.time)
                         : amended           ? TimeOfDay(*amended)
                                             : "amended",
                 .what = correction.what,
                 .from = MakerText(correction.by),
                 .correction = true};
    if (!row.what.empty())
      row.what[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(row.what[0])));
    if (amended) row.remark = AmendedOn(*amended);
    if (correction.before) row.remark += Told(*correction.before);
    if (correction.after) row.remark += (correction.before ? kArrow : "") + Told(*correction.after);
    rows_.push_back(row);
  }

  const LaneRecord& lane_;
  const std::vector<FlownLap> laps_;
  const bool watchesTurns_;
  std::vector<StoryRow> rows_;
  std::ptrdiff_t turn_ = -1;  // the row of a turn that has no lap yet; -1: none
  bool finished_ = false;
};

}  // namespace

bool TurnsWereWatched(const RaceRecord& race) {
  return std::ranges::any_of(FlyingLanes(race), [](const LaneRecord& lane) { return !lane.turns.empty(); });
}

std::string MakerText(const std::string& by) {
  if (by == "hand") return "by hand";
  if (by == "TM or hand") return "Timers or hand";
  const auto code = std::ranges::find(StationCodes, by);
  if (code == StationCodes.end()) return by;
  const auto name = StationNames[static_cast<std::size_t>(code - StationCodes.begin())];
  return std::string(name.empty() ? *code : name);
}

std::vector<StoryRow> StoryOf(const RaceRecord& race, const LaneRecord& lane) {
  return Story(race, lane).Tell();
}

}  // namespace quorvane
