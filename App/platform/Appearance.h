#pragma once

#include <functional>

#include "platform/Port.h"
#include "platform/Subscription.h"

namespace tollbeam {

/// What the desktop asks of a program's look beyond its palette and font, which the toolkit
/// carries. The answers may change while the program runs.
class Appearance : public Port {
 public:
  /// Whether the desktop asks for more contrast; false where it does not say.
  [[nodiscard]] virtual bool highContrast() const = 0;

  /// Whether anything may move; true where the desktop does not say.
  [[nodiscard]] virtual bool animations() const = 0;

  /// Calls `changed` after one of these, or the toolkit's palette or font, has changed; the new
  /// values can be read by then.
  virtual Subscription onChange(std::function<void()> changed) = 0;
};

}  // namespace tollbeam
