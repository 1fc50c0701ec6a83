// A page that scrolls up and down when there is no room for all of it. Its bar lies over the page,
// takes no room, and shows only where not everything fits.
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

  /// Takes ownership of the page, whose size the caller sets. What lies behind the area shows
  /// through the page.
  void setPage(QWidget* page);
};

}  // namespace tollbeam
