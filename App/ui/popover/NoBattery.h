// What the popover shows on a machine without a battery.
#pragma once

#include <QWidget>

#include "ui/look/Style.h"

namespace tollbeam {

class NoBattery final : public QWidget {
  Q_OBJECT

 public:
  /// `style` must outlive the block.
  explicit NoBattery(const Style& style, QWidget* parent = nullptr);
};

}  // namespace tollbeam
