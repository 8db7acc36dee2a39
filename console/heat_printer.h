#pragma once

#include <string>

#include "records/race_record.h"

namespace quorvane {

// Puts heat reports on paper, on the screen and into files. Every call returns at once and does its work
// later, so that the radio never waits for a printer; what becomes of it is told by frmJudge::ShowNotice.
class HeatPrinter {
 public:
  virtual ~HeatPrinter() = default;
  // Never opens a dialog box.
  virtual void PrintHeat(const RaceRecord& race) = 0;
  virtual void PreviewHeat(const RaceRecord& race) = 0;
  virtual void SaveHeat(const RaceRecord& race, const std::string& path) = 0;
  // Lets the operator choose printer and paper.
  virtual void SetUpPrinter() = 0;
};

}  // namespace quorvane
