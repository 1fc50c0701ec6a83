// A switch: Qt's check box in another shape. `toggled` is emitted for the user's actions only, by
// pointer, keyboard or screen reader, and not for `setOn`.
#pragma once

#include <QCheckBox>

#include "ui/controls/Motion.h"
#include "ui/look/Style.h"

namespace tollbeam {

class Switch final : public QCheckBox {
  Q_OBJECT

 public:
  /// `style` must outlive the switch.
  explicit Switch(const Style& style, QWidget* parent = nullptr);

  void setOn(bool on);

 protected:
  void checkStateSet() override;
  void nextCheckState() override;
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] QRect shape() const;
  void paintShape(QPainter& painter) const;

  const Style& style_;
  Motion thumb_;
};

}  // namespace tollbeam
