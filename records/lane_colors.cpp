#include "records/lane_colors.h"

#include <cstdint>
#include <utility>
#include <vector>

#include "base/checked.h"
#include "base/text.h"

namespace quorvane {
namespace {

// Field `lane` of the current scheme; the first `dropped` characters of the scheme do not count.
std::string LaneField(const RaceState& race, int lane, std::size_t dropped) {
  if (lane < 1 || lane > 4) throw SubscriptError();
  const int scheme = race.LaneColorScheme;
  if (scheme < 0 || scheme >= static_cast<int>(kLaneColorSchemes.size())) return {};
  const std::string text = std::string(kLaneColorSchemes[static_cast<std::size_t>(scheme)]) + ",,,,";
  return Split(std::string_view(text).substr(dropped), ',')[static_cast<std::size_t>(lane - 1)];
}

Color MarkColor(const RaceState& race, int lane, std::string_view height) {
  const std::string field = LaneField(race, lane, 0);
  return field.find(height) == std::string::npos ? kButtonFace : ColorOf(field);
}

}  // namespace

// Dropping three characters of the empty scheme takes three of the commas; one field is left.
std::string LaneColorName(const RaceState& race, int lane) {
  if (lane >= 1 && lane <= 4 && race.LaneColorScheme == 0) return {};
  return LaneField(race, lane, 3);
}

Color LaneLowColor(const RaceState& race, int lane) {
  return MarkColor(race, lane, "Low");
}
Color LaneHighColor(const RaceState& race, int lane) {
  return MarkColor(race, lane, "High");
}

Color ColorOf(std::string_view text) {
  static constexpr std::array<std::pair<std::string_view, std::uint32_t>, 5> kWords = {
      {{"Red", 0xFF6060},
       {"Green", 0x60FF60},
       {"Blue", 0x8080FF},
       {"Yellow", 0xFFFF60},
       {"Orange", 0xFF8000}}};
  for (const auto& [word, rgb] : kWords) {
    if (text.find(word) != std::string_view::npos) return Color::Rgb(rgb);
  }
  return kButtonFace;
}

std::int16_t LoadLaneColorScheme(const SettingsStore& settings) {
  try {
    return LeadingInteger(settings.GetSetting("RaceInfo", "LaneColor", "1"));
  } catch (const OverflowError&) {
    return 0;
  }
}

void SaveLaneColorScheme(SettingsStore& settings, std::int16_t scheme) {
  settings.SaveSetting("RaceInfo", "LaneColor", std::to_string(scheme));
}

}  // namespace quorvane
