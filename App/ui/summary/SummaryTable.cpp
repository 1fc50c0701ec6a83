#include "ui/summary/SummaryTable.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QStyle>
#include <algorithm>
#include <cmath>
#include <utility>

#include "ui/controls/Accessibility.h"
#include "ui/controls/TextLine.h"

namespace tollbeam {

namespace {

constexpr int kAverage = 38;
constexpr int kRange = 68;
constexpr int kCharging = 62;
constexpr int kGap = 8;
constexpr int kRowHeight = 18;
// How far a duration may extend into the gap before its column.
constexpr int kIntoGap = 2;

int widthOf(const QString& text, const QFont& font) {
  return static_cast<int>(std::ceil(tabularWidth(text, font)));
}

}  // namespace

SummaryRow::SummaryRow(const Style& style, Ink ink, QWidget* parent)
    : QLabel(parent), style_(style), ink_(ink) {}

void SummaryRow::setContent(const SummaryText& text, const SummaryColumns& columns) {
  setFont(style_.font(Role::caption));
  setAccessibleNameIfOther(*this, text.spoken);
  if (columns != columns_) updateGeometry();
  columns_ = columns;
  content_ = text;
  update();
}

QSize SummaryRow::sizeHint() const {
  const int width = widthOf(content_.day, font()) + columns_.average + columns_.range +
                    columns_.charging + 3 * columns_.gap;
  return {width, std::max(style_.px(kRowHeight), style_.lineHeight(Role::caption))};
}

void SummaryRow::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setPen(style_.colours().ink(ink_));
  const QFontMetricsF metrics(font());
  const double baseline =
      std::round((height() - metrics.ascent() - metrics.descent()) / 2 + metrics.ascent());
  const bool mirrored = isRightToLeft();
  const auto put = [&](const QString& text, bool fromLeft, int distance) {
    const double x = fromLeft ? distance : width() - distance - tabularWidth(text, font());
    painter.setLayoutDirection(text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    paintTabular(painter, {x, baseline}, text, font());
  };
  const int range = columns_.charging + columns_.gap;
  const int average = range + columns_.range + columns_.gap;
  put(content_.charging, mirrored, 0);
  put(content_.range, mirrored, range);
  put(content_.average, mirrored, average);
  put(content_.day, !mirrored, 0);
}

SummaryTable::SummaryTable(const Style& style, QWidget* parent)
    : QWidget(parent),
      style_(style),
      column_(new QVBoxLayout(this)),
      headings_(new SummaryRow(style, Ink::secondary, this)) {
  column_->setContentsMargins(0, 0, 0, 0);
  column_->setSpacing(0);
  column_->addWidget(headings_);
  restyle();
}

void SummaryTable::setDays(std::vector<SummaryText> days) {
  days_ = std::move(days);
  restyle();
}

void SummaryTable::restyle() {
  const QFont font = style_.font(Role::caption);
  const SummaryText headings = summaryHeadings();
  columns_ = {.average = std::max(style_.px(kAverage), widthOf(headings.average, font)),
              .range = std::max(style_.px(kRange), widthOf(headings.range, font)),
              .charging = std::max(style_.px(kCharging), widthOf(headings.charging, font)),
              .gap = style_.px(kGap)};
  for (const SummaryText& day : days_) {
    columns_.average = std::max(columns_.average, widthOf(day.average, font));
    columns_.range = std::max(columns_.range, widthOf(day.range, font));
    columns_.charging =
        std::max(columns_.charging, widthOf(day.charging, font) - style_.px(kIntoGap));
  }
  headings_->setContent(headings, columns_);
  while (rows_.size() > days_.size()) {
    delete rows_.back();
    rows_.pop_back();
  }
  while (rows_.size() < days_.size()) {
    rows_.push_back(new SummaryRow(style_, Ink::primary, this));
    column_->addWidget(rows_.back());
    // Shown at once rather than by the event loop, so that it counts for the table's height.
    rows_.back()->show();
  }
  for (std::size_t i = 0; i < days_.size(); ++i) rows_[i]->setContent(days_[i], columns_);
}

}  // namespace tollbeam
