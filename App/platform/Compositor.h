// Whether windows may be transparent, and so cast a shadow of their own: only where something blends
// them. It may come and go while the program runs; without it, what is not painted opaque is black.
// Main thread only.
#pragma once

#include <cstdint>

namespace tollbeam {

/// A window's own shadow, in physical pixels: how far it reaches out on each side, and the size of
/// what it surrounds.
struct WindowShadow {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;
  int bodyWidth = 0;
  int bodyHeight = 0;

  [[nodiscard]] bool isEmpty() const { return left == 0 && top == 0 && right == 0 && bottom == 0; }

  friend bool operator==(const WindowShadow&, const WindowShadow&) = default;
};

class Compositor {
 public:
  Compositor() = default;
  Compositor(const Compositor&) = delete;
  Compositor& operator=(const Compositor&) = delete;
  virtual ~Compositor() = default;

  /// At this moment.
  [[nodiscard]] virtual bool isRunning() const = 0;

  /// Tells of `window` (the toolkit's native number) which part of it is `shadow`: where the system
  /// can, clicks there go to what lies beneath, and nobody adds a second shadow. Again after each
  /// change of the window's size.
  virtual void setShadow(std::uintptr_t window, const WindowShadow& shadow) = 0;
};

}  // namespace tollbeam
