#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>

#include "forms/forms.h"
#include "print/preview_layout.h"
#include "print/surface.h"

namespace quorvane {

// What the preview needs from the window that shows it.
class PreviewWindow {
 public:
  virtual ~PreviewWindow() = default;

  // The page of the printer that is chosen now.
  virtual PrinterPage Printer() = 0;
  // Gives an empty off-screen page of that size and origin, which keeps what is drawn on it until the next
  // call.
  virtual Surface& ClearHiddenPicture(const PrinterPage& page) = 0;
  // Paints the whole off-screen page into the scaled page, stretched to its size: at once while the window is
  // being painted, otherwise as soon as it can be. Paints by the window itself call ScrollArea_Paint.
  virtual void StretchPicture(const clsRect& scrollArea) = 0;
  // The viewport, the scaled page or the bars stand elsewhere.
  virtual void LayoutChanged(const PreviewLayout& layout) = 0;
};

// The heat report on the screen as the printer would put it on paper, at one of three sizes. The report is
// drawn once each time the preview is opened; scaling, scrolling and repainting only copy that picture.
class PrintPreview : public Form {
 public:
  using Report = std::function<void(Surface&)>;

  PrintPreview(Forms& forms, PreviewWindow& window, Report printDocument);

  Control& mnuFile;
  Control& mnuFileClose;
  Control& mnuFileScale;
  ControlArray mnuScaleSet;  // 1 large, 2 medium, 3 small
  Control& mnuHelp;
  Control& mnuHelpContents;
  Control& mnuHelpSearch;
  Control& mnuHelpScreen;

  // Draws the report, shows it at full size and brings the operator to it. An open preview starts anew.
  void Open();
  void Form_Load();
  // The window's inner size, in pixels. It is used from the next Resized on.
  void SetInnerSize(int width, int height);

  void MakePreview();
  void SetScale(std::int16_t scale);  // 1..3, SubscriptError beyond; nothing has changed then
  void ArrangeControls();
  void DrawPreview();

  // The operator moved a bar, or is dragging its thumb. The value is held within the bar's range.
  void HScroll_Change(int value);
  void VScroll_Change(int value);
  void ScrollArea_Paint() { DrawPreview(); }

  void KeyDown(const std::string& key) override;  // "Left", "Right", "Up", "Down", "PageUp", "PageDown"
  void Resized() override { ArrangeControls(); }

  std::int16_t Scale() const { return scale_; }
  const PreviewLayout& Layout() const { return layout_; }

 private:
  void MoveBar(ScrollBar& bar, int value);

  PreviewWindow& window_;
  const Report printDocument_;
  PrinterPage page_;
  PreviewLayout layout_;
  std::int16_t scale_ = 1;
  std::array<float, 3> factors_ = {};
  int width_ = 640;
  int height_ = 480;
};

}  // namespace quorvane
