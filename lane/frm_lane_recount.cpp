// The two recounts of a lane's log.

#include <algorithm>

#include "base/time_text.h"
#include "lane/lane_log.h"

namespace quorvane {
namespace {

constexpr int kLapsOfRace = 10;
constexpr int kLapsWithCut = 11;
constexpr std::int32_t kDisqualifiedTime = 200000;

// A cut from a judge or the starter belongs to the pylon that its name gives as a number; the names of the
// station table are no numbers, and then the station itself is the pylon.
std::size_t TallyIndex(const LaneEvent& event) {
  if (event.Source > 3) return 3;
  const std::string& name = event.SourceName;
  if (name.size() == 1 && name[0] >= '0' && name[0] <= '3') return static_cast<std::size_t>(name[0] - '0');
  return event.Source;
}

// Replays the log for RecountCuts, entry by entry, because what a mark looks like depends on the counts
// before it.
class CutReplay {
 public:
  CutReplay(const LaneLog& log, bool isFaiMode) : log_(log), isFaiMode_(isFaiMode) {}

  CutRecount Run() {
    for (int i = 0; i < log_.EventCount(); ++i) {
      const LaneEvent& event = log_[i];
      if (event.Kind == "T") Turn(event);
      if (event.Kind == "L" && r_.laps < r_.lapTarget + 1) ++r_.laps;
      if (event.Kind == "C") Cut(event);
    }
    r_.cutsBeforeFinish = RecountLaps(log_, isFaiMode_).cutsBeforeFinish;
    return std::move(r_);
  }

 private:
  void Turn(const LaneEvent& event) {
    if (event.Count <= lastTurnLap_) return;  // only the first turn of a lap is shown
    lastTurnLap_ = event.Count;
    PlaceMark(event, "T  " + FormatSeconds(event.EventTime));
    if (r_.turns < r_.lapTarget + 1) ++r_.turns;
  }

  void Cut(const LaneEvent& event) {
    if (r_.laps + r_.cutCount > kLastCutMark) {
      r_.cutCount = static_cast<std::int16_t>(kLastCutMark - r_.laps - 1);
    }
    if (event.Count < r_.lapTarget && !isFaiMode_) r_.lapTarget = kLapsWithCut;
    PlaceMark(event, "C " + event.SourceName + " " + FormatSeconds(event.EventTime));
    ++r_.pylonCuts[TallyIndex(log_[0])];
    ++r_.cutCount;
  }

  void PlaceMark(const LaneEvent& event, std::string text) {
    const int index = r_.turns + r_.cutCount;
    if (index > kLastCutMark) return;
    const bool white = r_.laps < r_.lapTarget || (event.Kind == "T" && r_.laps == r_.lapTarget);
    r_.marks.push_back({index, std::min<int>(event.Count, kLastLapCell), !white, std::move(text),
                        event.Kind + " " + event.SourceName + " " + FormatSeconds(event.EventTime)});
  }

  const LaneLog& log_;
  const bool isFaiMode_;
  CutRecount r_;
  int lastTurnLap_ = -1;
};

}  // namespace

LapRecount RecountLaps(const LaneLog& log, bool isFaiMode) {
  LapRecount r;
  r.lapTarget = kLapsOfRace;
  for (int i = 0; i < log.EventCount(); ++i) {
    const LaneEvent& event = log[i];
    if (event.Kind == "L") {
      r.laps = event.Count;
      if (r.laps == r.lapTarget) {
        r.finalTime = isFaiMode && r.cutsBeforeFinish >= 2 ? kDisqualifiedTime : event.EventTime;
      }
    } else if (event.Kind == "C") {
      if (r.laps < r.lapTarget) {
        ++r.cutsBeforeFinish;
        if (!isFaiMode) r.lapTarget = kLapsWithCut;
      }
      ++r.cutCount;
      ++r.pylonCuts[TallyIndex(event)];
    }
  }
  return r;
}

CutRecount RecountCuts(const LaneLog& log, bool isFaiMode) {
  return CutReplay(log, isFaiMode).Run();
}

}  // namespace quorvane
