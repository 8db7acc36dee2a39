#include "forms/platform.h"

#include <fmt/chrono.h>

#include <filesystem>

#include "base/text.h"

namespace quorvane {

// By hand: the system's own may know no time before 1970.
std::tm CalendarOf(const LocalDateTime& at) {
  const auto midnight = std::chrono::floor<std::chrono::days>(at);
  const std::chrono::year_month_day date(midnight);
  const std::chrono::hh_mm_ss time(at - midnight);
  std::tm calendar{};
  calendar.tm_year = int{date.year()} - 1900;
  calendar.tm_mon = static_cast<int>(unsigned{date.month()}) - 1;
  calendar.tm_mday = static_cast<int>(unsigned{date.day()});
  calendar.tm_hour = static_cast<int>(time.hours().count());
  calendar.tm_min = static_cast<int>(time.minutes().count());
  calendar.tm_sec = static_cast<int>(time.seconds().count());
  calendar.tm_wday = static_cast<int>(std::chrono::weekday(midnight).c_encoding());
  return calendar;
}

std::int64_t MsBetween(const ComputerTime& first, const ComputerTime& second) {
  const bool sameRun = !first.boot.empty() && first.boot == second.boot;
  return sameRun ? second.sinceBootMs - first.sinceBootMs : second.utcMs - first.utcMs;
}

std::string MomentText(const LocalDateTime& at, char separator) {
  const std::tm calendar = CalendarOf(at);
  return fmt::format("{:%Y-%m-%d}{}{:%H:%M:%S}", calendar, separator, calendar);
}

void PlaySound(Platform& platform, const std::string& path) {
  platform.StopWave();
  std::error_code ignored;
  if (std::filesystem::is_regular_file(PathOf(path), ignored)) platform.PlayWave(path);
}

}  // namespace quorvane
