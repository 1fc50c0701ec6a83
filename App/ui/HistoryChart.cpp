#include "ui/HistoryChart.h"

#include <QPainter>
#include <QVBoxLayout>

#include "platform/Clock.h"

namespace tollbeam {

namespace {

constexpr int kWidth = 308;
constexpr int kHeight = 110;
constexpr double kDaySeconds = 86400;

}  // namespace

HistoryChart::HistoryChart(AppModel& model, const Platform& platform, const Style& style,
                           QWidget* parent)
    : QWidget(parent),
      model_(model),
      platform_(platform),
      style_(style),
      placeholder_(new Text(style, Role::caption, Ink::secondary, this)) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  setAccessibleName(tr("Charge history"));
  placeholder_->setText(tr("Collecting history… a graph appears after a few minutes."));
  placeholder_->setBreaks(Breaks::balanced);
  placeholder_->setAlignment(Qt::AlignCenter);
  auto* column = new QVBoxLayout(this);
  column->addWidget(placeholder_);
  connect(&model_, &AppModel::historyVersionChanged, this, &HistoryChart::refresh);
  connect(&style_, &Style::changed, this, &HistoryChart::restyle);
  restyle();
}

void HistoryChart::restyle() {
  const int padding = style_.px(24);
  layout()->setContentsMargins(padding, 0, padding, 0);
  updateGeometry();
  refresh();
}

void HistoryChart::setDays(int days) {
  if (days == days_) return;
  days_ = days;
  refresh();
}

QSize HistoryChart::sizeHint() const { return {style_.px(kWidth), style_.px(kHeight)}; }

void HistoryChart::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  refresh();
}

void HistoryChart::refresh() {
  if (!isVisible()) return;
  now_ = platform_.clock.now();
  from_ = now_ - days_ * kDaySeconds;
  points_ = chartPoints(model_.history().samples(from_));
  placeholder_->setVisible(points_.size() < 2);
  update();
}

void HistoryChart::paintEvent(QPaintEvent* /*event*/) {
  if (points_.size() < 2 || !(now_ > from_)) return;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(
      QPen(style_.colours().accent, style_.px(2), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  for (std::size_t i = 1; i < points_.size(); ++i) {
    if (points_[i].seg != points_[i - 1].seg) continue;
    const auto at = [this](const ChartPoint& p) {
      return QPointF(width() * ((p.date - from_) / (now_ - from_)),
                     height() * (1 - static_cast<double>(p.pct) / 100));
    };
    painter.drawLine(at(points_[i - 1]), at(points_[i]));
  }
}

}  // namespace tollbeam
