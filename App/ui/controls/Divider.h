// A hairline between what stands above and below it.
#pragma once

#include <QWidget>

#include "ui/look/Style.h"

namespace tollbeam {

class Divider final : public QWidget {
  Q_OBJECT

 public:
  /// `style` must outlive the divider.
  explicit Divider(const Style& style, QWidget* parent = nullptr);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const Style& style_;
};

}  // namespace tollbeam
