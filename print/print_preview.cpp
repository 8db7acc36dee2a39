#include "print/print_preview.h"

#include <array>
#include <utility>

namespace quorvane {

PrintPreview::PrintPreview(Forms& forms, ShowPage showPage)
    : Form(forms, "PrintPreview"), showPage_(std::move(showPage)) {
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
  SetScale(1);
  Owner().Show(*this);
}

void PrintPreview::SetScale(std::int16_t scale) {
  static constexpr std::array kFactors = {1.0F, 0.75F, 0.375F};
  Control& chosen = mnuScaleSet[scale];
  mnuScaleSet[scale_].SetChecked(false);
  scale_ = scale;
  chosen.SetChecked(true);
  showPage_(kFactors[static_cast<std::size_t>(scale - 1)]);
}

}  // namespace quorvane
