#pragma once

#include <cstdint>
#include <functional>

#include "forms/forms.h"

namespace quorvane {

// The heat report on the screen as the printer would put it on paper, at one of three sizes. The window that
// shows it has the report drawn once, and scrolls.
class PrintPreview : public Form {
 public:
  // Shows the page at that share of its full size, from its upper left corner.
  using ShowPage = std::function<void(float scale)>;

  PrintPreview(Forms& forms, ShowPage showPage);

  Control& mnuFile;
  Control& mnuFileClose;
  Control& mnuFileScale;
  ControlArray mnuScaleSet;  // 1 large, 2 medium, 3 small
  Control& mnuHelp;
  Control& mnuHelpContents;
  Control& mnuHelpSearch;
  Control& mnuHelpScreen;

  // At full size, and brings the operator to it. An open preview starts anew.
  void Open();
  void SetScale(std::int16_t scale);  // 1..3, SubscriptError beyond; nothing has changed then

 private:
  const ShowPage showPage_;
  std::int16_t scale_ = 1;
};

}  // namespace quorvane
