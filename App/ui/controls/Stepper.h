// Two cells, − and +, that move a whole number by one within a range. The number itself stands in
// the label beside them. A number outside the range is shown as it is; the step towards the range
// brings it in, and no step ever leads out. The stepper asks for a value (`wanted`) and shows what
// `setValue` then gives it. While held it asks repeatedly; at `settled` the value is worth storing.
#pragma once

#include <QAbstractButton>
#include <QTimer>
#include <cstdint>
#include <optional>

#include "ui/look/Style.h"

namespace tollbeam {

/// Both ends belong to it.
struct Range {
  std::int64_t least = 0;
  std::int64_t most = 0;
};

enum class Step { down, up };

/// The value after the step, inside the range; absent when it cannot go that way.
[[nodiscard]] std::optional<std::int64_t> stepped(std::int64_t value, Step step, Range range);

class Stepper final : public QAbstractButton {
  Q_OBJECT

 public:
  /// `style` must outlive the stepper.
  Stepper(const Style& style, Range range, QWidget* parent = nullptr);

  void setValue(std::int64_t value);
  [[nodiscard]] std::int64_t value() const { return value_; }

  /// As if the user had clicked the cell; false when that cell is at its end.
  bool take(Step step);

 Q_SIGNALS:
  /// The user asks for this value; more requests may follow soon.
  void wanted(std::int64_t value);
  /// No further request is expected: the cell or key was released, the wheel has stopped, or the
  /// stepper was hidden or disabled meanwhile.
  void settled();

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  [[nodiscard]] bool hitButton(const QPoint& position) const override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  [[nodiscard]] QRect cell(Step step) const;
  [[nodiscard]] std::optional<Step> cellAt(QPoint position) const;
  void paintCell(QPainter& painter, Step step) const;
  void paintSign(QPainter& painter, QPointF centre, Step step) const;
  bool ask(Step step);
  void settle();

  const Style& style_;
  const Range range_;
  std::int64_t value_;
  std::optional<Step> hovered_;
  /// The cell that the pointer pressed last.
  std::optional<Step> pressed_;
  int wheel_ = 0;
  /// Runs from a request until it has settled.
  QTimer settling_;
};

}  // namespace tollbeam
