// Hours and minutes as the user's locale writes them. It is Qt's own time edit, so that typing,
// arrows, wheel and screen readers work as everywhere; only what is seen is ours. `chosen` is the
// user's doing only; what the program shows with `setTimeOfDay` tells nobody. A time that the clock
// jumps over today is never chosen: steps go past it, and where it is typed, the first time after
// the jump is chosen at once and seen when the typing is over, not under the user's hands.
#pragma once

#include <QTimeEdit>
#include <functional>
#include <optional>

#include "ui/controls/Accessibility.h"
#include "ui/controls/AutoRepeat.h"
#include "ui/look/Style.h"
#include "values/TimeOfDay.h"

namespace tollbeam {

class TimeField final : public QTimeEdit, public SelfDescribing {
  Q_OBJECT

 public:
  explicit TimeField(const Style& style, QWidget* parent = nullptr);

  /// `clock` is what today's clock shows at a time: that time, or the first after a jump. Without
  /// it there is every time.
  void setTodaysClock(std::function<TimeOfDay(TimeOfDay)> clock);

  /// Takes the place of what is being typed, unless it is what that stands for.
  void setTimeOfDay(TimeOfDay time);
  [[nodiscard]] TimeOfDay timeOfDay() const;

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
  [[nodiscard]] QAccessibleInterface* describe() override;
  void stepBy(int steps) override;
  /// The line that takes what is typed. Hidden.
  [[nodiscard]] QLineEdit* line() const { return lineEdit(); }

 Q_SIGNALS:
  void chosen(tollbeam::TimeOfDay time);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void changeEvent(QEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  void restyle();
  bool takeHalfOfDay(const QString& typed);
  void followLocale();
  void take();
  void finish();
  void tellChange();
  [[nodiscard]] TimeOfDay existing(TimeOfDay time) const;
  [[nodiscard]] Qt::LayoutDirection direction() const;
  [[nodiscard]] QRect chevrons() const;
  [[nodiscard]] QRect textRect() const;
  void paintTime(QPainter& painter) const;
  void paintChevrons(QPainter& painter) const;

  const Style& style_;
  AutoRepeat repeat_;
  std::function<TimeOfDay(TimeOfDay)> todaysClock_;
  TimeOfDay told_;  // the latest time that anybody was told of
  /// What was chosen by typing that may go on.
  std::optional<TimeOfDay> unfinished_;
};

}  // namespace tollbeam
