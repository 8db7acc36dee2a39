#include "console/frm_timer.h"

#include <array>

#include "base/text.h"
#include "forms/forms.h"

namespace quorvane {
namespace {

constexpr std::array kChoices = {1, 2, 5, 10};  // ms
constexpr const char* kSection = "Timer";
constexpr const char* kKey = "Granularity";

// Nanoseconds in the unit that keeps the number short.
std::string Duration(std::int64_t ns) {
  if (ns < 1000) return std::to_string(ns) + " ns";
  if (ns < 1000000) return FormatRatio(ns, 1000, 2) + " \xC2\xB5s";
  return FormatRatio(ns, 1000000, 2) + " ms";
}

std::string Frequency(std::int64_t hertz) {
  if (hertz < 1000000) return FormatRatio(hertz, 1000, 3) + " kHz";
  return FormatRatio(hertz, 1000000, 3) + " MHz";
}

}  // namespace

frmTimer::frmTimer(Forms& forms, Platform& platform)
    : Form(forms, "frmTimer"),
      lblResolution(Add(ControlKind::Label, "lblResolution")),
      lblFrequency(Add(ControlKind::Label, "lblFrequency")),
      fraGranularity(AddCaptioned(ControlKind::Frame, "fraGranularity", "Display timer")),
      optGranularity(*this, ControlKind::Option, "optGranularity", 0, 3, &fraGranularity),
      lblExplained(
          AddCaptioned(ControlKind::Label, "lblExplained",
                       "How finely the clock on the screen is timed. A coarser setting spares a slow "
                       "computer; race times stay the same.")),
      cmdClose(AddCaptioned(ControlKind::Button, "cmdClose", "Close")),
      platform_(platform) {
  SetCaption("ccrpTMR settings");
  for (int i = 0; i < 4; ++i) {
    optGranularity[i].SetCaption(std::to_string(kChoices[static_cast<std::size_t>(i)]) + " ms");
    optGranularity[i].onClick = [this, i] { optGranularity_Click(i); };
  }
  cmdClose.onClick = [this] { CloseRequested(); };
  Choose(0);
}

void frmTimer::Form_Load() {
  const double kept = LeadingNumber(platform_.Settings().GetSetting(kSection, kKey, "1"));
  for (int i = 0; i < 4; ++i) {
    if (kept == kChoices[static_cast<std::size_t>(i)]) Choose(i);
  }
}

void frmTimer::Activated() {
  const StopwatchFigures figures = platform_.MeasureStopwatch();
  lblResolution.SetCaption(Duration(figures.resolutionNs));
  lblFrequency.SetCaption(Frequency(figures.frequencyHz));
}

void frmTimer::optGranularity_Click(int index) {
  Choose(index);
  platform_.Settings().SaveSetting(kSection, kKey, std::to_string(granularity_));
}

void frmTimer::Choose(int index) {
  granularity_ = kChoices[static_cast<std::size_t>(index)];
  for (int i = 0; i < 4; ++i) optGranularity[i].SetValue(i == index ? 1 : 0);
}

}  // namespace quorvane
