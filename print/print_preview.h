#pragma once

#include <cstdint>
#include <functional>

#include "forms/forms.h"

namespace quorvane {

// The heat report on the screen as the printer would put it on paper, at one of three sizes.
class PrintPreview : public Form {
 public:
  // Shows the page at that share of its full size, from its upper left corner.
  using ShowPage = std::function<void(float scale)>;

  PrintPreview(Forms& forms, ShowPage showPage);

  Control& mnuFile = AddCaptioned(ControlKind::Menu, "mnuFile", "&File");
  Control& mnuFileClose = AddCaptioned(ControlKind::Menu, "mnuFileClose", "&Close", &mnuFile);
  Control& mnuFileScale = AddCaptioned(ControlKind::Menu, "mnuFileScale", "&Scale", &mnuFile);
  // 1 large, 2 medium, 3 small.
  ControlArray mnuScaleSet{*this, ControlKind::Menu, "mnuScaleSet", 1, 3, &mnuFileScale};
  Control& mnuHelp = AddCaptioned(ControlKind::Menu, "mnuHelp", "&Help");
  Control& mnuHelpContents = AddCaptioned(ControlKind::Menu, "mnuHelpContents", "&Contents...", &mnuHelp);
  Control& mnuHelpSearch = AddCaptioned(ControlKind::Menu, "mnuHelpSearch", "&Search...", &mnuHelp);
  Control& mnuHelpScreen =
      AddCaptioned(ControlKind::Menu, "mnuHelpScreen", "&About Print Preview...", &mnuHelp);

  // At full size, and brings the operator to it. An open preview starts anew.
  void Open();
  void SetScale(std::int16_t scale);  // 1..3, SubscriptError beyond; nothing has changed then

 private:
  const ShowPage showPage_;
  std::int16_t scale_ = 1;
};

}  // namespace quorvane
