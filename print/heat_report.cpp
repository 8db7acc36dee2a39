#include "print/heat_report.h"

#include <array>
#include <utility>
#include <vector>

#include "print/lane_column.h"
#include "print/sheet.h"
#include "records/project.h"

namespace quorvane {
namespace {

constexpr double kTitleTop = Sheet::kMargin;
constexpr double kFieldsTop = 10.0;
constexpr double kFieldsHeight = 5.2;
constexpr double kLanesTop = 17.4;
constexpr double kCommentsTop = kLanesTop + LaneColumn::kHeight + 1.6;
constexpr double kColumnGap = 2.0;

std::string RaceTitle(const RaceRecord& race) {
  return std::to_string(race.number) + (race.refly != 0 ? " REFLY" : "") +
         (race.reflownBy != 0 ? " (reflown)" : "");
}

}  // namespace

frmPrint::frmPrint(const RaceRecord& race, std::string program, const LocalDateTime& printed)
    : race_(race), program_(std::move(program)), printed_(printed) {}

void frmPrint::PrintDocument(Surface& surface) const {
  if (surface.Page().width <= 0 || surface.Page().height <= 0) return;
  Sheet sheet(surface);
  DrawHead(sheet);
  DrawLanes(sheet);
  DrawComments(sheet);
  DrawSignatures(sheet);
  DrawFoot(sheet);
}

void frmPrint::DrawHead(Sheet& sheet) const {
  sheet.Text({Sheet::kLeft, kTitleTop, Sheet::kRight - Sheet::kLeft, 4.6},
             race_.eventName.empty() ? "Heat Report" : race_.eventName, {3.0, true});
  DrawHeadField(sheet, 5, 22, "Race", RaceTitle(race_));
  DrawHeadField(sheet, 28, 9, "Round", std::to_string(race_.round));
  DrawHeadField(sheet, 38, 9, "Heat", std::to_string(race_.heat));
  DrawHeadField(sheet, 48, 18, "Race Mode", race_.modeName);
  DrawHeadField(sheet, 67, 16, "Date", race_.hasRun ? ProjectDate(race_.when) : "");
  DrawHeadField(sheet, 84, 11, "Time", race_.hasRun ? TimeOfDay(race_.when) : "");
  sheet.HorizontalRule(Sheet::kLeft, Sheet::kRight, kFieldsTop + kFieldsHeight + 0.8, Sheet::kThick);
}

void frmPrint::DrawHeadField(Sheet& sheet, double left, double width, const char* caption,
                             const std::string& value) const {
  sheet.Caption({left, kFieldsTop, width, 1.9}, caption);
  if (value.empty()) {
    sheet.HorizontalRule(left, left + width, kFieldsTop + kFieldsHeight);
  } else {
    sheet.Text({left, kFieldsTop + 1.9, width, kFieldsHeight - 1.9}, value, {2.2, true});
  }
}

// Three columns at the least, so that a single lane does not sprawl over the page.
void frmPrint::DrawLanes(Sheet& sheet) const {
  std::vector<const LaneRecord*> flying;
  for (const LaneRecord& lane : race_.lanes) {
    if (lane.flies) flying.push_back(&lane);
  }
  const auto columns = static_cast<double>(flying.size() < 3 ? 3 : flying.size());
  const double width = (Sheet::kRight - Sheet::kLeft - kColumnGap * (columns - 1)) / columns;
  double left = Sheet::kLeft;
  for (const LaneRecord* lane : flying) {
    LaneColumn(sheet, race_, *lane, left, kLanesTop, width).Draw();
    if (lane != flying.front()) {
      sheet.VerticalRule(left - kColumnGap / 2, kLanesTop, kLanesTop + LaneColumn::kHeight);
    }
    left += width + kColumnGap;
  }
}

// Takes what is left of the page between the lanes and the signatures.
void frmPrint::DrawComments(Sheet& sheet) const {
  const double width = Sheet::kRight - Sheet::kLeft;
  const double bottom = sheet.Height() - 16.4;
  sheet.Caption({Sheet::kLeft, kCommentsTop, width, 1.9}, "Comments");
  const Box frame{Sheet::kLeft, kCommentsTop + 2.0, width, bottom - kCommentsTop - 2.0};
  sheet.Rectangle(frame, std::nullopt, Sheet::kThin);
  if (!race_.comments.empty()) {
    sheet.Wrapped({frame.left + 1, frame.top + 0.6, frame.width - 2, frame.height - 1.2}, race_.comments,
                  {1.7, false});
  } else if (!race_.hasRun) {
    for (double y = frame.top + 3.6; y < frame.Bottom() - 1.0; y += 3.6) {
      sheet.HorizontalRule(frame.left + 1, frame.Right() - 1, y, Sheet::kHair);
    }
  }
}

void frmPrint::DrawSignatures(Sheet& sheet) const {
  static constexpr std::array<const char*, 3> kSigners = {"Race Director", "Starter", "Timers"};
  const double width = (Sheet::kRight - Sheet::kLeft - 2 * 3.0) / 3;
  const double line = sheet.Height() - 10.8;
  double left = Sheet::kLeft;
  for (const char* signer : kSigners) {
    sheet.HorizontalRule(left, left + width, line);
    sheet.Caption({left, line + 0.3, width, 1.9}, signer);
    left += width + 3.0;
  }
}

void frmPrint::DrawFoot(Sheet& sheet) const {
  const double top = sheet.Height() - Sheet::kMargin - 1.9;
  sheet.HorizontalRule(Sheet::kLeft, Sheet::kRight, top - 0.3, Sheet::kHair);
  sheet.Caption({Sheet::kLeft, top, 34, 1.9}, FileNameOf(race_.projectFile));
  sheet.Caption({40, top, 22, 1.9}, program_, Align::Center);
  sheet.Caption({63, top, Sheet::kRight - 63, 1.9},
                "Printed " + ProjectDate(printed_) + " " + TimeOfDay(printed_), Align::Right);
}

}  // namespace quorvane
