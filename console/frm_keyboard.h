#pragma once

#include "forms/form.h"

namespace quorvane {

// The console's keys at a glance: one row a judgement, one column a lane.
class frmKeyboard : public Form {
 public:
  explicit frmKeyboard(Forms& forms);

  ControlArray lblLane;    // 1..4, headings of the columns
  ControlArray lblAction;  // 0..3, headings of the rows
  ControlArray lblKey;     // 0..15, by rows
  Control& lblNotes;
  Control& cmdClose;
};

}  // namespace quorvane
