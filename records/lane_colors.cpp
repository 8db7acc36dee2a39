#include "records/lane_colors.h"

#include <string>
#include <utility>

#include "base/checked.h"
#include "base/text.h"

namespace quorvane {
namespace {

// The colour that a marking names, the button face when it names none.
Color ColorOf(std::string_view marking) {
  static constexpr std::array<std::pair<std::string_view, std::uint32_t>, 5> kWords = {
      {{"Red", 0xFF6060},
       {"Green", 0x60FF60},
       {"Blue", 0x8080FF},
       {"Yellow", 0xFFFF60},
       {"Orange", 0xFF8000}}};
  for (const auto& [word, rgb] : kWords) {
    if (marking.find(word) != std::string_view::npos) return Color::Rgb(rgb);
  }
  return kButtonFace;
}

}  // namespace

LaneMarking LaneMarkingOf(int scheme, int lane) {
  if (scheme <= 0 || scheme >= static_cast<int>(kLaneColorSchemes.size())) return {};
  const std::string text = std::string(kLaneColorSchemes[static_cast<std::size_t>(scheme)]) + ",,,,";
  const std::string field = Split(text, ',')[static_cast<std::size_t>(lane - 1)];
  const auto color = [&field](const char* height) {
    return field.find(height) == std::string::npos ? kButtonFace : ColorOf(field);
  };
  constexpr std::size_t kNumber = 3;  // characters of the first field: "1 -"
  return {field.substr(lane == 1 ? kNumber : 0), color("Low"), color("High")};
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
