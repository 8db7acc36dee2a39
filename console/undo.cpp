#include "console/undo.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <utility>

namespace quorvane {
namespace {

std::string What(const frmLane& lane, const LaneEvent& event) {
  if (event.Kind == "T") return "turn";
  if (event.Kind == "L") return fmt::format("lap {}", event.Count - (lane.CreditsLap() ? 1 : 0));
  return event.SourceName == "ME" ? "cut" : "cut " + event.SourceName;
}

}  // namespace

void UndoStack::Entered(int lane, std::vector<unsigned> serials) {
  Add({lane, false, std::move(serials)});
}

void UndoStack::Struck(int lane, const LaneLog::Taken& taken) {
  Add({lane, true, {taken.event.Serial}, {taken}});
}

void UndoStack::Add(Step step) {
  done_.push_back(std::move(step));
  undone_.clear();
}

void UndoStack::Clear() {
  done_.clear();
  undone_.clear();
}

void UndoStack::ReadLogs() {
  Clear();
  std::multimap<std::int32_t, Step> steps;
  for (const auto& lane : lanes_) {
    const LaneLog& log = lane->Events();
    for (int i = 0; i < log.EventCount(); ++i) {
      if (log[i].ByHand && i != log.FreeLap()) {
        steps.emplace(log[i].EventTime, Step{lane->Number(), false, {log[i].Serial}});
      }
    }
  }
  for (auto& [time, step] : steps) done_.push_back(std::move(step));
}

void UndoStack::MoveTimes(std::int32_t by) {
  for (Steps* steps : {&done_, &undone_}) {
    for (Step& step : *steps) {
      for (LaneLog::Taken& taken : step.taken) MoveTime(taken.event, by);
    }
  }
}

bool UndoStack::Stands(const Step& step) const {
  const LaneLog& log = Lane(step).Events();
  return std::ranges::any_of(step.serials, [&](unsigned serial) {
    const int at = log.Find(serial);
    return at >= 0 && log[at].Kind != "-C";
  });
}

bool UndoStack::IsAway(const Step& step) const {
  return std::ranges::none_of(
      step.taken, [&](const auto& taken) { return Lane(step).Events().Find(taken.event.Serial) >= 0; });
}

void UndoStack::Prune() {
  const auto trim = [](Steps& steps, const auto& good) {
    while (!steps.empty() && !good(steps.back())) steps.pop_back();
  };
  trim(done_, [this](const Step& step) { return step.struck ? IsAway(step) : Stands(step); });
  trim(undone_, [this](const Step& step) { return step.struck ? Stands(step) : IsAway(step); });
}

std::string UndoStack::Text(const Step& step) const {
  const frmLane& lane = Lane(step);
  LaneEvent event;
  if (!step.taken.empty()) {
    event = step.taken.front().event;
  } else if (const int at = lane.Events().Find(step.serials.back()); at >= 0) {
    event = lane.Events()[at];
  }
  return fmt::format("{}{}, lane {}", step.struck ? "strike of " : "", What(lane, event), step.lane);
}

std::pair<std::string, std::string> UndoStack::Texts() {
  Prune();
  return {done_.empty() ? "" : Text(done_.back()), undone_.empty() ? "" : Text(undone_.back())};
}

void UndoStack::Take(Step& step, const char* what) const {
  step.taken.clear();
  for (auto serial = step.serials.rbegin(); serial != step.serials.rend(); ++serial) {
    if (auto taken = Lane(step).Strike(*serial, what)) step.taken.push_back(*std::move(taken));
  }
}

void UndoStack::Put(Step& step, const char* what) const {
  for (auto taken = step.taken.rbegin(); taken != step.taken.rend(); ++taken) {
    Lane(step).PutBack(*taken, what);
  }
  step.taken.clear();
}

void UndoStack::Shift(Steps& from, Steps& to, bool back, const char* what) {
  if (from.empty()) return;
  Step& step = from.back();
  step.struck == back ? Put(step, what) : Take(step, what);
  to.push_back(std::move(step));
  from.pop_back();
}

}  // namespace quorvane
