#include "lane/lane_text.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

#include "base/checked.h"
#include "base/text.h"

namespace quorvane {
namespace {

constexpr std::size_t kEventFields = 6;

}  // namespace

std::string EventText(const LaneEvent& event) {
  return Join({std::to_string(event.Count), std::to_string(event.Source), event.Kind, event.SourceName,
               std::to_string(event.EventTime), std::to_string(event.FirstReported)},
              ',');
}

std::optional<LaneEvent> ReadEvent(const std::string& text) {
  const std::vector<std::string> fields = Split(text, ',');
  if (fields.size() != kEventFields) return std::nullopt;
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

LaneLog ReadLog(const LaneValue& value, LaneLog log) {
  const double number = LeadingNumber(value("NumEvents", "0"));
  log.SetEventCount(static_cast<int>(std::clamp(std::nearbyint(number), 0.0, double{LaneLog::kSlots})));
  for (int i = 0; i < log.EventCount(); ++i) {
    auto event = ReadEvent(value("Event" + std::to_string(i), ",,,,"));
    if (event) log.Restore(i, *std::move(event));
  }
  return log;
}

}  // namespace quorvane
