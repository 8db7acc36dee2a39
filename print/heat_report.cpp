#include "print/heat_report.h"

#include <algorithm>

#include "print/lane_column.h"
#include "print/sheet.h"
#include "records/project.h"

namespace quorvane {
namespace {

constexpr double kFieldsTop = 10.0;
constexpr double kFieldsHeight = 5.2;
constexpr double kLanesTop = 17.4;
constexpr double kCommentsTop = kLanesTop + kLaneColumnHeight + 1.6;
constexpr double kColumnGap = 2.0;

std::string RaceTitle(const RaceRecord& race) {
  return std::to_string(race.number) + (race.refly != 0 ? " REFLY" : "") +
         (race.reflownBy != 0 ? " (reflown)" : "");
}

// What is not known yet has a rule to be written on.
void DrawHead(Sheet& sheet, const RaceRecord& race) {
  const struct {
    double left, width;
    const char* caption;
    std::string value;
  } fields[] = {{5, 22, "Race", RaceTitle(race)},
                {28, 9, "Round", std::to_string(race.round)},
                {38, 9, "Heat", std::to_string(race.heat)},
                {48, 18, "Race Mode", race.modeName},
                {67, 16, "Date", race.hasRun ? ProjectDate(race.when) : ""},
                {84, 11, "Time", race.hasRun ? TimeOfDay(race.when) : ""}};
  sheet.Text({Sheet::kLeft, Sheet::kMargin, Sheet::kInner, 4.6},
             race.eventName.empty() ? "Heat Report" : race.eventName, {3.0, true});
  for (const auto& [left, width, caption, value] : fields) {
    sheet.Caption({left, kFieldsTop, width, 1.9}, caption);
    if (value.empty()) sheet.HorizontalRule(left, left + width, kFieldsTop + kFieldsHeight);
    sheet.Text({left, kFieldsTop + 1.9, width, kFieldsHeight - 1.9}, value, {2.2, true});
  }
  sheet.HorizontalRule(Sheet::kLeft, Sheet::kRight, kFieldsTop + kFieldsHeight + 0.8, Sheet::kThick);
}

// Three columns at the least, so that a single lane does not sprawl over the page.
void DrawLanes(Sheet& sheet, const RaceRecord& race) {
  const auto flying = std::ranges::count_if(race.lanes, &LaneRecord::flies);
  const auto columns = static_cast<double>(std::max<std::ptrdiff_t>(3, flying));
  const double width = (Sheet::kInner - kColumnGap * (columns - 1)) / columns;
  double left = Sheet::kLeft;
  for (const LaneRecord& lane : race.lanes) {
    if (!lane.flies) continue;
    DrawLaneColumn(sheet, race, lane, {left, kLanesTop, width, kLaneColumnHeight});
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
  sheet.Wrapped({frame.left + 1, frame.top + 0.6, frame.width - 2, frame.height - 1.2}, race.comments,
                {1.7, false});
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

void frmPrint::PrintDocument(Surface& surface) const {
  if (surface.Page().width <= 0 || surface.Page().height <= 0) return;
  Sheet sheet(surface);
  DrawHead(sheet, race_);
  DrawLanes(sheet, race_);
  DrawComments(sheet, race_);
  DrawSignatures(sheet);
  const double foot = sheet.Height() - Sheet::kMargin - 1.9;
  sheet.HorizontalRule(Sheet::kLeft, Sheet::kRight, foot - 0.3, Sheet::kHair);
  sheet.Caption({Sheet::kLeft, foot, 34, 1.9}, FileNameOf(race_.projectFile));
  sheet.Caption({40, foot, 22, 1.9}, program_, Align::Center);
  sheet.Caption({63, foot, Sheet::kRight - 63, 1.9},
                "Printed " + ProjectDate(printed_) + " " + TimeOfDay(printed_), Align::Right);
}

}  // namespace quorvane
