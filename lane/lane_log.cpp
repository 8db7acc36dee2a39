#include "lane/lane_log.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <optional>

#include "base/checked.h"
#include "base/stations.h"
#include "base/text.h"

namespace quorvane {
namespace {

std::string SourceNameOf(const NewEvent& event) {
  if (event.source >= 0 && event.source < 7) {
    return std::string(StationCodes[static_cast<std::size_t>(event.source)]);
  }
  if (event.source != kPanelSource) return "?";
  return event.missedPylon == 0 ? "ME" : fmt::format("MP{}", event.missedPylon);
}

LaneEvent Entry(const NewEvent& event) {
  return {.Count = ToByte(event.count),
          .Source = ToByte(event.source),
          .Kind = std::string(event.kind),
          .SourceName = SourceNameOf(event),
          .EventTime = event.time,
          .FirstReported = event.kind == "C" ? event.time : 0};
}

// None for an entry with another number of fields or a number that its field cannot hold.
std::optional<LaneEvent> ReadEvent(const std::string& text) {
  const std::vector<std::string> fields = Split(text, ',');
  if (fields.size() != 6) return std::nullopt;
  try {
    return LaneEvent{RoundTo<std::uint8_t>(LeadingNumber(fields[0])),
                     RoundTo<std::uint8_t>(LeadingNumber(fields[1])),
                     fields[2],
                     fields[3],
                     LeadingLong(fields[4]),
                     LeadingLong(fields[5])};
  } catch (const OverflowError&) {
    return std::nullopt;
  }
}

}  // namespace

std::string EventText(const LaneEvent& event) {
  return fmt::format("{},{},{},{},{},{}", event.Count, event.Source, event.Kind, event.SourceName,
                     event.EventTime, event.FirstReported);
}

const LaneEvent& LaneLog::operator[](std::int64_t index) const {
  return Element(events_, index);
}

int LaneLog::CountLaps() const {
  int laps = 0;
  for (const LaneEvent& event : Entries()) {
    if (event.Kind == "L") laps = event.Count;
  }
  return laps;
}

void LaneLog::AddEvent(const NewEvent& event) {
  Element(events_, count_) = Entry(event);
  ++count_;
}

void LaneLog::EnterCuts(const CutReport& report) {
  int have = 0;
  int lastLapEntry = 0;
  LaneEvent* again = nullptr;
  std::vector<LaneEvent*> excess;
  for (int i = 0; i < count_; ++i) {
    LaneEvent& event = Element(events_, i);
    if (event.Kind == "L") lastLapEntry = i;
    if (event.Source != report.source) continue;
    if (event.Kind == "C" && ++have > report.wanted) excess.push_back(&event);
    if (event.Kind == "-C" && std::int64_t{report.time} - event.EventTime < 1000) again = &event;
  }
  if (report.cutsOnLane != 0 || have >= report.wanted) again = nullptr;
  const int missing = report.wanted - have - (again != nullptr ? 1 : 0);
  const NewEvent cut{"C", report.time, ToByte(report.source), ToByte(report.lapOfCut), report.missedPylon};
  Require(missing);

  for (LaneEvent* event : excess) {
    event->Kind = "-C";
    event->EventTime = report.time;
  }
  if (again != nullptr) again->Kind = "C";
  for (int i = 0; i < missing; ++i) {
    AddEvent(cut);
    if (report.lapOfCut == report.laps) continue;
    std::rotate(events_.begin() + lastLapEntry, events_.begin() + count_ - 1, events_.begin() + count_);
  }
}

void LaneLog::MoveTimes(std::int32_t by) {
  auto moved = events_;
  for (int i = 0; i < count_; ++i) {
    LaneEvent& slot = Element(moved, i);
    slot.EventTime = AddLong(slot.EventTime, by);
    if (slot.FirstReported != 0) slot.FirstReported = AddLong(slot.FirstReported, by);
  }
  events_ = std::move(moved);
}

void LaneLog::Require(int entries) const {
  if (entries > kSlots - count_) throw SubscriptError();
}

void LaneLog::Read(const LaneValue& value) {
  const double number = std::nearbyint(LeadingNumber(value("NumEvents")));
  count_ = static_cast<int>(std::clamp(number, 0.0, double{kSlots}));
  for (int i = 0; i < count_; ++i) {
    if (auto event = ReadEvent(value(fmt::format("Event{}", i)))) Element(events_, i) = *std::move(event);
  }
}

}  // namespace quorvane
