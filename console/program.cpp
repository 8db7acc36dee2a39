#include "console/program.h"

namespace quorvane {

Program::Program(Platform& platform, SerialControl& serial, FileOps& files, BackgroundFiles::Way way)
    : door_(platform),
      clock_(door_, race_),
      project_(race_, files, way == BackgroundFiles::Way::OwnThread),
      keeper_(files, way),
      judge_(door_, race_, clock_, project_, link_, keeper_),
      link_(door_, race_, judge_, serial),
      timer_(door_.AllForms(), platform),
      keyboard_(door_.AllForms()),
      about_(door_.AllForms()) {
  project_.SetClock(door_);
  door_.SetDevices(this);
}

// A finished race that nobody has saved yet is not lost, and an error in saving it keeps nothing open.
void Program::Quit() {
  door_.Contain([this] { judge_.cmdSave_Click(); });
  judge_.Form_Unload();
}

}  // namespace quorvane
