#include "print/heat_report.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string>

#include "base/text.h"
#include "print/race_page.h"
#include "print/sheet.h"

namespace quorvane {
namespace {

// ---- The column of one lane: who flew it, where it came in, its cuts and its laps. A race that has not run
// leaves the same places ruled, to be filled in by hand. Places are from its top.
constexpr double kLaneColumnHeight = 70.0;
constexpr double kCutListTop = 25.4;
constexpr double kCutListHeight = 8.6;
constexpr double kLapsTop = 36.6;
constexpr double kLapHeight = 3.0;
constexpr double kCaptionWidth = 5.0;

constexpr Color kFinishShade = Color::Rgb(0xDDDDDD);

// How the list of cuts is set: the more cuts, the smaller.
struct CutGrid {
  int columns;
  double size;
  double rowHeight;

  int Rows() const { return static_cast<int>(std::floor(kCutListHeight / rowHeight)); }
  int Cells() const { return columns * Rows(); }
};

CutGrid GridFor(int cuts) {
  static constexpr std::array<CutGrid, 3> kGrids = {{{2, 1.5, 2.15}, {2, 1.25, 1.7}, {3, 1.0, 1.4}}};
  for (const CutGrid& grid : kGrids) {
    if (cuts <= grid.Cells()) return grid;
  }
  return kGrids.back();
}

struct LaneColumn {
  Sheet& sheet;
  const RaceRecord& race;
  const LaneRecord& lane;
  const Box place;

  void Draw() {
    const auto result = [this](const std::string& text) {
      return race.hasRun ? std::optional(text) : std::nullopt;
    };
    DrawMarking();
    DrawField(5.2, 3.6, "Pilot", std::nullopt, 0);
    DrawField(9.0, 3.6, "Caller", std::nullopt, 0);
    DrawField(13.4, 5.0, "Place", result(lane.placing), 3.4);
    const std::int32_t final = lane.final < kNoResult ? lane.final : 0;
    DrawField(18.8, 3.4, "Time", result(FormatMinutes(FormatSeconds(final))), 2.3);
    DrawField(22.4, 2.8, "Cuts", result(std::to_string(lane.cuts.size())), 1.8);
    DrawCuts();
    DrawLaps();
  }

  Box At(double left, double top, double width, double height) const {
    return {place.left + left, place.top + top, width, height};
  }

  void DrawRule(double left, double top, double thickness) {
    sheet.HorizontalRule(place.left + left, place.Right(), place.top + top, thickness);
  }

  void DrawMarking() {
    DrawMark(sheet, lane, At(0, 0.3, 2.6, 3.8));
    const std::string title = "Lane " + std::to_string(lane.lane);
    const double left = 3.4;
    const double right = lane.novice ? 6.6 : 0.0;
    sheet.Text(At(left, 0, place.width - left - right, 2.3), title, {1.8, true});
    if (lane.novice) {
      sheet.Text(At(place.width - right, 0, right, 2.3), "9 Laps", {1.5, true}, Align::Right);
    }
    if (lane.name != title) sheet.Text(At(left, 2.3, place.width - left, 2.2), lane.name, {1.5, false});
    DrawRule(0, 4.8, Sheet::kThick);
  }

  // Without a text, with a rule to write on.
  void DrawField(double top, double height, const char* caption, const std::optional<std::string>& text,
                 double size) {
    sheet.Caption(At(0, top + height - 1.9, kCaptionWidth, 1.9), caption);
    if (!text) return DrawRule(kCaptionWidth, top + height, Sheet::kThin);
    sheet.Text(At(kCaptionWidth, top, place.width - kCaptionWidth, height), *text, {size, true},
               Align::Right);
  }

  void DrawCuts() {
    if (!race.hasRun) {
      for (const double y : {4.0, 8.0}) DrawRule(kCaptionWidth, kCutListTop + y, Sheet::kHair);
      return;
    }
    const int cuts = static_cast<int>(lane.cuts.size());
    const CutGrid grid = GridFor(cuts);
    const double width = place.width / grid.columns;
    for (int i = 0; i < std::min(cuts, grid.Cells()); ++i) {
      const CutRecord& cut = lane.cuts[static_cast<std::size_t>(i)];
      const bool leftOut = cuts > grid.Cells() && i + 1 == grid.Cells();
      const int column = i / grid.Rows();
      const double top = kCutListTop + i % grid.Rows() * grid.rowHeight;
      sheet.Text(At(column * width, top, width - 0.4, grid.rowHeight),
                 leftOut ? "\xE2\x80\xA6" : cut.pylon + " " + FormatSeconds(cut.time), {grid.size, false});
    }
  }

  // A blank sheet offers the lap that a cut may cost; the FAI rules know no such lap.
  int LapRows() const {
    const int mayOwe = race.mode >= kFirstFaiMode ? kMostLaps - 1 : kMostLaps;
    const int target = race.hasRun ? lane.lapTarget : std::max(lane.lapTarget, mayOwe);
    return std::clamp(target, 2, kMostLaps) - (lane.novice ? 1 : 0);
  }

