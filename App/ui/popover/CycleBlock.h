// How many charge cycles the battery has behind it, of those that it is made for.
#pragma once

#include <QVBoxLayout>
#include <QWidget>
#include <cstdint>

#include "ui/controls/Bar.h"
#include "ui/controls/Row.h"
#include "ui/look/Style.h"

namespace tollbeam {

class CycleBlock final : public QWidget {
  Q_OBJECT

 public:
  /// `style` must outlive the block.
  explicit CycleBlock(const Style& style, QWidget* parent = nullptr);

  void setCount(std::int64_t count);

 private:
  void restyle();

  const Style& style_;
  Row* row_;
  Bar* bar_;
  QVBoxLayout* column_;
};

}  // namespace tollbeam
