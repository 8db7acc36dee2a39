#include "lane/lane_log.h"

#include <algorithm>
#include <optional>

#include "base/checked.h"
#include "base/stations.h"

namespace quorvane {
namespace {

// The name of an entry's source; none for a panel entry of a pylon that does not exist.
std::optional<std::string> SourceNameOf(const NewEvent& event) {
  if (event.source >= 0 && event.source < 7) {
    return std::string(StationCodes[static_cast<std::size_t>(event.source)]);
  }
  if (event.source != kPanelSource) return "?";
  if (event.missedPylon == 0) return "ME";
  if (event.missedPylon >= 1 && event.missedPylon <= 3) return "MP" + std::to_string(event.missedPylon);
  return std::nullopt;
}

}  // namespace

const LaneEvent& LaneLog::operator[](std::int64_t index) const {
  return Element(events_, index);
}

void LaneLog::SetEvent(std::int64_t index, const NewEvent& event) {
  LaneEvent& slot = Element(events_, index);
  const std::uint8_t count = ToByte(event.count);
  slot.Source = ToByte(event.source);
  slot.Count = count;
  slot.Kind = event.kind;
  slot.EventTime = event.time;
  slot.FirstReported = event.kind == "C" ? event.time : 0;
  if (auto name = SourceNameOf(event)) slot.SourceName = *std::move(name);
}

void LaneLog::AddEvent(const NewEvent& event) {
  SetEvent(count_, event);
  ++count_;
}

void LaneLog::InsertEvent(std::int64_t index, const NewEvent& event) {
  if (index < 0 || index > count_) throw SubscriptError();
  // Entered at the end first: whatever is wrong with the entry shows before any other has moved.
  AddEvent(event);
  std::rotate(events_.begin() + index, events_.begin() + count_ - 1, events_.begin() + count_);
}

void LaneLog::Withdraw(std::int64_t index, std::int32_t time) {
  LaneEvent& slot = Element(events_, index);
  slot.Kind = "-C";
  slot.EventTime = time;
}

void LaneLog::Reinstate(std::int64_t index) {
  Element(events_, index).Kind = "C";
}

void LaneLog::MoveTimes(std::int32_t by) {
  for (int i = 0; i < count_; ++i) {
    LaneEvent& slot = Element(events_, i);
    slot.EventTime = AddLong(slot.EventTime, by);
    if (slot.FirstReported != 0) slot.FirstReported = AddLong(slot.FirstReported, by);
  }
}

void LaneLog::Require(int entries) const {
  if (entries > kSlots - count_) throw SubscriptError();
}

int LaneLog::CountLaps() const {
  for (int i = count_ - 1; i >= 0; --i) {
    if ((*this)[i].Kind == "L") return (*this)[i].Count;
  }
  return 0;
}

void LaneLog::Clear() {
  count_ = 0;
}

void LaneLog::SetEventCount(int count) {
  count_ = std::clamp(count, 0, kSlots);
}

void LaneLog::Restore(std::int64_t index, LaneEvent event) {
  Element(events_, index) = std::move(event);
}

void EnterCutReport(LaneLog& log, const CutReport& report) {
  int have = 0;
  int lastLapEntry = 0;
  int reinstate = -1;
  std::vector<int> excess;
  for (int i = 0; i < log.EventCount(); ++i) {
    const LaneEvent& event = log[i];
    const bool sameSource = event.Source == report.source;
    if (event.Kind == "C" && sameSource) {
      if (have < report.wanted) {
        ++have;
      } else {
        excess.push_back(i);
      }
    } else if (event.Kind == "L") {
      lastLapEntry = i;
    } else if (event.Kind == "-C" && sameSource && std::int64_t{report.time} - event.EventTime < 1000) {
      reinstate = i;
    }
  }
  const bool again = reinstate >= 0 && report.cutsOnLane == 0 && report.wanted > have;
  const int missing = report.wanted - have - (again ? 1 : 0);
  const NewEvent cut{"C", report.time, ToByte(report.source), ToByte(report.lapOfCut), report.missedPylon};
  log.Require(missing);

  for (const int i : excess) log.Withdraw(i, report.time);
  if (again) log.Reinstate(reinstate);
  for (int i = 0; i < missing; ++i) {
    if (report.lapOfCut == report.laps) {
      log.AddEvent(cut);
    } else {
      log.InsertEvent(lastLapEntry, cut);
    }
  }
}

}  // namespace quorvane
