// What the desktop asks of a program's look beyond its palette and font, which the toolkit carries:
// more contrast, and nothing that moves. Both may change while the program runs. Main thread only.
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

  /// The desktop asks for more contrast; false where it does not say.
  [[nodiscard]] virtual bool highContrast() const = 0;

  /// False: nothing may move. True where the desktop does not say.
  [[nodiscard]] virtual bool animations() const = 0;

  /// Calls `changed` on the main thread when any of the above, or the toolkit's palette or font,
  /// was changed; they are already new then.
  virtual Subscription onChange(std::function<void()> changed) = 0;
};

}  // namespace tollbeam
