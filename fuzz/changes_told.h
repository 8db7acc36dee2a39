#pragma once

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "forms/forms.h"
#include "fuzz/require.h"

namespace quorvane {

// Tells every change of every control while it lives.
class ChangesTold : public ControlObserver {
 public:
  explicit ChangesTold(Forms& forms) : forms_(forms) {
    if (told != nullptr) forms_.SetObserver(this);
  }
  ~ChangesTold() override { forms_.SetObserver(nullptr); }

  void ControlChanged(const Control& c, Property property) override {
    Tell(fmt::format("{} {} {}|{}|{}{}{}|{}|{}|{}|{}|{}|{}|{}", c.FullName(), static_cast<int>(property),
                     c.Caption(), c.Text(), c.Value(), c.Enabled(), c.Visible(), c.BackColor().Name(),
                     c.ForeColor().Name(), c.Tag(), c.ListIndex(), fmt::join(c.Items(), "/"), c.Interval(),
                     c.ToolTip()));
  }
  void FormChanged(const Form& form) override {
    Tell(fmt::format("{} {}{}", form.Name(), form.Caption(), form.Visible()));
  }

 private:
  Forms& forms_;
};

}  // namespace quorvane
