// What the popover shows on a machine without a battery.
#pragma once

#include <QVBoxLayout>
#include <QWidget>

#include "ui/controls/Text.h"
#include "ui/look/Style.h"

namespace tollbeam {

class NoBattery final : public QWidget {
  Q_OBJECT

 public:
  /// `style` must outlive the block.
  explicit NoBattery(const Style& style, QWidget* parent = nullptr);

 private:
  void restyle();

  const Style& style_;
  QWidget* symbol_;
  Text* headline_;
  Text* caption_;
  QVBoxLayout* column_;
};

}  // namespace tollbeam
