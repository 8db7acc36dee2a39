// The two recounts of a lane's log.

#include <fmt/format.h>

#include <algorithm>

#include "base/text.h"
#include "lane/lane_log.h"

namespace quorvane {
namespace {

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

}  // namespace

LapRecount RecountLaps(const LaneLog& log, bool isFaiMode) {
  LapRecount r;
  for (const LaneEvent& event : log.Entries()) {
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
  CutRecount r;
  int lastTurnLap = -1;
  const auto mark = [&](const LaneEvent& event) {
    const int index = r.turns + r.cutCount;
    if (index > kLastCutMark) return;
    const bool turn = event.Kind == "T";
    const bool white = r.laps < r.lapTarget || (turn && r.laps == r.lapTarget);
    const std::string time = FormatSeconds(event.EventTime);
    const std::string tag = fmt::format("{} {} {}", event.Kind, event.SourceName, time);
    r.marks.push_back(
        {index, std::min<int>(event.Count, kLastLapCell), !white, turn ? "T  " + time : tag, tag});
  };
  for (const LaneEvent& event : log.Entries()) {
    if (event.Kind == "L" && r.laps <= r.lapTarget) ++r.laps;
    if (event.Kind == "T" && event.Count > lastTurnLap) {  // only the first turn of a lap is shown
      lastTurnLap = event.Count;
      mark(event);
      if (r.turns <= r.lapTarget) ++r.turns;
    }
    if (event.Kind == "C") {
      if (r.laps + r.cutCount > kLastCutMark) {
        r.cutCount = static_cast<std::int16_t>(kLastCutMark - r.laps - 1);
      }
      if (event.Count < r.lapTarget && !isFaiMode) r.lapTarget = kLapsWithCut;
      mark(event);
      ++r.pylonCuts[TallyIndex(log[0])];
      ++r.cutCount;
    }
  }
  const LapRecount laps = RecountLaps(log, isFaiMode);
  r.cutsBeforeFinish = laps.cutsBeforeFinish;
  r.finalTime = laps.finalTime;
  return r;
}

}  // namespace quorvane
