// A switch: a check box in another shape. `toggled` is the user's doing only, by pointer, keyboard
// or screen reader; what the program shows with `setOn` tells nobody.
#pragma once

#include <QCheckBox>

#include "ui/controls/Accessibility.h"
#include "ui/controls/Motion.h"
#include "ui/look/Style.h"

namespace tollbeam {

class Switch final : public QCheckBox, public SelfDescribing {
  Q_OBJECT

 public:
  explicit Switch(const Style& style, QWidget* parent = nullptr);

  void setOn(bool on);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
  [[nodiscard]] QAccessibleInterface* describe() override;

 protected:
  void checkStateSet() override;
  void nextCheckState() override;
  [[nodiscard]] bool hitButton(const QPoint& position) const override;
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] QRect shape() const;
  void paint(QPainter& painter) const;

  const Style& style_;
  Motion thumb_;
};

}  // namespace tollbeam
