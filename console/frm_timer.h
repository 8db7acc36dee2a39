#pragma once

#include "forms/form.h"
#include "forms/platform.h"

namespace quorvane {

// Shows how finely this machine's stopwatch measures, and sets how often the race clock on the screen may be
// drawn anew. Race times are read from the stopwatch itself, so no setting here changes one.
class frmTimer : public Form {
 public:
  frmTimer(Forms& forms, Platform& platform);

  Control& lblResolution;
  Control& lblFrequency;
  Control& fraGranularity;
  ControlArray optGranularity;  // 0..3: 1, 2, 5 and 10 ms
  Control& lblExplained;
  Control& cmdClose;

  // Reads the granularity from the settings; 1 ms unless it is one of the four.
  void Form_Load();
  // Measures the stopwatch each time the operator comes here.
  void Activated() override;
  void optGranularity_Click(int index);

  // ms: the display timer fires only at multiples of it.
  int Granularity() const { return granularity_; }

 private:
  void Choose(int index);

  Platform& platform_;
  int granularity_ = 1;
};

}  // namespace quorvane
