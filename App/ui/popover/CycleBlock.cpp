#include "ui/popover/CycleBlock.h"

#include "ui/popover/PopoverContent.h"

namespace tollbeam {

namespace {

constexpr double kBetween = 4;

}  // namespace

CycleBlock::CycleBlock(const Style& style, QWidget* parent)
    : QWidget(parent),
      style_(style),
      row_(new Row(style, this)),
      bar_(new Bar(style, tr("Cycle count"), kCyclesOfALife, this)),
      column_(new QVBoxLayout(this)) {
  column_->setContentsMargins(0, 0, 0, 0);
  column_->addWidget(row_);
  column_->addWidget(bar_);
  connect(&style_, &Style::changed, this, &CycleBlock::restyle);
  restyle();
}

void CycleBlock::restyle() {
  column_->setSpacing(style_.px(kBetween));
  updateGeometry();
}

void CycleBlock::setCount(std::int64_t count) {
  row_->setReading(tr("Cycle count"), cycleText(count));
  bar_->setFilled(count, cycleTint(count));
  updateGeometry();
}

}  // namespace tollbeam