  void DrawLaps() {
    DrawLapRow(34.4, 1.9, {"Lap", "Time", "Split"}, {1.25, 1.25, 1.25}, false);
    DrawRule(0, kLapsTop, Sheet::kThin);
    const std::vector<FlownLap> laps = race.hasRun ? FlownLaps(lane) : std::vector<FlownLap>{};
    for (int row = 1; row <= LapRows(); ++row) {
      const double top = kLapsTop + (row - 1) * kLapHeight;
      const auto lap = std::ranges::find(laps, row, &FlownLap::number);
      const bool flown = lap != laps.end();
      const bool finishing = flown && lap->finishing;
      if (finishing) sheet.Rectangle(At(0, top, place.width, kLapHeight), kFinishShade, Sheet::kThin);
      DrawLapRow(top + 0.2, kLapHeight - 0.4,
                 {std::to_string(row), flown ? FormatSeconds(lap->time) : "",
                  flown && lap->split ? FormatSeconds(*lap->split) : ""},
                 {1.5, 1.7, 1.5}, finishing);
      DrawRule(0, top + kLapHeight, Sheet::kHair);
    }
  }

  void DrawLapRow(double top, double height, const std::array<std::string, 3>& texts,
                  const std::array<double, 3>& sizes, bool bold) {
    const double timeRight = place.width * 0.6;
    const std::array boxes = {At(0, top, 2.9, height), At(3.2, top, timeRight - 3.2, height),
                              At(timeRight + 0.4, top, place.width - timeRight - 0.8, height)};
    for (std::size_t i = 0; i < boxes.size(); ++i) {
      sheet.Text(boxes[i], texts[i], {sizes[i], bold}, Align::Right);
    }
  }
};

constexpr double kLanesTop = kRaceHeadBottom;
constexpr double kCommentsTop = kLanesTop + kLaneColumnHeight + 1.6;
constexpr double kColumnGap = 2.0;

// Three columns at the least, so that a single lane does not sprawl over the page.
void DrawLanes(Sheet& sheet, const RaceRecord& race) {
  const auto flying = std::ranges::count_if(race.lanes, &LaneRecord::flies);
  const auto columns = static_cast<double>(std::max<std::ptrdiff_t>(3, flying));
  const double width = (Sheet::kInner - kColumnGap * (columns - 1)) / columns;
  double left = Sheet::kLeft;
  for (const LaneRecord& lane : FlyingLanes(race)) {
    LaneColumn{sheet, race, lane, {left, kLanesTop, width, kLaneColumnHeight}}.Draw();
    if (left > Sheet::kLeft) {
      sheet.VerticalRule(left - kColumnGap / 2, kLanesTop, kLanesTop + kLaneColumnHeight);
    }
    left += width + kColumnGap;
  }
}

// Takes what is left of the page between the lanes and the signatures.
void DrawComments(Sheet& sheet, const RaceRecord& race) {
  const double bottom = sheet.Height() - 16.4;
  sheet.Caption({Sheet::kLeft, kCommentsTop, Sheet::kInner, 1.9}, "Comments");
  const Box frame{Sheet::kLeft, kCommentsTop + 2.0, Sheet::kInner, bottom - kCommentsTop - 2.0};
  sheet.Rectangle(frame, std::nullopt, Sheet::kThin);
  const std::string note = UnusualNote(race);
  sheet.Wrapped({frame.left + 1, frame.top + 0.6, frame.width - 2, frame.height - 1.2},
                note + (note.empty() ? "" : "\n") + race.comments, {1.7, false});
  if (!race.comments.empty() || race.hasRun) return;
  for (double y = frame.top + 3.6; y < frame.Bottom() - 1.0; y += 3.6) {
    sheet.HorizontalRule(frame.left + 1, frame.Right() - 1, y, Sheet::kHair);
  }
}

void DrawSignatures(Sheet& sheet) {
  const double width = (Sheet::kInner - 2 * 3.0) / 3;
  const double line = sheet.Height() - 10.8;
  double left = Sheet::kLeft;
  for (const char* signer : {"Race Director", "Starter", "Timers"}) {
    sheet.HorizontalRule(left, left + width, line);
    sheet.Caption({left, line + 0.3, width, 1.9}, signer);
    left += width + 3.0;
  }
}

}  // namespace

void frmPrint::PrintDocument(Surface& surface, const RaceRecord& race, const std::string& program,
                             const LocalDateTime& printed) {
  if (surface.Page().width <= 0 || surface.Page().height <= 0) return;
  Sheet sheet(surface);
  DrawRaceHead(sheet, race, race.eventName.empty() ? "Heat Report" : race.eventName);
  DrawLanes(sheet, race);
  DrawComments(sheet, race);
  DrawSignatures(sheet);
  DrawRaceFoot(sheet, race, program, printed);
}

}  // namespace quorvane
