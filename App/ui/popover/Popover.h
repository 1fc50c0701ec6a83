// The window that drops down from the status item. Built once and kept: it shows its view, stays
// out of the taskbar and in the accessibility tree, and closes when the user clicks elsewhere,
// presses Escape or turns to another window. It never grabs the pointer. Around the popover the
// window may be shadow; only its `body` is to be placed and clicked.
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
  /// `view` is as wide as its size hint and as high as it needs to be at that width; the popover
  /// takes it over. The others must outlive the popover.
  Popover(OutsideClicks& outsideClicks, Compositor& compositor, const Clock& clock,
          const Style& style, QWidget* view);

  /// Opens beside the place that was clicked, or, when that is not known, where it was last opened.
  void showAt(ClickPosition position);

  /// Whether a click on the status item is the very one that has just closed the popover, and must
  /// not open it again: panels tell of a click a moment later. True once for each closing click.
  [[nodiscard]] bool takeClosingClick();

  /// The window less its shadow.
  [[nodiscard]] QRect body() const { return rect().marginsRemoved(shadowMargins_); }

 Q_SIGNALS:
  /// The moment to bring the view up to date: it is measured next.
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
  void closeForAClick();
  void followCompositor();
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
