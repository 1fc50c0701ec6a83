// The desktop's wishes as a test sets them.
#pragma once

#include <utility>

#include "platform/Appearance.h"

namespace tollbeam {

class RecordedAppearance final : public Appearance {
 public:
  [[nodiscard]] bool highContrast() const override { return contrast; }
  [[nodiscard]] bool animations() const override { return motion; }
  Subscription onChange(std::function<void()> changed) override {
    return changes.add(std::move(changed));
  }

  bool contrast = false;
  bool motion = true;
  Observers<> changes;
};

}  // namespace tollbeam
