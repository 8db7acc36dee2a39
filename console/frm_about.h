#pragma once

#include "forms/form.h"

namespace quorvane {

// Names the program, its version and date, who made it and what it is built with.
class frmAbout : public Form {
 public:
  explicit frmAbout(Forms& forms);

  Control& lblName;
  Control& lblVersion;
  Control& lblPurpose;
  Control& lblCredits;
  Control& lblBuiltWith;
  Control& cmdClose;

  // Named beside the compiler: libraries that only the window knows of, such as "Qt 6.4.2".
  void SetLibraries(const std::string& libraries);

  // "Quorvane 1.2.3".
  static std::string ProgramName();
};

}  // namespace quorvane
