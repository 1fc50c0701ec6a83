// Clicks anywhere on the screen, for a window that closes when the user clicks elsewhere. Nothing
// is grabbed: other programs get their clicks, and a screen locker is never locked out.
#pragma once

#include <functional>
#include <optional>

#include "platform/Subscription.h"

namespace tollbeam {

class OutsideClicks {
 public:
  enum class Button { pressed, released };

  OutsideClicks() = default;
  OutsideClicks(const OutsideClicks&) = delete;
  OutsideClicks& operator=(const OutsideClicks&) = delete;
  virtual ~OutsideClicks() = default;

  /// Calls back on the main thread at every press and release of a pointer button, wherever it
  /// happens, until the subscription dies. Absent where the system does not tell; a window then
  /// has only the loss of its activation to go by.
  virtual std::optional<Subscription> observe(std::function<void(Button)> callback) = 0;
};

}  // namespace tollbeam
