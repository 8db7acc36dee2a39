#include "forms/platform.h"

#include <fmt/chrono.h>

#include <filesystem>

namespace quorvane {

std::tm CalendarOf(const LocalDateTime& at) {
  return fmt::gmtime(std::time_t{at.time_since_epoch().count()});
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
  if (std::filesystem::is_regular_file(path, ignored)) platform.PlayWave(path);
}

}  // namespace quorvane
