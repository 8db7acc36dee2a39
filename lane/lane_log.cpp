#include "lane/lane_log.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <tuple>
#include <utility>

#include "base/checked.h"
#include "base/stations.h"
#include "base/text.h"

namespace quorvane {
namespace {

constexpr int kLapsWithCut = 11;
constexpr std::int32_t kDisqualifiedTime = 200000;

std::string SourceNameOf(int source, int missedPylon) {
  if (source < 7) return std::string(Element(StationCodes, source));
  if (source != kPanelSource) return "?";
  return missedPylon == 0 ? "ME" : fmt::format("MP{}", missedPylon);
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

// A cut from a judge or the starter belongs to the pylon that its name gives as a number; the names of the
// station table are no numbers, and then the station itself is the pylon, unless the cut was moved.
std::size_t TallyIndex(const LaneEvent& event) {
  if (event.Source > 3) return 3;
  const std::string& name = event.SourceName;
  if (name.size() == 1 && name[0] >= '0' && name[0] <= '3') return static_cast<std::size_t>(name[0] - '0');
  const auto pylon = static_cast<std::size_t>(std::ranges::find(StationCodes, name) - StationCodes.begin());
  return event.Moved && pylon < 3 ? pylon : event.Source;
}

}  // namespace

bool LaneEvent::operator==(const LaneEvent& other) const {
  const auto fields = [](const LaneEvent& event) {
    return std::tie(event.Count, event.Source, event.Kind, event.SourceName, event.EventTime,
                    event.FirstReported);
  };
  return fields(*this) == fields(other);
}

LaneEvent Entry(const char* kind, std::int32_t time, int source, int count, int missedPylon) {
  const std::uint8_t from = ToByte(source);
  return {ToByte(count), from, kind, SourceNameOf(from, missedPylon), time, *kind == 'C' ? time : 0};
}

std::string EventText(const LaneEvent& event) {
  return fmt::format("{},{},{},{},{},{}", event.Count, event.Source, event.Kind, event.SourceName,
                     event.EventTime, event.FirstReported);
}

int LaneLog::CountLaps() const {
  const LaneEvent* lap = LatestLap();
  return lap == nullptr ? 0 : lap->Count;
}

const LaneEvent* LaneLog::LatestLap() const {
  const LaneEvent* lap = nullptr;
  for (const LaneEvent& event : Entries()) {
    if (event.Kind == "L") lap = &event;
  }
  return lap;
}

std::int32_t LaneLog::LatestLapTime() const {
  const LaneEvent* lap = LatestLap();
  return lap == nullptr ? 0 : lap->EventTime;
}

void LaneLog::AddEvent(LaneEvent event) {
  if (event.Serial == 0) event.Serial = serial_ + 1;
  const unsigned serial = event.Serial;
  Element(events_, count_) = std::move(event);
  serial_ = std::max(serial_, serial);
  ++count_;
  ++revision_;
}

void LaneLog::EnterCuts(const CutReport& report) {
  std::uint8_t noneStruck = 0;
  std::uint8_t& struck =
      report.source < 4 ? struckCuts_[static_cast<std::size_t>(report.source)] : noneStruck;
  int have = struck;
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
  const LaneEvent cut = Entry("C", report.time, report.source, report.lapOfCut, report.missedPylon);
  Require(missing);

  ++revision_;
  struck = static_cast<std::uint8_t>(std::min<int>(struck, std::max(report.wanted, 0)));
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

void MoveTime(LaneEvent& event, std::int32_t by) {
  event.EventTime = AddLong(event.EventTime, by);
  if (event.FirstReported != 0) event.FirstReported = AddLong(event.FirstReported, by);
}

void LaneLog::MoveTimes(std::int32_t by) {
  auto moved = events_;
  for (int i = 0; i < count_; ++i) MoveTime(Element(moved, i), by);
  auto corrections = corrections_;
  for (Correction& correction : corrections) {
    if (!correction.amended.empty()) continue;
    correction.time = AddLong(correction.time, by);
    for (std::string* text : {&correction.before, &correction.after}) {
      auto event = ReadEvent(*text);
      if (!event) continue;
      MoveTime(*event, by);
      *text = EventText(*event);
    }
  }
  events_ = std::move(moved);
  corrections_ = std::move(corrections);
  ++revision_;
}

void LaneLog::Read(const LaneValue& value) {
  const double number = std::nearbyint(LeadingNumber(value("NumEvents")));
  Clear();
  count_ = static_cast<int>(std::clamp(number, 0.0, double{kSlots}));
  for (int i = 0; i < count_; ++i) {
    if (auto event = ReadEvent(value(fmt::format("Event{}", i)))) Element(events_, i) = *std::move(event);
    Element(events_, i).Serial = ++serial_;
    Element(events_, i).ByHand = Element(events_, i).Moved = false;
  }
  ReadCorrections(value);
}

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
