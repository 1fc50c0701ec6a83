// The window that drops down from the status item. Built once and kept: it shows its view, stays
// out of the taskbar and in the accessibility tree, and closes when the user clicks elsewhere,
// presses Escape or turns to another window. It never grabs the pointer.
#pragma once

#include <QWidget>
#include <optional>

#include "platform/Clock.h"
#include "platform/OutsideClicks.h"
#include "platform/StatusBar.h"

namespace tollbeam {

class Popover final : public QWidget {
  Q_OBJECT

 public:
  Popover(OutsideClicks& outsideClicks, const Clock& clock, QWidget* view);

  /// Opens beside the place that was clicked, or, when that is not known, where it was last opened.
  void showAt(ClickPosition position);

  /// True right after a click elsewhere closed it. That click may have been one on the status
  /// item, whose own message comes a moment later and must not open the popover again.
  [[nodiscard]] bool wasJustClosedByAClick() const;

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void onButton(OutsideClicks::Button button);
  void closeForAClick();
  void place();

  OutsideClicks& outsideClicks_;
  const Clock& clock_;
  std::optional<Subscription> clicks_;
  std::optional<QPoint> anchor_;
  bool pressedOutside_ = false;
  Date closedByClick_ = Date::distantPast();
};

}  // namespace tollbeam
