// What was entered in a lane's log is put right: entries struck, put back, inserted, moved.

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

#include "base/checked.h"
#include "base/stations.h"
#include "base/text.h"
#include "lane/lane_log.h"

namespace quorvane {
namespace {

constexpr int kMostCorrections = 1000;  // that are read from a file
constexpr const char* kHand = "hand";

bool IsLap(const LaneEvent& event) {
  return event.Kind == "L";
}

// Of the entry that a correction has taken away.
std::optional<LaneEvent> StruckBy(const Correction& c) {
  const std::vector<std::string> fields = Split(c.before, ',');
  if (!c.after.empty() || fields.size() != 6) return std::nullopt;
  const double time = std::clamp<double>(LeadingNumber(fields[4]), INT32_MIN, INT32_MAX);
  return LaneEvent{.Count = static_cast<std::uint8_t>(std::clamp(LeadingNumber(fields[0]), 0.0, 255.0)),
                   .Kind = fields[2],
                   .EventTime = static_cast<std::int32_t>(time)};
}

template <typename At>
void CountBehind(std::vector<LaneEvent>& entries, At from, int by) {
  for (auto at = from; at != entries.end(); ++at) at->Count = ToByte(std::max(0, at->Count + by));
}

}  // namespace

std::string CorrectionText(const Correction& c) {
  const std::string time = c.amended.empty() ? std::to_string(c.time) : c.amended;
  return fmt::format("{};{};{};{};{}", time, c.what, c.by, c.before, c.after);
}

int LaneLog::Find(unsigned serial) const {
  const auto found = std::ranges::find(Entries(), serial, &LaneEvent::Serial);
  return found == Entries().end() ? -1 : static_cast<int>(found - Entries().begin());
}

void LaneLog::MarkByHand(unsigned behind) {
  for (int i = 0; i < count_; ++i) {
    LaneEvent& event = Element(events_, i);
    if (event.Serial > behind) event.ByHand = true;
  }
}

// Laps that were entered by hand are kept like those of the timers.
std::string LaneLog::MadeBy(const LaneEvent& event) const {
  if (event.ByHand || event.Source == kPanelSource) return kHand;
  if (!handKnown_ && IsLap(event)) return "TM or hand";
  return event.Source < std::ssize(StationCodes) ? std::string(Element(StationCodes, event.Source))
                                                 : event.SourceName;
}

// Two laps of the same moment at the beginning.
int LaneLog::FreeLap() const {
  const auto first = std::ranges::find_if(Entries(), IsLap);
  if (first == Entries().end()) return -1;
  const auto second = std::find_if(first + 1, Entries().end(), IsLap);
  const bool free = second != Entries().end() && first->Count == 1 && second->Count == 2 &&
                    first->EventTime == second->EventTime;
  return free ? static_cast<int>(first - Entries().begin()) : -1;
}

// Without a lap it is told by the last one: beside a free lap that was the second.
bool LaneLog::CreditsLap() const {
  if (LatestLap() != nullptr) return FreeLap() >= 0;
  int count = 0;
  for (const Correction& correction : corrections_) {
    if (const auto struck = StruckBy(correction); struck && IsLap(*struck)) count = struck->Count;
  }
  return count == 2;
}

bool LaneLog::HasTurnWithin(std::int64_t from, std::int64_t to) const {
  const auto isTurn = [&](const LaneEvent& e) {
    return e.Kind == "T" && e.EventTime >= from && e.EventTime <= to;
  };
  return std::ranges::any_of(Entries(), isTurn) ||
         std::ranges::any_of(corrections_, [&](const Correction& correction) {
           const auto struck = StruckBy(correction);
           return struck && correction.by != kHand && isTurn(*struck);
         });
}

// The free lap stands aside meanwhile, so that every lap counts one.
void LaneLog::Edit(bool withFreeLap, const std::function<void(std::vector<LaneEvent>&)>& edit) {
  std::vector<LaneEvent> entries(Entries().begin(), Entries().end());
  LaneEvent credited;
  if (const int at = FreeLap(); at >= 0) {
    credited = entries[static_cast<std::size_t>(at)];
    CountBehind(entries, entries.erase(entries.begin() + at), -1);
    withFreeLap = true;
  }
  edit(entries);
  const auto first = std::ranges::find_if(entries, IsLap);
  if (withFreeLap && first != entries.end()) {
    const unsigned serial = credited.Serial == 0 ? ++serial_ : credited.Serial;
    credited = *first;
    credited.Serial = serial;
    CountBehind(entries, first, 1);
    entries.insert(first, credited);
  }
  if (entries.size() > events_.size()) throw SubscriptError();
  std::ranges::move(entries, events_.begin());
  count_ = static_cast<int>(entries.size());
  ++revision_;
}

void LaneLog::Record(std::int32_t now, const char* what, const LaneEvent& of, std::string before,
                     std::string after) {
  corrections_.push_back({now, what, MadeBy(of), std::move(before), std::move(after), {}});
}

LaneLog::Taken LaneLog::Strike(int index, std::int32_t now, const char* what) {
  if (index == FreeLap()) {
    while (!IsLap((*this)[++index])) continue;
  }
  if (index < 0 || index >= count_) throw SubscriptError();
  Taken taken{(*this)[index]};
  Edit(false, [&](std::vector<LaneEvent>& entries) {
    const auto at = std::ranges::find(entries, taken.event.Serial, &LaneEvent::Serial);
    const auto behind = entries.erase(at);
    taken.before = behind == entries.end() ? 0 : behind->Serial;
    if (IsLap(taken.event)) CountBehind(entries, behind, -1);
  });
  if (taken.event.Kind == "C" && taken.event.Source < 4) ++struckCuts_[taken.event.Source];
  Record(now, what, taken.event, EventText(taken.event), "");
  return taken;
}

void LaneLog::PutBack(const Taken& taken, std::int32_t now, const char* what, bool withFreeLap) {
  const LaneEvent& event = taken.event;
  Edit(withFreeLap, [&](std::vector<LaneEvent>& entries) {
    auto at = std::ranges::find(entries, taken.before, &LaneEvent::Serial);
    const auto lapBefore = std::find_if(std::reverse_iterator(at), entries.rend(), IsLap);
    LaneEvent back = event;
    back.Count = lapBefore == entries.rend() ? std::uint8_t{0} : lapBefore->Count;
    at = entries.insert(at, back);
    if (IsLap(event)) CountBehind(entries, at, 1);
  });
  if (event.Kind == "C" && event.Source < 4 && struckCuts_[event.Source] > 0) --struckCuts_[event.Source];
  Record(now, what, event, "", EventText((*this)[Find(event.Serial)]));
}

unsigned LaneLog::InsertLap(std::int32_t lapTime, std::int32_t now, bool withFreeLap) {
  LaneEvent lap = Entry("L", lapTime, kTimersStation, 0);
  lap.Serial = ++serial_;
  lap.ByHand = true;
  Edit(withFreeLap, [&](std::vector<LaneEvent>& entries) {
    // Behind the lap before it, and what was entered between the two.
    const auto earlier = [&](const LaneEvent& e) { return IsLap(e) && e.EventTime <= lapTime; };
    const auto lapBefore = std::find_if(entries.rbegin(), entries.rend(), earlier);
    if (lapBefore != entries.rend()) lap.Count = lapBefore->Count;
    const auto later = [&](const LaneEvent& e) {
      return IsLap(e) || std::max(e.EventTime, e.FirstReported) > lapTime;
    };
    auto at = std::find_if(lapBefore.base(), entries.end(), later);
    at = entries.insert(at, lap);
    CountBehind(entries, at, 1);
  });
  const LaneEvent& entered = (*this)[Find(lap.Serial)];
  Record(now, "inserted", entered, "", EventText(entered));
  return lap.Serial;
}

void LaneLog::MoveCut(int index, int pylon, std::int32_t now) {
  LaneEvent& cut = Element(events_, index);
  const std::string before = EventText(cut);
  cut.SourceName =
      cut.Source == kPanelSource ? fmt::format("MP{}", pylon) : std::string(Element(StationCodes, pylon - 1));
  cut.Moved = cut.Source != kPanelSource;
  ++revision_;
  Record(now, "moved", cut, before, EventText(cut));
}

void LaneLog::KeepCorrections(const SetLaneValue& set, bool raceGoesOn) const {
  if (!corrections_.empty()) set("Corrections", std::to_string(corrections_.size()));
  for (std::size_t i = 0; i < corrections_.size(); ++i) {
    set(fmt::format("Correction{}", i), CorrectionText(corrections_[i]));
  }
  const auto where = [this](bool LaneEvent::*mark) {
    std::vector<std::string> indexes;
    for (int i = 0; i < count_; ++i) {
      if ((*this)[i].*mark) indexes.push_back(std::to_string(i));
    }
    return indexes.empty() ? "none" : Join(indexes, ',');
  };
  if (handKnown_) set("ByHand", where(&LaneEvent::ByHand));
  if (std::ranges::find(corrections_, "moved", &Correction::what) != corrections_.end()) {
    set("MovedCuts", where(&LaneEvent::Moved));
  }
  if (raceGoesOn && !corrections_.empty()) set("StruckCuts", fmt::format("{}", fmt::join(struckCuts_, ",")));
}

void LaneLog::ReadCorrections(const LaneValue& value) {
  const auto whole = [](const std::string& text, int most) {
    return static_cast<int>(std::clamp(LeadingNumber(text), 0.0, double(most)));
  };
  const int number = whole(value("Corrections"), kMostCorrections);
  for (int i = 0; i < number; ++i) {
    const std::vector<std::string> fields = Split(value(fmt::format("Correction{}", i)), ';');
    if (fields.size() != 5) continue;
    const bool dated = fields[0].find(',') != std::string::npos;
    const int time = dated ? 0 : whole(fields[0], INT32_MAX);
    corrections_.push_back({time, fields[1], fields[2], fields[3], fields[4], dated ? fields[0] : ""});
  }
  const auto mark = [&](const std::string& indexes, bool LaneEvent::*as) {
    for (const std::string& index : Split(indexes, ',')) {
      if (index.empty() || index.find_first_not_of("0123456789") != std::string::npos) continue;
      if (const int i = whole(index, kSlots); i < count_) Element(events_, i).*as = true;
    }
  };
  mark(value("MovedCuts"), &LaneEvent::Moved);
  const std::string byHand = value("ByHand");
  handKnown_ = !byHand.empty();
  mark(byHand, &LaneEvent::ByHand);
  const std::vector<std::string> struck = Split(value("StruckCuts"), ',');
  for (std::size_t i = 0; i < std::min(struck.size(), struckCuts_.size()); ++i) {
    struckCuts_[i] = static_cast<std::uint8_t>(whole(struck[i], 255));
  }
}

}  // namespace quorvane
