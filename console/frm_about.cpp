#include "console/frm_about.h"

#include "forms/forms.h"

namespace quorvane {
namespace {

std::string Compiler() {
#if defined(__clang__)
  return std::string("Clang ") + __clang_version__;
#elif defined(__GNUC__)
  return std::string("GCC ") + __VERSION__;
#elif defined(_MSC_VER)
  return "Visual C++ " + std::to_string(_MSC_VER);
#else
  return "C++";
#endif
}

}  // namespace

frmAbout::frmAbout(Forms& forms)
    : Form(forms, "frmAbout"),
      lblName(AddCaptioned(ControlKind::Label, "lblName", "Quorvane")),
      lblVersion(AddCaptioned(ControlKind::Label, "lblVersion",
                              "Version " QUORVANE_VERSION ", " QUORVANE_VERSION_DATE)),
      lblPurpose(
          AddCaptioned(ControlKind::Label, "lblPurpose", "Race control for model-aircraft pylon racing")),
      lblCredits(
          AddCaptioned(ControlKind::Label, "lblCredits",
                       "Written by the Quorvane developers, with thanks to the race directors, starters, "
                       "timers and pylon judges who stand in the sun.")),
      lblBuiltWith(Add(ControlKind::Label, "lblBuiltWith")),
      cmdClose(AddCaptioned(ControlKind::Button, "cmdClose", "Close")) {
  SetCaption("About Quorvane");
  SetLibraries({});
  cmdClose.onClick = [this] { CloseRequested(); };
}

void frmAbout::SetLibraries(const std::string& libraries) {
  lblBuiltWith.SetCaption("Built with " + (libraries.empty() ? "" : libraries + " and ") + Compiler());
}

std::string frmAbout::ProgramName() {
  return "Quorvane " QUORVANE_VERSION;
}

}  // namespace quorvane
