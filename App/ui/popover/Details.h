// The battery's figures, a row for each that is known.
#pragma once

#include <QVBoxLayout>
#include <QWidget>
#include <vector>

#include "ui/controls/Row.h"
#include "ui/look/Style.h"
#include "ui/popover/PopoverContent.h"

namespace tollbeam {

class Details final : public QWidget {
  Q_OBJECT

 public:
  /// `style` must outlive the block.
  explicit Details(const Style& style, QWidget* parent = nullptr);

  void setReadings(const std::vector<Reading>& readings);

 private:
  void restyle();
  /// The next row of those shown, made when there is none yet.
  void row(const QString& label, const QString& value, Ink color);

  const Style& style_;
  std::vector<Row*> rows_;
  std::size_t shown_ = 0;
  QVBoxLayout* column_;
};

}  // namespace tollbeam
