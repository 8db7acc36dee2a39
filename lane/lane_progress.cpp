#include "lane/lane_progress.h"

#include <algorithm>

#include "base/text.h"

namespace quorvane {

LaneProgress ProgressOf(const LaneLog& log, bool isFaiMode, bool novice) {
  const LapRecount counts = RecountLaps(log, isFaiMode);
  const bool freeLap = novice || log.FreeLap() >= 0;
  LaneProgress progress{.due = counts.lapTarget - (freeLap ? 1 : 0), .mayWin = counts.cutsBeforeFinish < 2};
  std::int32_t before = 0;
  for (const LaneEvent& event : log.Entries()) {
    if (event.Kind != "L") continue;
    if (!progress.towards.empty()) before = progress.towards.back();
    progress.towards.push_back(event.EventTime);
  }
  std::vector<std::int32_t>& laps = progress.towards;
  const int credited = freeLap && !laps.empty() ? 1 : 0;
  progress.flown = static_cast<int>(laps.size()) - credited;
  // The credited lap ends with the first one that is flown.
  if (!laps.empty()) progress.lastLap = laps.back() - (laps.size() == 2 && credited == 1 ? 0 : before);
  progress.toAdd = counts.lapTarget - 10;
  for (; progress.toAdd > 0 && !laps.empty(); --progress.toAdd) {
    progress.before = laps.front();
    laps.erase(laps.begin());
  }
  laps.resize(std::min<std::size_t>(laps.size(), 10));
  return progress;
}

// The leader has flown most of the laps towards a result, and of those that many the one that was first
// there. A lane that can have no result leads nobody.
//
// The gap is taken where this lane was timed last: by how much it came later to that lap than the leader. So
// it stands still between two laps, and does not jump each time when the leader comes round. Only when the
// leader was there a lap earlier already, or is by now more than a lap on, whole laps are told.
std::string GapText(std::span<const LaneProgress> lanes, std::size_t of) {
  const LaneProgress& lane = lanes[of];
  const auto before = [](const LaneProgress& a, const LaneProgress& b) {
    if (a.mayWin != b.mayWin) return a.mayWin;
    if (a.towards.size() != b.towards.size()) return a.towards.size() > b.towards.size();
    return !a.towards.empty() && a.towards.back() < b.towards.back();
  };
  const LaneProgress& leader = *std::ranges::min_element(lanes, before);
  if (!lane.shown || !lane.mayWin || leader.towards.empty()) return "";
  if (&lane == &leader) return "Leader";
  const std::size_t laps = lane.towards.size();
  const std::int32_t at = laps == 0 ? lane.before : lane.towards.back();
  const auto ahead =
      static_cast<std::size_t>(std::ranges::upper_bound(leader.towards, at) - leader.towards.begin());
  const std::size_t toCome = leader.towards.size() - laps + static_cast<std::size_t>(lane.toAdd);
  const std::size_t behind = std::max(ahead > laps ? ahead - laps : 0, toCome > 1 ? toCome - 1 : 0);
  if (behind > 0) return "-" + std::to_string(behind) + (behind == 1 ? " lap" : " laps");
  if (at == 0) return "";
  const std::int32_t gap = at - (laps == 0 ? 0 : leader.towards[laps - 1]);
  return "+" + (gap < 1 ? "0.00" : FormatSeconds(gap));
}

}  // namespace quorvane
