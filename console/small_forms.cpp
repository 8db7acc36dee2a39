#include "console/small_forms.h"

#include <array>

#include "base/text.h"
#include "forms/event.h"

namespace quorvane {
namespace {

constexpr std::array kGranularities = {1, 2, 5, 10};  // ms

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

frmAbout::frmAbout(Forms& forms) : Form(forms, "frmAbout") {
  SetCaption("About Quorvane");
  SetCommit({});
  SetLibraries({});
  cmdClose.onClick = [this] { CloseRequested(); };
}

void frmAbout::SetCommit(const std::string& commit) {
  lblVersion.SetCaption("Version " QUORVANE_VERSION + (commit.empty() ? "" : " (" + commit + ")") +
                        ", " QUORVANE_VERSION_DATE);
}

void frmAbout::SetLibraries(const std::string& libraries) {
#if defined(__clang__)
  const std::string compiler = "Clang " __clang_version__;
#elif defined(__GNUC__)
  const std::string compiler = "GCC " __VERSION__;
#else
  const std::string compiler = "C++";
#endif
  lblBuiltWith.SetCaption("Built with " + (libraries.empty() ? "" : libraries + " and ") + compiler);
}

std::string frmAbout::ProgramName() {
  return "Quorvane " QUORVANE_VERSION;
}

frmKeyboard::frmKeyboard(Forms& forms) : Form(forms, "frmKeyboard") {
  SetCaption("Keyboard");
  for (int lane = 1; lane <= 4; ++lane) lblLane[lane].SetCaption("Lane " + std::to_string(lane));
  lblAction[0].SetCaption("Lap");
  for (int pylon = 1; pylon <= 3; ++pylon) {
    lblAction[pylon].SetCaption("Cut at pylon " + std::to_string(pylon));
  }
  for (int i = 0; i < 16; ++i) lblKey[i].SetCaption(std::string(Element(kKeyNames, i)));
  cmdClose.onClick = [this] { CloseRequested(); };
}

frmTimer::frmTimer(Forms& forms, Platform& platform) : Form(forms, "frmTimer"), platform_(platform) {
  SetCaption("ccrpTMR settings");
  for (int i = 0; i < 4; ++i) {
    optGranularity[i].SetCaption(std::to_string(Element(kGranularities, i)) + " ms");
    optGranularity[i].onClick = [this, i] {
      Choose(i);
      platform_.Settings().SaveSetting("Timer", "Granularity", std::to_string(granularity_));
    };
  }
  cmdClose.onClick = [this] { CloseRequested(); };
  Choose(0);
}

void frmTimer::Form_Load() {
  const double kept = LeadingNumber(platform_.Settings().GetSetting("Timer", "Granularity", "1"));
  for (int i = 0; i < 4; ++i) {
    if (kept == Element(kGranularities, i)) Choose(i);
  }
}

void frmTimer::Activated() {
  const StopwatchFigures figures = platform_.MeasureStopwatch();
  lblResolution.SetCaption(Duration(figures.resolutionNs));
  lblFrequency.SetCaption(Frequency(figures.frequencyHz));
}

void frmTimer::Choose(int index) {
  granularity_ = Element(kGranularities, index);
  for (int i = 0; i < 4; ++i) optGranularity[i].SetValue(i == index ? 1 : 0);
}

}  // namespace quorvane
