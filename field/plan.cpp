#include "field/plan.h"

#include <algorithm>

namespace quorvane::field {
namespace {

constexpr int kFinishGap = 400;  // ms between two finishing times

enum class Fate { kClean, kOneCut, kDoubleCut, kStops, kStopsWithCut };

Fate DrawFate(std::mt19937& random, bool must_finish) {
  const int roll = Draw(random, 100);
  if (must_finish) return roll < 60 ? Fate::kClean : Fate::kOneCut;
  if (roll < 45) return Fate::kClean;
  if (roll < 65) return Fate::kOneCut;
  if (roll < 80) return Fate::kDoubleCut;
  return roll < 92 ? Fate::kStops : Fate::kStopsWithCut;
}

void FlyLaps(std::mt19937& random, LanePlan& lane, int count, bool quick) {
  const int usual = quick ? 3900 + Draw(random, 400) : 7000 + Draw(random, 1800);
  const int spread = quick ? 120 : 350;
  int time = 0;
  for (int lap = 1; lap <= count; ++lap) {
    if (lap == 1) {
      time = quick ? 5400 + Draw(random, 400) : usual + 1200 + Draw(random, 600);
    } else {
      time += usual + Draw(random, 2 * spread + 1) - spread;
    }
    lane.laps.push_back(time);
  }
}

// A moment in a lap, in hundredths of it.
int MomentIn(const LanePlan& lane, int lap, int hundredths) {
  const int start = lap == 1 ? 0 : lane.laps[static_cast<std::size_t>(lap - 2)];
  return start + (lane.laps[static_cast<std::size_t>(lap - 1)] - start) * hundredths / 100;
}

PlannedCut CutIn(const LanePlan& lane, int lap, int pylon) {
  return {pylon, MomentIn(lane, lap, 25 * pylon + 3)};
}

// Cuts keep off the last laps: a cut that a bad line delays must still be heard before the finish.
int DrawCutLap(std::mt19937& random, int last) {
  return 2 + Draw(random, std::min(last, 8) - 1);
}

// Both cuts in one moment, at the same pylon a lap later, or at the next pylon a lap later.
void CutTwice(std::mt19937& random, LanePlan& lane) {
  const int pylon = 1 + Draw(random, 3);
  int lap = DrawCutLap(random, 7);
  lane.cuts.push_back(CutIn(lane, lap, pylon));
  const int kind = Draw(random, 3);
  if (kind > 0) ++lap;
  lane.cuts.push_back(CutIn(lane, lap, kind == 2 ? pylon % 3 + 1 : pylon));
  lane.laps.resize(static_cast<std::size_t>(lap - 1));  // it leaves the course at once
}

// The pylon is drawn first, by a statement of its own: in one call the order would be the compiler's.
void CutOnce(std::mt19937& random, LanePlan& lane, int last) {
  const int pylon = 1 + Draw(random, 3);
  const int lap = DrawCutLap(random, last);
  lane.cuts.push_back(CutIn(lane, lap, pylon));
}

LanePlan PlanLane(std::mt19937& random, Fate fate, int mode, bool quick) {
  LanePlan lane;
  lane.target = TargetLaps(mode, fate != Fate::kClean && fate != Fate::kStops);
  FlyLaps(random, lane, lane.target, quick);
  if (fate == Fate::kOneCut) CutOnce(random, lane, 8);
  if (fate == Fate::kDoubleCut) CutTwice(random, lane);
  if (fate == Fate::kStops) lane.laps.resize(static_cast<std::size_t>(Draw(random, quick ? 6 : 10)));
  if (fate == Fate::kStopsWithCut) {
    lane.laps.resize(static_cast<std::size_t>(2 + Draw(random, quick ? 4 : 8)));
    CutOnce(random, lane, static_cast<int>(lane.laps.size()));
  }
  return lane;
}

void KeepFinishesApart(HeatPlan& plan) {
  std::vector<LanePlan*> finishers;
  for (LanePlan& lane : plan.lanes) {
    if (lane.Finishes()) finishers.push_back(&lane);
  }
  std::ranges::stable_sort(finishers, {}, [](const LanePlan* lane) { return lane->laps.back(); });
  for (std::size_t i = 1; i < finishers.size(); ++i) {
    finishers[i]->laps.back() =
        std::max(finishers[i]->laps.back(), finishers[i - 1]->laps.back() + kFinishGap);
  }
}

}  // namespace

std::array<int, kLanes> Staggers(int mode) {
  static constexpr std::array<std::array<int, kLanes>, 3> kFai = {
      {{0, 1000, 2000}, {2000, 0, 1000}, {1000, 2000, 0}}};
  return mode >= 4 && mode <= 6 ? kFai[static_cast<std::size_t>(mode - 4)] : std::array<int, kLanes>{};
}

int Draw(std::mt19937& random, int below) {
  return static_cast<int>((static_cast<std::uint64_t>(random()) * static_cast<std::uint64_t>(below)) >> 32);
}

HeatPlan PlanHeat(std::uint32_t seed, int heat, int mode, bool quick) {
  std::mt19937 random(seed * 2654435761U + static_cast<std::uint32_t>(heat) * 40503U);
  HeatPlan plan;
  plan.mode = mode;
  const int flying = static_cast<int>(FlyingLanes(mode));
  const int sure = Draw(random, flying);
  const int also_sure = (sure + 1 + Draw(random, flying - 1)) % flying;
  for (int lane = 0; lane < flying; ++lane) {
    const Fate fate = DrawFate(random, lane == sure || lane == also_sure);
    plan.lanes.push_back(PlanLane(random, fate, mode, quick));
    plan.lanes.back().stagger = Staggers(mode)[static_cast<std::size_t>(lane)];
  }
  KeepFinishesApart(plan);
  for (LanePlan& lane : plan.lanes) {
    for (int lap = 1; lap <= static_cast<int>(lane.laps.size()); ++lap) {
      lane.turns.push_back(MomentIn(lane, lap, 27));
    }
  }
  return plan;
}

}  // namespace quorvane::field
