// Raw pointer-button events of the X server, on a connection of their own that exists only during
// an observation: a closed popover costs nothing.
#pragma once

#include "platform/OutsideClicks.h"

namespace tollbeam {

class X11OutsideClicks final : public OutsideClicks {
 public:
  std::optional<Subscription> observe(std::function<void(Button)> callback) override;
};

}  // namespace tollbeam
