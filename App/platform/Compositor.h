#pragma once

#include <cstdint>

#include "platform/Port.h"

namespace tollbeam {

/// The shadow that a window paints within itself, in physical pixels.
struct WindowShadow {
  int left = 0;        ///< how far it reaches beyond the body's left side
  int top = 0;         ///< the same above the body
  int right = 0;       ///< the same on the right
  int bottom = 0;      ///< the same below
  int bodyWidth = 0;   ///< width of the window without the shadow
  int bodyHeight = 0;  ///< height of the window without the shadow

  /// Whether the window has no shadow.
  [[nodiscard]] bool isEmpty() const { return left == 0 && top == 0 && right == 0 && bottom == 0; }

  /// Field by field.
  friend bool operator==(const WindowShadow&, const WindowShadow&) = default;
};

/// What blends windows on the screen. Only where one runs can a window be transparent, and so cast
/// a shadow of its own; without it, whatever is not painted opaque is black. It may come and go
/// while the program runs.
class Compositor : public Port {
 public:
  /// Whether one runs at this moment.
  [[nodiscard]] virtual bool isRunning() const = 0;

  /// Declares which part of `window` (the toolkit's native number) is its shadow: where the system
  /// can, clicks there go to what lies beneath, and no second shadow is added. Needed again after
  /// each change of the window's size.
  virtual void setShadow(std::uintptr_t window, const WindowShadow& shadow) = 0;
};

}  // namespace tollbeam
