#include "print/race_page.h"

#include <optional>

#include "records/project.h"

namespace quorvane {
namespace {

constexpr double kFieldsTop = 10.0;
constexpr double kFieldsHeight = 5.2;

std::optional<Color> SwatchFill(Color color) {
  return color.SystemColor() == Color::System::None ? std::optional<Color>(color) : std::nullopt;
}

std::string RaceTitle(const RaceRecord& race) {
  return std::to_string(race.number) + (race.refly != 0 ? " REFLY" : "") +
         (race.reflownBy != 0 ? " (reflown)" : "");
}

}  // namespace

// What is not known yet has a rule to be written on.
void DrawRaceHead(Sheet& sheet, const RaceRecord& race, const std::string& title, double titleWidth) {
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
  sheet.Text({Sheet::kLeft, Sheet::kMargin, titleWidth, 4.6}, title, {3.0, true});
  for (const auto& [left, width, caption, value] : fields) {
    sheet.Caption({left, kFieldsTop, width, 1.9}, caption);
    if (value.empty()) sheet.HorizontalRule(left, left + width, kFieldsTop + kFieldsHeight);
    sheet.Text({left, kFieldsTop + 1.9, width, kFieldsHeight - 1.9}, value, {2.2, true});
  }
  sheet.HorizontalRule(Sheet::kLeft, Sheet::kRight, kFieldsTop + kFieldsHeight + 0.8, Sheet::kThick);
}

void DrawRaceFoot(Sheet& sheet, const RaceRecord& race, const std::string& program,
                  const LocalDateTime& printed) {
  const double foot = sheet.Height() - Sheet::kMargin - 1.9;
  sheet.HorizontalRule(Sheet::kLeft, Sheet::kRight, foot - 0.3, Sheet::kHair);
  sheet.Caption({Sheet::kLeft, foot, 34, 1.9}, FileNameOf(race.projectFile));
  sheet.Caption({40, foot, 22, 1.9}, program, Align::Center);
  sheet.Caption({63, foot, Sheet::kRight - 63, 1.9},
                "Printed " + ProjectDate(printed) + " " + TimeOfDay(printed), Align::Right);
}

void DrawMark(Sheet& sheet, const LaneRecord& lane, const Box& box) {
  const double half = box.height / 2;
  sheet.Rectangle({box.left, box.top, box.width, half}, SwatchFill(lane.high), Sheet::kHair);
  sheet.Rectangle({box.left, box.top + half, box.width, half}, SwatchFill(lane.low), Sheet::kHair);
}

}  // namespace quorvane
