#pragma once

#include <string>

#include "records/race_record.h"

namespace quorvane {

// Puts heat reports and protest sheets on paper, on the screen and into files. Every call returns at once:
// the radio never waits for a printer. frmJudge::ShowNotice tells what becomes of it. This one does nothing.
class HeatPrinter {
 public:
  virtual ~HeatPrinter() = default;
  // Never opens a dialog box.
  virtual void PrintHeat(const RaceRecord& /*race*/) {}
  virtual void PreviewHeat(const RaceRecord& /*race*/) {}
  virtual void ShowProtestSheet(const RaceRecord& /*race*/) {}
  virtual void SaveHeat(const RaceRecord& /*race*/, const std::string& /*path*/) {}
  // Lets the operator choose printer and paper.
  virtual void SetUpPrinter() {}
};

}  // namespace quorvane
