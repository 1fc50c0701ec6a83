// A page that scrolls when it is higher than its window, with a thin bar that lies over it instead
// of taking room. The control that the keyboard goes to is brought into view. Turning the wheel
// scrolls, whatever control comes to lie under the pointer meanwhile.
#pragma once

#include <QElapsedTimer>
#include <QScrollArea>

#include "ui/look/Style.h"

namespace tollbeam {

class ScrollThumb;

class ScrollPage final : public QScrollArea {
  Q_OBJECT

 public:
  /// Takes `page`, which is as wide as the view and as high as it asks to be.
  ScrollPage(const Style& style, QWidget* page, QWidget* parent = nullptr);

  /// A control that answers the wheel itself must not when the wheel was set going over the page.
  void keepWheelFrom(QWidget* control);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool focusNextPrevChild(bool next) override;
  void resizeEvent(QResizeEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  void placeThumb();

  const Style& style_;
  ScrollThumb* thumb_;
  QElapsedTimer scrolled_;
};

/// The bar: a slider of the page's own scroll bar, which is hidden.
class ScrollThumb final : public QWidget {
  Q_OBJECT

 public:
  ScrollThumb(const Style& style, QScrollBar* bar, QWidget* parent);

  [[nodiscard]] int wantedWidth() const;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  void follow();
  [[nodiscard]] QRect thumb() const;

  const Style& style_;
  QScrollBar* bar_;
  int grip_ = 0;
};

}  // namespace tollbeam
