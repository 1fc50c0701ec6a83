// A page that scrolls up and down when there is no room for all of it. Its bar lies over the page
// and takes no room; nothing of it is to be seen while everything fits. Pressing beside its thumb
// brings the thumb there.
#pragma once

#include <QScrollArea>
#include <QScrollBar>

#include "ui/look/Style.h"

namespace tollbeam {

class ScrollArea : public QScrollArea {
  Q_OBJECT

 public:
  /// `style` must outlive the area.
  explicit ScrollArea(const Style& style, QWidget* parent = nullptr);

  /// Takes the page over. Its size is up to the caller, and its ground is what lies behind the
  /// area.
  void setPage(QWidget* page);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void placeBar();

  const Style& style_;
  QWidget* bar_;
};

}  // namespace tollbeam
