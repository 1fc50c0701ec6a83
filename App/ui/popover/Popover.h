// The window that drops down from the status item. It is created once and kept. It is not in the
// taskbar but in the accessibility tree, closes on a click elsewhere, on Escape and when another
// window becomes active, and never grabs the pointer. The window may include a shadow around the
// popover's `body`; only the body is placed and takes clicks.
#pragma once

#include <QWidget>
#include <optional>

#include "platform/Clock.h"
#include "platform/Compositor.h"
#include "platform/OutsideClicks.h"
#include "platform/StatusBar.h"
#include "ui/controls/ScrollArea.h"
#include "ui/look/Shadow.h"
#include "ui/look/Style.h"

namespace tollbeam {

class Popover final : public QWidget {
  Q_OBJECT

 public:
  /// Takes ownership of `view`, which gets the width of its size hint and the height that it needs
  /// at that width. The others must outlive the popover.
  Popover(OutsideClicks& outsideClicks, Compositor& compositor, const Clock& clock,
          const Style& style, QWidget* view);

  /// Opens beside `position`; where it is absent, at the last position, or first at the upper right
  /// corner of the primary screen.
  void showAt(std::optional<ClickPosition> position);

  /// True when the click on the status item that is being reported has already closed the popover:
  /// panels report a click a moment later, and it must not open the popover again. Call it once for
  /// each click; a second call returns false.
  [[nodiscard]] bool takeClosingClick();

  /// The window without its shadow.
  [[nodiscard]] QRect body() const { return rect().marginsRemoved(shadowMargins_); }

 Q_SIGNALS:
  /// Emitted before the view is measured, so that it can be brought up to date.
  void aboutToShow();

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void onButton(OutsideClicks::Button button);
  void closeForClick();
  void adaptToCompositor();
  void place();

  OutsideClicks& outsideClicks_;
  Compositor& compositor_;
  const Clock& clock_;
  const Style& style_;
  QWidget* view_;
  ScrollArea* scroll_;
  Shadow shadow_;
  QMargins shadowMargins_;
  QRect placed_;
  std::optional<Subscription> clicks_;
  std::optional<QPoint> anchor_;
  bool pressedOutside_ = false;
  Date closedByClick_ = Date::distantPast();
  QPoint closedAt_;
};

}  // namespace tollbeam
