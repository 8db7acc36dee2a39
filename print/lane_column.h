#pragma once

#include "print/sheet.h"
#include "records/race_record.h"

namespace quorvane {

// The column of one lane on the heat report: who flew it, where it came in, its cuts and its laps. A race
// that has not run leaves the same places ruled, to be filled in by hand.
class LaneColumn {
 public:
  static constexpr double kHeight = 70.0;

  // Left and width in the sheet's units.
  LaneColumn(Sheet& sheet, const RaceRecord& race, const LaneRecord& lane, double left, double top,
             double width);

  void Draw();

 private:
  Box At(double left, double top, double width, double height) const;
  void DrawMarking();
  void DrawRuledLine(double top, const char* caption);
  void DrawResult(double top, double height, const char* caption, const std::string& text, double size);
  void DrawCuts();
  void DrawCutRules();
  void DrawLaps();
  void DrawLap(int row, const LapRecord& lap);
  std::string Split(const LapRecord& lap) const;
  int FreeLaps() const;
  int LapRows() const;

  Sheet& sheet_;
  const RaceRecord& race_;
  const LaneRecord& lane_;
  const double left_;
  const double top_;
  const double width_;
};

}  // namespace quorvane
