// Under X11 the compositing manager is the owner of a selection, as the window-manager
// specification says. Wayland always blends.
#pragma once

#include "platform/Compositor.h"

namespace tollbeam {

class X11Compositor final : public Compositor {
 public:
  [[nodiscard]] bool isRunning() const override;
  void setShadow(std::uintptr_t window, const WindowShadow& shadow) override;
};

}  // namespace tollbeam
