#include <array>
#include <string>

#include "forms/form.h"
#include "ui/designs.h"

namespace quorvane {
namespace {

constexpr int kWidth = 978;
constexpr int kHeight = 184;
constexpr int kCells = 11;
constexpr int kFirstCell = 146;
constexpr int kCell = 57;  // from one lap column to the next
constexpr int kMarks = 40;
constexpr int kMarkTop = 76;
constexpr int kButtonTop = 128;

void AddName(FormDesign& design) {
  design.places.insert(
      design.places.end(),
      {{"fraLane", {0, 0, kWidth, kHeight}, 12, Look::Bare | Look::Heavy | Look::White, "panel"},
       {"lblLaneName", {8, 6, 134, 30}, 15, Look::Bold | Look::Left | Look::White, "name"},
       {"lblLow",
        {10, 42, 60, 30},
        12,
        Look::Border | Look::Lamp,
        "low marking",
        {},
        0,
        Anchoring::None,
        "Low"},
       {"lblHigh",
        {76, 42, 60, 30},
        12,
        Look::Border | Look::Lamp,
        "high marking",
        {},
        0,
        Anchoring::None,
        "High"}});
}

// The hands' buttons first: they are what the Tab key is for on a lane.
void AddButtons(FormDesign& design, int lane) {
  static constexpr std::array<const char*, 4> kCutKeys = {"F5 F9 7", "F6 F10 8", "F7 F11 9", "F8 F12 0"};
  const auto& cutKeys = kCutKeys[static_cast<std::size_t>(lane - 1)];
  design.places.insert(
      design.places.end(),
      {{"cmdLap",
        {kFirstCell, kButtonTop, 140, 48},
        18,
        Look::Bold | Look::Blue,
        {},
        "F" + std::to_string(lane)},
       {"cmdCut", {kFirstCell + 148, kButtonTop, 188, 48}, 18, Look::Bold | Look::Peach, {}, cutKeys},
       {"cmdTurn", {kFirstCell + 344, kButtonTop, 116, 48}, 18, Look::Bold | Look::White},
       {"cmdOrder", {846, 132, 122, 44}, 15, Look::Bold | Look::White, "place"},
       {"lblStatus", {784, 10, 184, 82}, 28, Look::Bold | Look::Heavy | Look::White, "status"},
       {"txtLapTen", {628, 144, 100, 32}, 14, Look::Bold, "lap 10 result"},
       {"txtLapEleven", {736, 144, 100, 32}, 14, Look::Bold, "lap 11 result"},
       {"chkNovice", {10, 82, 130, 30}, 13, Look::Left, "9 Laps"}});
  design.texts.push_back({"Lap 10", {628, 126, 100, 18}, 10.5, Look::Plain});
  design.texts.push_back({"Lap 11", {736, 126, 100, 18}, 10.5, Look::Plain});
  // While the stations report there are no buttons to read the keys from.
  const std::string keys = "Lap  F" + std::to_string(lane) + "\nCut  " + cutKeys;
  design.texts.push_back({keys, {12, 124, 130, 50}, 12, Look::Left, {}, "cmdLap"});
}

void AddColumns(FormDesign& design) {
  for (int i = 0; i < kCells; ++i) {
    const int left = kFirstCell + kCell * i;
    const std::string number = std::to_string(i + 1);
    design.places.push_back(
        {IndexedName("lblHdr", i), {left, 6, kCell - 1, 20}, 10.5, Look::White, "column " + number});
    design.places.push_back({IndexedName("lblLap", i),
                             {left, 27, kCell, 46},
                             13,
                             Look::Bold | Look::Border | Look::White | Look::Row,
                             "cell " + number});
  }
}

void AddMarks(FormDesign& design) {
  for (int i = 0; i < kMarks; ++i) {
    design.places.push_back({IndexedName("lblCut", i),
                             {kFirstCell, kMarkTop, kCell, 22},
                             10,
                             Look::Border | Look::Words,
                             "mark " + std::to_string(i + 1),
                             {},
                             0,
                             Anchoring::Stack});
  }
  design.places.push_back(
      {"cmdShow", {0, 0, 120, 28}, 12, Look::Bold | Look::White, {}, {}, 0, Anchoring::Beside});
  design.stackTop = kMarkTop;
  design.stackBottom = kHeight - 6;
}

}  // namespace

FormDesign LaneDesign(int lane) {
  FormDesign design;
  design.width = kWidth;
  design.height = kHeight;
  AddName(design);
  AddButtons(design, lane);
  AddColumns(design);
  AddMarks(design);
  return design;
}

}  // namespace quorvane
