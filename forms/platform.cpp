#include "forms/platform.h"

#include <fmt/format.h>

#include <chrono>
#include <filesystem>

namespace quorvane {

namespace {

std::chrono::sys_seconds MomentOf(const LocalDateTime& at) {
  using namespace std::chrono;
  const sys_days day = year(at.year) / at.month / at.day;
  return day + hours(at.hour) + minutes(at.minute) + seconds(at.second);
}

}  // namespace

std::int64_t SecondsBetween(const LocalDateTime& first, const LocalDateTime& second) {
  return (MomentOf(second) - MomentOf(first)).count();
}

LocalDateTime AddMilliseconds(const LocalDateTime& at, std::int64_t ms) {
  using namespace std::chrono;
  const auto moment = MomentOf(at) + milliseconds(ms);
  const auto midnight = floor<days>(moment);
  const year_month_day date(midnight);
  const hh_mm_ss time(floor<seconds>(moment - midnight));
  return {static_cast<int>(date.year()),
          static_cast<int>(static_cast<unsigned>(date.month())),
          static_cast<int>(static_cast<unsigned>(date.day())),
          static_cast<int>(time.hours().count()),
          static_cast<int>(time.minutes().count()),
          static_cast<int>(time.seconds().count())};
}

std::string MomentText(const LocalDateTime& at, char separator) {
  return fmt::format("{:04}-{:02}-{:02}{}{:02}:{:02}:{:02}", at.year, at.month, at.day, separator, at.hour,
                     at.minute, at.second);
}

void PlaySound(Platform& platform, const std::string& path) {
  platform.StopWave();
  std::error_code ignored;
  if (std::filesystem::is_regular_file(path, ignored)) platform.PlayWave(path);
}

}  // namespace quorvane
