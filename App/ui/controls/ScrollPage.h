// A form that scrolls: as wide as the view and as high as its size hint. The control that gets the
// focus by the keyboard is scrolled into view. A wheel that has begun to scroll goes on scrolling,
// whatever control comes under the pointer meanwhile.
#pragma once

#include <QElapsedTimer>

#include "ui/controls/ScrollArea.h"

namespace tollbeam {

class ScrollPage final : public ScrollArea {
  Q_OBJECT

 public:
  /// Takes ownership of `page`. `style` must outlive it.
  ScrollPage(const Style& style, QWidget* page, QWidget* parent = nullptr);

  /// Keeps a scroll that began over the page from a control that handles the wheel itself.
  void keepWheelFrom(QWidget* control);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool focusNextPrevChild(bool next) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  const Style& style_;
  QElapsedTimer scrolled_;
};

}  // namespace tollbeam
