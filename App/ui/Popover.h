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

  /// Whether a click on the status item is the very one that has just closed the popover, and must
  /// not open it again: panels tell of a click a moment later. True once for each closing click.
  [[nodiscard]] bool takeClosingClick();

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
  QPoint closedAt_;
};

}  // namespace tollbeam
