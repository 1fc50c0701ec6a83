// What the desktop asks of every program's look, beyond the palette and the font that the toolkit
// already follows.
#pragma once

#include <functional>

#include "platform/Subscription.h"

namespace tollbeam {

class Appearance {
 public:
  Appearance() = default;
  Appearance(const Appearance&) = delete;
  Appearance& operator=(const Appearance&) = delete;
  virtual ~Appearance() = default;

  /// Whether the user asked for more contrast; false where the desktop does not tell.
  [[nodiscard]] virtual bool highContrast() const = 0;

  /// Whether things may move; true where the desktop does not tell.
  [[nodiscard]] virtual bool animations() const = 0;

  /// Calls back on the main thread when either answer may have changed.
  virtual Subscription onChange(std::function<void()> changed) = 0;
};

}  // namespace tollbeam
