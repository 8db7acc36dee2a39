#include "print/lane_column.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string>

#include "base/time_text.h"

namespace quorvane {
namespace {

constexpr std::int32_t kWithoutResult = 1000000;
constexpr int kMostLaps = 11;
constexpr int kFirstFaiMode = 4;

// Places in the column, from its top.
constexpr double kPilotTop = 5.2;
constexpr double kCallerTop = 9.0;
constexpr double kRuledHeight = 3.6;
constexpr double kPlaceTop = 13.4;
constexpr double kTimeTop = 18.8;
constexpr double kCutsTop = 22.4;
constexpr double kCutListTop = 25.4;
constexpr double kCutListHeight = 8.6;
constexpr double kLapHeadTop = 34.4;
constexpr double kLapsTop = 36.6;
constexpr double kLapHeight = 3.0;
constexpr double kCaptionWidth = 5.0;

constexpr Color kFinishShade = Color::Rgb(0xDDDDDD);

std::string Trimmed(const std::string& text) {
  const std::size_t first = text.find_first_not_of(' ');
  return first == std::string::npos ? std::string()
                                    : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::optional<Color> SwatchFill(Color color) {
  return color.SystemColor() == Color::System::None ? std::optional<Color>(color) : std::nullopt;
}

// How the list of cuts is set: the more cuts, the smaller.
struct CutGrid {
  int columns;
  double size;
  double rowHeight;

  int Rows() const { return static_cast<int>(std::floor(kCutListHeight / rowHeight)); }
  int Cells() const { return columns * Rows(); }
};

CutGrid GridFor(std::size_t cuts) {
  static constexpr std::array<CutGrid, 3> kGrids = {{{2, 1.5, 2.15}, {2, 1.25, 1.7}, {3, 1.0, 1.4}}};
  for (const CutGrid& grid : kGrids) {
    if (cuts <= static_cast<std::size_t>(grid.Cells())) return grid;
  }
  return kGrids.back();
}

}  // namespace

LaneColumn::LaneColumn(Sheet& sheet, const RaceRecord& race, const LaneRecord& lane, double left, double top,
                       double width)
    : sheet_(sheet), race_(race), lane_(lane), left_(left), top_(top), width_(width) {}

void LaneColumn::Draw() {
  DrawMarking();
  DrawRuledLine(kPilotTop, "Pilot");
  DrawRuledLine(kCallerTop, "Caller");
  DrawResult(kPlaceTop, 5.0, "Place", lane_.placing, 3.4);
  DrawResult(kTimeTop, 3.4, "Time",
             FormatMinutes(FormatSeconds(lane_.final < kWithoutResult ? lane_.final : 0)), 2.3);
  DrawResult(kCutsTop, 2.8, "Cuts", std::to_string(lane_.cuts.size()), 1.8);
  if (race_.hasRun) {
    DrawCuts();
  } else {
    DrawCutRules();
  }
  DrawLaps();
}

Box LaneColumn::At(double left, double top, double width, double height) const {
  return {left_ + left, top_ + top, width, height};
}

// The swatch shows the high half of the marking above the low one, as it is painted on the aircraft.
void LaneColumn::DrawMarking() {
  const Box swatch = At(0, 0.3, 2.6, 3.8);
  const double half = swatch.height / 2;
  sheet_.Rectangle({swatch.left, swatch.top, swatch.width, half}, SwatchFill(lane_.high), Sheet::kHair);
  sheet_.Rectangle({swatch.left, swatch.top + half, swatch.width, half}, SwatchFill(lane_.low), Sheet::kHair);

  const std::string title = "Lane " + std::to_string(lane_.lane);
  const std::string marking = Trimmed(lane_.name);
  const double textLeft = 3.4;
  const double noviceWidth = lane_.novice ? 6.6 : 0.0;
  sheet_.Text(At(textLeft, 0, width_ - textLeft - noviceWidth, 2.3), title, {1.8, true});
  if (lane_.novice)
    sheet_.Text(At(width_ - noviceWidth, 0, noviceWidth, 2.3), "9 Laps", {1.5, true}, Align::Right);
  if (marking != title) sheet_.Text(At(textLeft, 2.3, width_ - textLeft, 2.2), marking, {1.5, false});
  sheet_.HorizontalRule(left_, left_ + width_, top_ + 4.8, Sheet::kThick);
}

void LaneColumn::DrawRuledLine(double top, const char* caption) {
  sheet_.Caption(At(0, top + kRuledHeight - 1.9, kCaptionWidth, 1.9), caption);
  sheet_.HorizontalRule(left_ + kCaptionWidth, left_ + width_, top_ + top + kRuledHeight);
}

void LaneColumn::DrawResult(double top, double height, const char* caption, const std::string& text,
                            double size) {
  sheet_.Caption(At(0, top + height - 1.9, kCaptionWidth, 1.9), caption);
  if (race_.hasRun) {
    sheet_.Text(At(kCaptionWidth, top, width_ - kCaptionWidth, height), text, {size, true}, Align::Right);
  } else {
    sheet_.HorizontalRule(left_ + kCaptionWidth, left_ + width_, top_ + top + height);
  }
}

void LaneColumn::DrawCuts() {
  const CutGrid grid = GridFor(lane_.cuts.size());
  const int cells = grid.Cells();
  const int count =
      static_cast<int>(std::min<std::size_t>(lane_.cuts.size(), static_cast<std::size_t>(cells)));
  const bool tooMany = lane_.cuts.size() > static_cast<std::size_t>(cells);
  const double cellWidth = width_ / grid.columns;
  for (int i = 0; i < count; ++i) {
    const CutRecord& cut = lane_.cuts[static_cast<std::size_t>(i)];
    const bool last = tooMany && i == count - 1;
    const std::string text = last ? std::string("\xE2\x80\xA6") : cut.pylon + " " + FormatSeconds(cut.time);
    const int column = i / grid.Rows();
    const int row = i % grid.Rows();
    sheet_.Text(At(column * cellWidth, kCutListTop + row * grid.rowHeight, cellWidth - 0.4, grid.rowHeight),
                text, {grid.size, false});
  }
}

void LaneColumn::DrawCutRules() {
  constexpr double kLine = 4.0;
  for (double y = kLine; y < kCutListHeight; y += kLine) {
    sheet_.HorizontalRule(left_ + kCaptionWidth, left_ + width_, top_ + kCutListTop + y, Sheet::kHair);
  }
}

// A novice's free lap is not numbered, so that a novice's laps run from 1 to 9.
int LaneColumn::FreeLaps() const {
  return lane_.novice ? 1 : 0;
}

// A blank sheet offers the lap that a cut may cost; the FAI rules know no such lap.
int LaneColumn::LapRows() const {
  const int mayOwe = race_.mode >= kFirstFaiMode ? kMostLaps - 1 : kMostLaps;
  const int target = race_.hasRun ? lane_.lapTarget : std::max(lane_.lapTarget, mayOwe);
  return std::clamp(target, 2, kMostLaps) - FreeLaps();
}

void LaneColumn::DrawLaps() {
  const double timeRight = width_ * 0.6;
  sheet_.Caption(At(0, kLapHeadTop, 2.9, 1.9), "Lap", Align::Right);
  sheet_.Caption(At(3.2, kLapHeadTop, timeRight - 3.2, 1.9), "Time", Align::Right);
  sheet_.Caption(At(timeRight + 0.4, kLapHeadTop, width_ - timeRight - 0.8, 1.9), "Split", Align::Right);
  sheet_.HorizontalRule(left_, left_ + width_, top_ + kLapsTop, Sheet::kThin);

  const int rows = LapRows();
  for (int row = 1; row <= rows; ++row) {
    const auto lap = std::find_if(lane_.laps.begin(), lane_.laps.end(), [&](const LapRecord& candidate) {
      return !candidate.credited && candidate.count - FreeLaps() == row;
    });
    const LapRecord unflown;
    DrawLap(row, race_.hasRun && lap != lane_.laps.end() ? *lap : unflown);
  }
}

void LaneColumn::DrawLap(int row, const LapRecord& lap) {
  const double top = kLapsTop + (row - 1) * kLapHeight;
  const double timeRight = width_ * 0.6;
  const double textTop = top + 0.2;
  const double textHeight = kLapHeight - 0.4;
  if (lap.finishing) sheet_.Rectangle(At(0, top, width_, kLapHeight), kFinishShade, Sheet::kThin);
  sheet_.Text(At(0, textTop, 2.9, textHeight), std::to_string(row), {1.5, lap.finishing}, Align::Right);
  if (lap.count > 0) {
    sheet_.Text(At(3.2, textTop, timeRight - 3.2, textHeight), FormatSeconds(lap.time), {1.7, lap.finishing},
                Align::Right);
    sheet_.Text(At(timeRight + 0.4, textTop, width_ - timeRight - 0.8, textHeight), Split(lap),
                {1.5, lap.finishing}, Align::Right);
  }
  sheet_.HorizontalRule(left_, left_ + width_, top_ + top + kLapHeight, Sheet::kHair);
}

// Empty where the lap before is not known, as in a project file edited by hand.
std::string LaneColumn::Split(const LapRecord& lap) const {
  std::int64_t before = 0;
  if (lap.count - FreeLaps() > 1) {
    const auto previous = std::find_if(lane_.laps.begin(), lane_.laps.end(), [&](const LapRecord& candidate) {
      return candidate.count == lap.count - 1;
    });
    if (previous == lane_.laps.end()) return {};
    before = previous->time;
  }
  const std::int64_t split = lap.time - before;
  if (split < 1 || split > std::numeric_limits<std::int32_t>::max()) return {};
  return FormatSeconds(static_cast<std::int32_t>(split));
}

}  // namespace quorvane
