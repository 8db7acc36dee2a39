#include "console/lane_desk.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <utility>

#include "base/checked.h"
#include "records/lane_colors.h"

namespace quorvane {

LaneDesk::LaneDesk(Door& door, RaceState& race, const RaceClock& clock, const Control& tick, Notices& notices,
                   Tell tell)
    : door_(door), race_(race), clock_(clock), tick_(tick), notices_(notices), tell_(std::move(tell)) {
  int number = 0;
  LaneOwner& owner = *this;
  for (auto& lane : lanes_) lane = std::make_unique<frmLane>(door.AllForms(), race, owner, ++number);
}

void LaneDesk::InitializeRace(std::int32_t laneStart) {
  // Ms after the start signal at which each lane of an FAI mode (4, 5, 6) starts. The fourth does not fly.
  static constexpr std::array<std::array<std::int32_t, kFaiLanes>, 3> kStagger = {
      {{0, 1000, 2000}, {2000, 0, 1000}, {1000, 2000, 0}}};
  for (std::size_t i = 0; i < lanes_.size(); ++i) {
    if (!race_.IsFaiMode) {
      lanes_[i]->InitializeRace(laneStart);
    } else if (i < kStagger.size()) {
      const auto mode = static_cast<std::size_t>(race_.RaceMode - kFirstFaiMode);
      lanes_[i]->InitializeRace(SubtractLong(laneStart, kStagger[mode][i]));
    } else {
      lanes_[i]->InitializeRace(kDoesNotFly);
    }
  }
}

void LaneDesk::ForEach(const std::function<void(frmLane& lane, std::size_t index)>& part) {
  for (std::size_t i = 0; i < lanes_.size(); ++i) {
    try {
      part(*lanes_[i], i);
    } catch (const SubscriptError&) {
      notices_.Show(fmt::format("Lane {} takes no more entries: its log is full", i + 1));
    } catch (const RunTimeError&) {  // ends this lane's part only
    }
  }
}

void LaneDesk::ShowLog(int lane) {
  log_.ShowLane(lane);
  door_.AllForms().Show(log_);
}

void LaneDesk::Corrected(int lane, const Correction& correction) {
  door_.NoteCorrected(fmt::format("lane {}: {}", lane, CorrectionText(correction)));
}

LaneMarking LaneDesk::Marking(int lane) const {
  return LaneMarkingOf(race_.LaneColorScheme, lane);
}

// A late cut or lap may change the order; what is saved must not contradict the logs.
void LaneDesk::ResultChanged() {
  if (race_.Amending || (race_.RaceActive && race_.Unsaved)) RankLanes();
}

// A place given by hand is not given again; of equal finals the lower lane comes first.
void LaneDesk::RankLanes() {
  std::vector<std::pair<std::int32_t, frmLane*>> order;
  for (const auto& lane : lanes_) order.emplace_back(lane->GetFinal(), lane.get());
  door_.System().RepaintWindows();
  std::ranges::stable_sort(order, {}, [](const auto& entry) { return entry.first; });
  int place = 0;
  for (const auto& [final, lane] : order) {
    if (lane->StatusLocked()) continue;
    lane->Rank(final < kNoResult ? place = NextFreePlace(place) : 0);
  }
}

void LaneDesk::ShowProgress() {
  std::vector<unsigned> of;
  for (const auto& lane : lanes_) {
    const unsigned flies = (race_.RaceActive ? 1U : 0U) + (lane->chkNovice.Value() != 0 ? 2U : 0U) +
                           (race_.IsFaiMode ? 4U : 0U) + (race_.RaceDone ? 8U : 0U);
    of.insert(of.end(), {lane->RaceSerial(), lane->Events().Revision(), flies});
  }
  if (std::exchange(progressOf_, of) == of) return;
  std::vector<LaneProgress> progress;
  for (const auto& lane : lanes_) progress.push_back(lane->Progress());
  for (std::size_t i = 0; i < lanes_.size(); ++i) {
    lanes_[i]->ShowProgress(progress[i], GapText(progress, i));
  }
}

// Behind `place`: the next one that no lane has been given by hand; 5 when there is none.
int LaneDesk::NextFreePlace(int place) const {
  const auto isNext = [&](const auto& lane) { return lane->PlaceByHand() == place; };
  do ++place;
  while (std::ranges::any_of(lanes_, isNext));
  return place;
}

// With 1 the places are given anew. After that the first one that no lane has is offered: the operator may
// have typed places in between, or taken one back.
void LaneDesk::SetOrder(int place) {
  if (place <= 1) {
    for (const auto& lane : lanes_) lane->LaneOrder(place);
    return;
  }
  for (const auto& lane : lanes_) lane->OfferPlace(NextFreePlace(0));
}

// The operator's last word counts: whoever types a place that another lane has is putting an error right.
void LaneDesk::TakePlace(int lane, int place) {
  for (const auto& other : lanes_) {
    if (other->Number() == lane || other->PlaceByHand() != place) continue;
    other->GiveUpPlace();
    notices_.Show(fmt::format("{} now lane {}, no more lane {}", Element(kPlaceWords, place - 1), lane,
                              other->Number()));
  }
}

}  // namespace quorvane
