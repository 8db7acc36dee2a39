#include "print/print_preview.h"

#include <utility>

namespace quorvane {

PrintPreview::PrintPreview(Forms& forms, PreviewWindow& window, Report printDocument)
    : Form(forms, "PrintPreview"),
      mnuFile(AddCaptioned(ControlKind::Menu, "mnuFile", "&File")),
      mnuFileClose(AddCaptioned(ControlKind::Menu, "mnuFileClose", "&Close", &mnuFile)),
      mnuFileScale(AddCaptioned(ControlKind::Menu, "mnuFileScale", "&Scale", &mnuFile)),
      mnuScaleSet(*this, ControlKind::Menu, "mnuScaleSet", 1, 3, &mnuFileScale),
      mnuHelp(AddCaptioned(ControlKind::Menu, "mnuHelp", "&Help")),
      mnuHelpContents(AddCaptioned(ControlKind::Menu, "mnuHelpContents", "&Contents...", &mnuHelp)),
      mnuHelpSearch(AddCaptioned(ControlKind::Menu, "mnuHelpSearch", "&Search...", &mnuHelp)),
      mnuHelpScreen(AddCaptioned(ControlKind::Menu, "mnuHelpScreen", "&About Print Preview...", &mnuHelp)),
      window_(window),
      printDocument_(std::move(printDocument)) {
  SetCaption("Print Preview");
  mnuScaleSet[1].SetCaption("&Large");
  mnuScaleSet[2].SetCaption("&Medium");
  mnuScaleSet[3].SetCaption("&Small");
  mnuFileClose.onClick = [this] { CloseRequested(); };
  for (std::int16_t scale = 1; scale <= 3; ++scale) {
    mnuScaleSet[scale].onClick = [this, scale] { SetScale(scale); };
  }
}

void PrintPreview::Open() {
  Form_Load();
  Owner().Show(*this);
}

void PrintPreview::Form_Load() {
  MakePreview();
  factors_ = {1.0F, 0.75F, 0.375F};
  mnuScaleSet[scale_].SetChecked(false);
  scale_ = 1;
  SetScale(1);
}

void PrintPreview::SetInnerSize(int width, int height) {
  width_ = width;
  height_ = height;
}

void PrintPreview::MakePreview() {
  page_ = window_.Printer();
  printDocument_(window_.ClearHiddenPicture(page_));
}

void PrintPreview::SetScale(std::int16_t scale) {
  Control& chosen = mnuScaleSet[scale];
  mnuScaleSet[scale_].SetChecked(false);
  scale_ = scale;
  chosen.SetChecked(true);
  ScalePage(layout_, page_, factors_[static_cast<std::size_t>(scale - 1)]);
  ArrangeControls();
  DrawPreview();
}

void PrintPreview::ArrangeControls() {
  Arrange(layout_, width_, height_);
  window_.LayoutChanged(layout_);
}

void PrintPreview::DrawPreview() {
  window_.StretchPicture(layout_.ScrollArea);
}

void PrintPreview::HScroll_Change(int value) {
  MoveBar(layout_.HScroll, value);
}

void PrintPreview::VScroll_Change(int value) {
  MoveBar(layout_.VScroll, value);
}

void PrintPreview::MoveBar(ScrollBar& bar, int value) {
  if (!bar.MoveTo(value)) return;
  layout_.Scroll();
  window_.LayoutChanged(layout_);
}

void PrintPreview::KeyDown(const std::string& key) {
  ScrollBar& across = layout_.HScroll;
  ScrollBar& down = layout_.VScroll;
  if (key == "Left") MoveBar(across, across.value - across.small);
  if (key == "Right") MoveBar(across, across.value + across.small);
  if (key == "Up") MoveBar(down, down.value - down.small);
  if (key == "Down") MoveBar(down, down.value + down.small);
  if (key == "PageUp") MoveBar(down, down.value - down.large);
  if (key == "PageDown") MoveBar(down, down.value + down.large);
}

}  // namespace quorvane
