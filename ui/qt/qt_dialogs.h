#pragma once

#include "forms/platform.h"

class QWidget;

namespace quorvane {

// Shows the box over its parent (null: in the middle of the screen) and returns when it has been answered.
// Other events of the program go on meanwhile.
DialogAnswer ShowQtDialog(const DialogBox& box, QWidget* parent);

}  // namespace quorvane
