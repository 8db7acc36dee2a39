#include "ui/widgets/form_design.h"

#include <algorithm>

namespace quorvane {

const Place* FormDesign::Find(const std::string& name) const {
  const auto found =
      std::find_if(places.begin(), places.end(), [&](const Place& p) { return p.name == name; });
  return found == places.end() ? nullptr : &*found;
}

}  // namespace quorvane
