#pragma once

#include <functional>
#include <optional>
#include <string>

#include "lane/lane_log.h"

namespace quorvane {

// An entry of a lane's log as the project file keeps it: six fields joined by commas.
std::string EventText(const LaneEvent& event);

// None for an entry with another number of fields or a number that its field cannot hold.
std::optional<LaneEvent> ReadEvent(const std::string& text);

// The value of a key in the lane's section, or the fallback.
using LaneValue = std::function<std::string(const std::string& key, const std::string& fallback)>;

// The log that a lane's section describes. Its values may be anything: an entry that makes no sense leaves
// its slot as it is in `log`, and there are never more than the log holds.
LaneLog ReadLog(const LaneValue& value, LaneLog log = {});

}  // namespace quorvane
