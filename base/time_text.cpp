#include "base/time_text.h"

#include <cmath>

#include "base/text.h"

namespace quorvane {

std::string FormatSeconds(std::int32_t ms) {
  return ms >= 1 ? FormatRatio(ms, 1000, 2) : "nt";
}

std::string FormatTenths(std::int32_t ms) {
  return FormatRatio(ms, 1000, 1);
}

std::string FormatMinutes(const std::string& text) {
  const double ms = LeadingNumber(text) * 1000.0;
  if (!(ms > 60000.0) || ms > 9.0e15) return text;
  const auto minutes = static_cast<std::int64_t>(std::floor(ms / 60000.0));
  const std::int64_t rest = static_cast<std::int64_t>(std::nearbyint(ms)) % 60000;
  const std::string seconds = FormatRatio(rest, 1000, 2);
  return std::to_string(minutes) + ":" + (rest < 10000 && seconds.size() < 5 ? "0" : "") + seconds;
}

}  // namespace quorvane
