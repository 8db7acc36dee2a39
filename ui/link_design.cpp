#include <string>

#include "base/stations.h"
#include "forms/form.h"
#include "ui/designs.h"

namespace quorvane {
namespace {

constexpr int kDetail = 410;
constexpr int kHeight = 660;
constexpr LookFlags kTextLook = Look::Left | Look::Top | Look::White;
constexpr LookFlags kFrameLook = kTextLook | Look::Border | Look::Bold;

// Up to 31 ports; most computers have one or two.
void AddPorts(std::vector<Place>& places) {
  for (int i = 0; i < 32; ++i) {
    const QRect rect(14 + 112 * (i % 4), 34 + 26 * (i / 4), 108, 26);
    places.push_back({IndexedName("optPort", i), rect, 12, Look::Left});
  }
}

void AddStations(std::vector<Place>& places, int top) {
  places.push_back(
      {"fraStations", {10, top, 450, 252}, 12, Look::Bare | Look::Border | Look::White, "Stations"});
  // The heading's letters are of one width, so that its words stand over the columns.
  const LookFlags heading = Look::Left | Look::Fixed | Look::White;
  places.push_back({"lblStationHeader", {16, top + 2, 436, 28}, 20, heading, "Columns"});
  for (int i = 0; i < 8; ++i) {
    const auto add = [&](const char* name, int left, int width, double points, LookFlags look,
                         const std::string& spoken = {}) {
      const QRect rect(left, top + 31 + 27 * i, width, 26);
      places.push_back({IndexedName(name, i), rect, points, look | Look::White, spoken});
    };
    const std::string number = std::to_string(i);
    // One address belongs to no station.
    add("lblStation", 18, 136, 13, Look::Left | Look::Bold | Look::RedLine,
        StationNames[static_cast<std::size_t>(i)].empty() ? "No station" : "");
    add("lblAge", 160, 86, 13, Look::Plain, "Age of station " + number);
    add("lblSilent", 394, 60, 12, Look::Bold);
    add("lblVolt", 248, 66, 13, Look::Plain, "Volts of station " + number);
    add("lblTemp", 316, 76, 13, Look::Plain, "Temperature of station " + number);
  }
  places.push_back({.name = "cmdStation",
                    .rect = {18, top + 31, 136, 26},
                    .points = 13,
                    .look = Look::Bold | Look::Blue,
                    .anchoring = Anchoring::Cover});
}

}  // namespace

FormDesign LinkDesign() {
  constexpr int kRight = kNarrowLink + kDetail - 10;  // of the detail
  FormDesign design{.width = kNarrowLink + kDetail, .height = kHeight, .tips = LinkTips(), .home = "cmdHide"};
  design.texts = {{"Serial port of the radio modem", {14, 8, 400, 24}, 12, Look::Left | Look::Bold}};
  AddPorts(design.places);
  design.places.push_back({"lblMessage", {10, 248, 450, 44}, 11, kTextLook | Look::Border, "Message line"});
  AddStations(design.places, 300);
  const std::vector<Place> rest = {
      {"chkSystemController", {14, 558, 300, 28}, 12, Look::Left, "System Controller", 'S'},
      {"chkListen", {14, 586, 340, 28}, 12, Look::Left, "Listen Only (Debug Monitor)", 'L'},
      {"cmdHide", {10, 618, 130, 36}, 13, kButtonLook, {}, 'H'},
      {"cmdPractice", {150, 618, 234, 36}, 13, kButtonLook, {}, 'P'},
      {"cmdMore", {394, 618, 66, 36}, 13, kButtonLook, "Message detail"},
      {"fraMore", {kNarrowLink, 10, kDetail - 10, kHeight - 20}, 13, kFrameLook, "Message detail"},
      {"lblMsg", {kNarrowLink + 8, 40, kDetail - 26, 244}, 11, kTextLook | Look::Fixed, "Message"},
      {"cmdFreeze", {kNarrowLink + 8, 286, 110, 32}, 12, kButtonLook},
      {"cmdCopyMsg", {kRight - 118, 286, 110, 32}, 12, kButtonLook, "Copy message"},
      {"fraCounters", {kNarrowLink + 4, 324, kDetail - 18, 322}, 12, kFrameLook, "Counters"},
      {"lblCounters", {kNarrowLink + 12, 348, kDetail - 34, 258}, 11, kTextLook, "Counters since start"},
      {"cmdCopyCounters", {kRight - 122, 608, 110, 32}, 12, kButtonLook, "Copy counters"}};
  design.places.insert(design.places.end(), rest.begin(), rest.end());
  return design;
}

}  // namespace quorvane
