// The panel in the console's window.

#include "lane/frm_lane.h"

namespace quorvane {

void frmLane::SetFormParent(Control& frame, int laneIndex) {
  container_ = &frame;
  frame.SetVisible(false);
  SetVisible(true);
  laneIndex_ = laneIndex;
  UpdateLaneColor();
  Form_Resize();
}

void frmLane::UpdateLaneColor() {
  const int lane = laneIndex_ + 1;
  const std::string name = owner_.LaneColorName(lane);
  fraLane.SetCaption(name);
  lblLaneName.SetCaption(name);
  lblLow.SetBackColor(owner_.LaneLowColor(lane));
  lblHigh.SetBackColor(owner_.LaneHighColor(lane));
}

void frmLane::Form_Resize() {
  for (Control* button : {&cmdLap, &cmdCut, &cmdTurn}) button->SetVisible(!race_.CommActive);
}

void frmLane::FollowLink() {
  if (cmdLap.Visible() == race_.CommActive) ShowHandButtons();
}

void frmLane::Form_Unload() {
  container_ = nullptr;
  SetVisible(false);
}

void frmLane::fraLane_MouseMove() {
  HidePopUp();
}

void frmLane::HidePopUp() {
  cmdShow.SetVisible(false);
  cmdShow.SetTag("");
}

}  // namespace quorvane
