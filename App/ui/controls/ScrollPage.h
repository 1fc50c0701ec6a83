// A form that scrolls: as wide as the view and as high as it asks to be. The control that the
// keyboard goes to is brought into view. Turning the wheel scrolls, whatever control comes to lie
// under the pointer meanwhile.
#pragma once

#include <QElapsedTimer>
#include <vector>

#include "ui/controls/ScrollArea.h"

namespace tollbeam {

class ScrollPage final : public ScrollArea {
  Q_OBJECT

 public:
  /// Takes `page`.
  ScrollPage(const Style& style, QWidget* page, QWidget* parent = nullptr);

  /// A control that answers the wheel itself must not when the wheel was set going over the page.
  void keepWheelFrom(QWidget* control);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool focusNextPrevChild(bool next) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  /// Scrolls as far as it must to show that part of the page, and what is around it.
  void bringIntoView(const QRect& part);

  const Style& style_;
  QElapsedTimer scrolled_;
  std::vector<const QObject*> kept_;
};

}  // namespace tollbeam
