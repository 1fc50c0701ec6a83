// Hours and minutes as the user's locale writes them. It is Qt's own time edit, so that typing,
// arrows, wheel and chevrons work as everywhere; only the painting is ours, and what screen readers
// get: of Qt's they get neither a number nor steps. `chosen` is emitted for the user's changes
// only, not for `setTimeOfDay`. A time that the clock jumps over today is never chosen: steps go
// past it, and where it is typed, the first time after the jump is chosen at once but shown only
// when the typing is over.
#pragma once

#include <QTimeEdit>
#include <functional>
#include <optional>

#include "ui/look/Style.h"
#include "values/TimeOfDay.h"

namespace tollbeam {

class TimeField final : public QTimeEdit {
  Q_OBJECT

 public:
  /// `style` must outlive the field.
  explicit TimeField(const Style& style, QWidget* parent = nullptr);

  /// `clock` maps a time to what today's clock shows then: that time, or the first after a jump.
  /// Without it every time exists.
  void setTodaysClock(std::function<TimeOfDay(TimeOfDay)> clock);

  /// Replaces what is being typed, unless that stands for the same time.
  void setTimeOfDay(TimeOfDay time);
  [[nodiscard]] TimeOfDay timeOfDay() const;

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
  void stepBy(int steps) override;

 Q_SIGNALS:
  void chosen(tollbeam::TimeOfDay time);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void changeEvent(QEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  void followLocale();
  void onTimeChanged();
  void endTyping();
  bool typeHalfOfDay(const QString& typed);
  void announceChange();
  [[nodiscard]] TimeOfDay existing(TimeOfDay time) const;
  [[nodiscard]] Qt::LayoutDirection direction() const;
  [[nodiscard]] QRect textRect() const;
  void paintTime(QPainter& painter) const;

  const Style& style_;
  std::function<TimeOfDay(TimeOfDay)> todaysClock_;
  /// The latest time that screen readers were told, or that was chosen.
  TimeOfDay announced_;
  /// What was chosen by typing that may go on.
  std::optional<TimeOfDay> unfinished_;
};

}  // namespace tollbeam
