#include "ui/chart/HistoryChart.h"

#include <QEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QVBoxLayout>

#include "texts/LocaleFormats.h"
#include "ui/chart/ChartText.h"
#include "ui/controls/Accessibility.h"

namespace tollbeam {

namespace {

constexpr int kWidth = 308;
constexpr int kHeight = 110;
constexpr int kPlaceholderPadding = 24;
constexpr double kDaySeconds = 86400;
constexpr std::size_t kFewestPoints = 2;
constexpr double kReach = 4;

}  // namespace

HistoryChart::HistoryChart(AppModel& model, const Clock& clock, const Calendar& calendar,
                           const Style& style, QWidget* parent)
    : QWidget(parent),
      model_(model),
      clock_(clock),
      calendar_(calendar),
      style_(style),
      placeholder_(new Text(style, Role::caption, Ink::secondary, this)) {
  setAccessibleRole(*this, QAccessible::Chart);
  setAccessibleName(tr("Charge history"));
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  setMouseTracking(true);
  placeholder_->setText(tr("Collecting history… a graph appears after a few minutes."));
  placeholder_->setBreaks(Breaks::balanced);
  placeholder_->setAlignment(Qt::AlignCenter);
  auto* column = new QVBoxLayout(this);
  column->addWidget(placeholder_);
  connect(&model_, &AppModel::historyVersionChanged, this, &HistoryChart::refresh);
  style_.follow(this, [this, column] {
    const int padding = style_.px(kPlaceholderPadding);
    column->setContentsMargins(padding, 0, padding, 0);
    updateGeometry();
    refresh();
  });
}

void HistoryChart::setDays(int days) {
  if (days == days_) return;
  days_ = days;
  refresh();
}

QSize HistoryChart::sizeHint() const { return {style_.px(kWidth), style_.px(kHeight)}; }

void HistoryChart::refresh() {
  if (!isVisible()) return;
  const Date now = clock_.now();
  const Date from = now - days_ * kDaySeconds;
  const auto samples = model_.history().samples(from);
  auto points = chartPoints(samples);
  const bool isEmpty = points.size() < kFewestPoints;
  placeholder_->setVisible(isEmpty);
  // The placeholder is a text of its own for screen readers.
  setAccessibleDescriptionIfOther(*this, isEmpty ? QString() : spokenChart(samples, days_, now));
  picture_ = isEmpty ? ChartPicture()
                     : ChartPicture({std::move(points), from, now, days_ <= 1}, rect(),
                                    layoutDirection(), style_, calendar_, QLocale());
  dropMarker();
  follow(pointer_);
  update();
}

void HistoryChart::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  refresh();
}

void HistoryChart::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  pointer_.reset();
  dropMarker();
  picture_ = {};
}

void HistoryChart::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  refresh();
}

void HistoryChart::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::LayoutDirectionChange || event->type() == QEvent::LocaleChange) {
    refresh();
  }
}

void HistoryChart::mouseMoveEvent(QMouseEvent* event) {
  QWidget::mouseMoveEvent(event);
  follow(event->position().x());
}

void HistoryChart::leaveEvent(QEvent* event) {
  QWidget::leaveEvent(event);
  follow(std::nullopt);
}

void HistoryChart::dropMarker() {
  marked_.reset();
  marker_.reset();
}

// Marks the value under `pointer`; absent, none.
void HistoryChart::follow(std::optional<double> pointer) {
  pointer_ = pointer;
  const auto point = pointer
                         ? pointAt(*pointer, style_.px(kReach), picture_.points(), picture_.frame())
                         : std::nullopt;
  if (point == marked_) return;
  if (marker_) update(marker_->region());
  marked_ = point;
  marker_ = point ? markerAt(*point) : std::nullopt;
  if (marker_) update(marker_->region());
}

std::optional<ChartMarker> HistoryChart::markerAt(std::size_t point) const {
  const ChartPoint& p = picture_.points()[point];
  const QLocale locale;
  QString time = timeText(calendar_.timeOfDay(p.date), locale);
  if (days_ > 1) {
    time = tr("%1 %2", "weekday and time").arg(weekdayText(calendar_.day(p.date), locale), time);
  }
  return ChartMarker(picture_, point, time, tr("%1%").arg(p.pct), style_, layoutDirection());
}

void HistoryChart::paintEvent(QPaintEvent* event) {
  if (picture_.points().empty()) return;
  QPainter painter(this);
  picture_.paint(painter, style_, event->region());
  if (marker_) marker_->paint(painter, style_);
}

}  // namespace tollbeam
