#pragma once

#include <functional>
#include <optional>

#include "platform/Port.h"
#include "platform/Subscription.h"

namespace tollbeam {

/// Clicks anywhere on the screen, for a window that closes when the user clicks elsewhere. Nothing
/// is grabbed: other programs get their clicks, and a screen locker can always take the pointer.
class OutsideClicks : public Port {
 public:
  /// What happened to a button of the pointer.
  enum class Button {
    pressed,  ///< it went down
    released  ///< it came up
  };

  /// Calls `callback` at every press and release, wherever it happens. Absent where the system does
  /// not report them; a window can then only watch for the loss of its activation.
  virtual std::optional<Subscription> observe(std::function<void(Button)> callback) = 0;
};

}  // namespace tollbeam
