#include "ui/popover/Details.h"

namespace tollbeam {

namespace {

constexpr double kBetween = 6;

}  // namespace

Details::Details(const Style& style, QWidget* parent)
    : QWidget(parent), style_(style), column_(new QVBoxLayout(this)) {
  column_->setContentsMargins(0, 0, 0, 0);
  connect(&style_, &Style::changed, this, &Details::restyle);
  restyle();
}

void Details::restyle() {
  column_->setSpacing(style_.px(kBetween));
  updateGeometry();
}

void Details::setReadings(const std::vector<Reading>& readings) {
  shown_ = 0;
  for (const Reading& reading : readings) row(reading.label, reading.value, reading.color);
  for (std::size_t i = shown_; i < rows_.size(); ++i) rows_[i]->hide();
  updateGeometry();
}

void Details::row(const QString& label, const QString& value, Ink color) {
  if (shown_ == rows_.size()) {
    rows_.push_back(new Row(style_, this));
    column_->addWidget(rows_.back());
  }
  rows_[shown_]->setReading(label, value, color);
  rows_[shown_]->show();
  ++shown_;
}

}  // namespace tollbeam
