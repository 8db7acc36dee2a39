#pragma once

#include "forms/control.h"

namespace quorvane {

// For text and combo boxes that take a number: a character other than a digit, "-" or "." is swallowed
// (keyCode becomes 0). Blank, control keys and everything from 127 up pass.
void FilterNumericKey(const Control& control, int& keyCode);

// Selects the whole text of a text or combo box.
void SelectAllText(Control& control);

}  // namespace quorvane
