#include <string>

#include "base/checked.h"
#include "forms/event.h"
#include "forms/form.h"
#include "ui/designs.h"

namespace quorvane {
namespace {

constexpr int kFirstCell = 146;
constexpr int kCell = 57;  // from one lap column to the next
constexpr int kMarkTop = 76;

void AddColumns(FormDesign& design) {
  const LookFlags cell = kButtonLook | Look::Border | Look::Row;
  for (int i = 0; i < 11; ++i) {
    const int left = kFirstCell + kCell * i;
    const std::string number = std::to_string(i + 1);
    design.places.push_back(
        {IndexedName("lblHdr", i), {left, 6, kCell - 1, 20}, 10.5, Look::White, "column " + number});
    design.places.push_back({IndexedName("lblLap", i), {left, 27, kCell, 46}, 13, cell, "cell " + number});
  }
}

void AddMarks(FormDesign& design) {
  for (int i = 0; i < 40; ++i) {
    design.places.push_back({.name = IndexedName("lblCut", i),
                             .rect = {kFirstCell, kMarkTop, kCell, 22},
                             .points = 10,
                             .look = Look::Border | Look::Words,
                             .spoken = "mark " + std::to_string(i + 1),
                             .anchoring = Anchoring::Stack});
  }
  design.places.push_back(
      {.name = "cmdShow", .rect = {0, 0, 120, 28}, .look = kButtonLook, .anchoring = Anchoring::Beside});
}

}  // namespace

// The hands' buttons come first: they are what the Tab key is for on a lane.
FormDesign LaneDesign(int lane) {
  const auto key = [lane](int action) { return std::string(Element(kKeyNames, 4 * action + lane - 1)); };
  const std::string lapKey = key(0);
  const std::string cutKeys = key(1) + ' ' + key(2) + ' ' + key(3);
  const LookFlags lamp = Look::Border | Look::Lamp;
  const LookFlags cut = Look::Bold | Look::Peach;
  FormDesign design{.width = 978, .height = 184, .stackTop = kMarkTop, .stackBottom = 178};
  design.tips = LaneTips();
  design.places = {{"fraLane", {0, 0, 978, 184}, 12, Look::Bare | Look::Heavy | Look::White, "panel"},
                   {"lblLaneName", {8, 6, 134, 30}, 15, kButtonLook | Look::Left, "name"},
                   {"lblLow", {10, 42, 60, 30}, 12, lamp, "low marking", 0, {}, "Low"},
                   {"lblHigh", {76, 42, 60, 30}, 12, lamp, "high marking", 0, {}, "High"},
                   {"cmdLap", {kFirstCell, 128, 140, 48}, 18, Look::Bold | Look::Blue, {}, 0, lapKey},
                   {"cmdCut", {kFirstCell + 148, 128, 188, 48}, 18, cut, {}, 0, cutKeys},
                   {"cmdTurn", {kFirstCell + 344, 128, 116, 48}, 18, kButtonLook},
                   {"cmdOrder", {846, 132, 122, 44}, 15, kButtonLook, "place"},
                   {"lblStatus", {784, 8, 184, 52}, 28, kButtonLook | Look::Heavy, "status"},
                   {"lblFlown", {784, 64, 84, 62}, 24, Look::Bold, "laps flown of laps due"},
                   {"lblLastLap", {870, 64, 98, 30}, 15, Look::Bold, "last lap"},
                   {"lblGap", {870, 96, 98, 30}, 15, Look::Bold, "gap to the leader"},
                   {"txtLapTen", {628, 144, 100, 32}, 14, Look::Bold, "lap 10 result"},
                   {"txtLapEleven", {736, 144, 100, 32}, 14, Look::Bold, "lap 11 result"},
                   {"chkNovice", {10, 82, 130, 30}, 13, Look::Left, "9 Laps"}};
  AddColumns(design);
  AddMarks(design);
  design.texts = {{"Lap 10", {628, 126, 100, 18}, 10.5, Look::Plain},
                  {"Lap 11", {736, 126, 100, 18}, 10.5, Look::Plain},
                  // While the stations report there are no buttons to read the keys from.
                  {"Lap  " + lapKey + "\nCut  " + cutKeys, {12, 124, 130, 50}, 12, Look::Left, {}, "cmdLap"}};
  return design;
}

}  // namespace quorvane
