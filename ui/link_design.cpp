#include <string>

#include "forms/form.h"
#include "ui/designs.h"

namespace quorvane {
namespace {

constexpr int kPorts = 32;
constexpr int kStations = 8;
constexpr int kNarrow = 470;
constexpr int kDetail = 410;

// Up to 31 ports, in four rows of eight; most computers have one or two.
void AddPorts(FormDesign& design) {
  for (int i = 0; i < kPorts; ++i) {
    const clsRect rect{14 + 112 * (i % 4), 34 + 26 * (i / 4), 108, 26};
    design.places.push_back({IndexedName("optPort", i), rect, 12, Look::Left});
  }
  design.texts.push_back({"Serial port of the radio modem", {14, 8, 400, 24}, 12, Look::Left | Look::Bold});
}

void AddStations(FormDesign& design, int top) {
  design.places.push_back({"fraStations", {10, top, 450, 252}, 12, Look::Bare | Look::White, "Stations"});
  // The heading's letters are of one width, so that its words stand over the columns.
  design.places.push_back(
      {"lblStationHeader", {16, top + 2, 436, 28}, 20, Look::Left | Look::Fixed | Look::White, "Columns"});
  for (int i = 0; i < kStations; ++i) {
    const int y = top + 31 + 27 * i;
    const std::string number = std::to_string(i);
    const Look look = Look::White;
    design.places.push_back(
        {IndexedName("lblStation", i), {18, y, 136, 26}, 13, look | Look::Left | Look::Bold});
    design.places.push_back(
        {IndexedName("lblAge", i), {160, y, 86, 26}, 13, look, "Age of station " + number});
    design.places.push_back({IndexedName("lblSilent", i), {394, y, 60, 26}, 12, look | Look::Bold});
    design.places.push_back(
        {IndexedName("lblVolt", i), {248, y, 66, 26}, 13, look, "Volts of station " + number});
    design.places.push_back(
        {IndexedName("lblTemp", i), {316, y, 76, 26}, 13, look, "Temperature of station " + number});
  }
  design.places.push_back(
      {"cmdStation", {18, top + 31, 136, 26}, 13, Look::Bold | Look::Blue, {}, {}, 0, Anchoring::Cover});
}

void AddDetail(FormDesign& design, int height) {
  const int left = kNarrow;
  const int width = kDetail - 10;
  const Look text = Look::Left | Look::Top | Look::White;
  const Look button = Look::Bold | Look::White;
  design.places.insert(
      design.places.end(),
      {{"fraMore", {left, 10, width, height - 20}, 13, Look::Bold | Look::White, "Message detail"},
       {"lblMsg", {left + 8, 40, width - 16, 244}, 11, text | Look::Fixed, "Message"},
       {"cmdFreeze", {left + 8, 286, 110, 32}, 12, button},
       {"cmdCopyMsg", {left + width - 118, 286, 110, 32}, 12, button, "Copy message"},
       {"fraCounters", {left + 4, 324, width - 8, 322}, 12, Look::Bold | Look::White, "Counters"},
       {"lblCounters", {left + 12, 348, width - 24, 258}, 11, text, "Counters since start"},
       {"cmdCopyCounters", {left + width - 122, 608, 110, 32}, 12, button, "Copy counters"}});
}

}  // namespace

int LinkWidthWithoutDetail() {
  return kNarrow;
}

FormDesign LinkDesign() {
  FormDesign design;
  design.width = kNarrow + kDetail;
  design.height = 660;
  design.home = "cmdHide";
  AddPorts(design);
  design.places.push_back({"lblMessage",
                           {10, 248, 450, 44},
                           11,
                           Look::Left | Look::Top | Look::Border | Look::White,
                           "Message line"});
  AddStations(design, 300);
  design.places.insert(
      design.places.end(),
      {{"chkSystemController", {14, 558, 300, 28}, 12, Look::Left, "System Controller", {}, 'S'},
       {"chkListen", {14, 586, 340, 28}, 12, Look::Left, "Listen Only (Debug Monitor)", {}, 'L'},
       {"cmdHide", {10, 618, 130, 36}, 13, Look::Bold | Look::White, {}, {}, 'H'},
       {"cmdMore", {394, 618, 66, 36}, 13, Look::Bold | Look::White, "Message detail"}});
  AddDetail(design, design.height);
  return design;
}

}  // namespace quorvane
