#include "results/contest_summary.h"

namespace quorvane {
namespace {

void Keep(std::optional<BestTime>& best, const BestTime& time) {
  if (!best || time.time < best->time) best = time;
}

void AddLane(FlightSummary& summary, const RaceRecord& race, const LaneRecord& lane) {
  summary.cuts += static_cast<int>(lane.cuts.size());
  if (HasResult(lane)) Keep(summary.fastestHeat, {lane.final, race.number, race.refly, lane.lane, 0});
  if (const auto lap = FastestLap(lane)) {
    Keep(summary.fastestLap, {*lap->split, race.number, race.refly, lane.lane, lap->number});
  }
}

}  // namespace

ContestSummary SummaryOf(const ContestRecord& contest) {
  ContestSummary summary;
  for (const RaceRecord& race : contest.races) {
    if (!race.stands || !race.hasRun) continue;
    ++summary.racesFlown;
    for (std::size_t i = 0; i < race.lanes.size(); ++i) {
      const LaneRecord& lane = race.lanes[i];
      summary.lanes[i].name = lane.name;
      if (!lane.flies || !HasFlown(lane)) continue;
      ++summary.lanes[i].racesFlown;
      AddLane(summary.lanes[i], race, lane);
      AddLane(summary, race, lane);
    }
  }
  return summary;
}

}  // namespace quorvane
