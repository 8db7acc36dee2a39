#pragma once

#include <array>
#include <functional>
#include <utility>

#include "forms/forms.h"

namespace quorvane {

// A report on the screen as the printer would put it on paper, at one of three sizes.
class PrintPreview : public Form {
 public:
  // Shows the pages at that share of its full size, from its upper left corner.
  using ShowPage = std::function<void(float scale)>;

  // print: puts on paper what is shown.
  PrintPreview(Forms& forms, ShowPage showPage, std::function<void()> print)
      : Form(forms, "PrintPreview"), showPage_(std::move(showPage)) {
    SetCaption("Print Preview");
    mnuScaleSet[1].SetCaption("&Large");
    mnuScaleSet[2].SetCaption("&Medium");
    mnuScaleSet[3].SetCaption("&Small");
    mnuFilePrint.onClick = std::move(print);
    mnuFileClose.onClick = [this] { CloseRequested(); };
    for (int scale = 1; scale <= 3; ++scale) mnuScaleSet[scale].onClick = [this, scale] { SetScale(scale); };
  }

  Control& mnuFile = AddCaptioned(ControlKind::Menu, "mnuFile", "&File");
  Control& mnuFilePrint = AddCaptioned(ControlKind::Menu, "mnuFilePrint", "&Print", &mnuFile);
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
  void Open() {
    SetScale(1);
    Owner().Show(*this);
  }
  void SetScale(int scale) {  // 1..3, SubscriptError beyond; nothing has changed then
    static constexpr std::array kFactors = {1.0F, 0.75F, 0.375F};
    Control& chosen = mnuScaleSet[scale];
    mnuScaleSet[scale_].SetChecked(false);
    scale_ = scale;
    chosen.SetChecked(true);
    showPage_(Element(kFactors, scale - 1));
  }

 private:
  const ShowPage showPage_;
  int scale_ = 1;
};

}  // namespace quorvane
