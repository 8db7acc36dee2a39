#include "forms/numeric_keys.h"

#include <string_view>

namespace quorvane {
namespace {

bool TakesText(const Control& control) {
  return control.Kind() == ControlKind::TextBox || control.Kind() == ControlKind::ComboBox;
}

}  // namespace

void FilterNumericKey(const Control& control, int& keyCode) {
  constexpr std::string_view kAllowed = "0123456789-.";
  if (!TakesText(control) || keyCode <= 32 || keyCode >= 127) return;
  if (kAllowed.find(static_cast<char>(keyCode)) == std::string_view::npos) keyCode = 0;
}

void SelectAllText(Control& control) {
  if (TakesText(control)) control.SetSelection(0, static_cast<int>(control.Text().size()));
}

}  // namespace quorvane
