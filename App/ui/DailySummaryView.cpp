#include "ui/DailySummaryView.h"

#include <QDate>
#include <QLocale>
#include <QVBoxLayout>

#include "battery/FormatMinutes.h"
#include "platform/Clock.h"

namespace tollbeam {

DailySummaryView::DailySummaryView(AppModel& model, const Platform& platform, const Style& style,
                                   QWidget* parent)
    : QWidget(parent),
      model_(model),
      platform_(platform),
      style_(style),
      title_(new QToolButton(this)),
      table_(new QLabel(this)) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, style.px(kReach), 0, style.px(kReach));
  title_->setText(tr("Daily summary"));
  title_->setCheckable(true);
  title_->setAutoRaise(true);
  column->addWidget(title_);
  column->addWidget(table_);
  table_->hide();
  connect(title_, &QToolButton::toggled, table_, &QLabel::setVisible);
  connect(title_, &QToolButton::toggled, this, &DailySummaryView::refresh);
  connect(&model_, &AppModel::historyVersionChanged, this, &DailySummaryView::refresh);
}

void DailySummaryView::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  refresh();
}

void DailySummaryView::refresh() {
  if (!isVisible() || !title_->isChecked()) return;
  QStringList rows;
  for (const DaySummary& day :
       model_.history().dailySummaries(7, platform_.clock.now(), platform_.calendar)) {
    const CalendarDay on = platform_.calendar.day(day.day);
    rows << QStringLiteral("%1  %2%  %3–%4%  %5")
                .arg(QLocale().toString(QDate(on.year, on.month, on.day), QStringLiteral("ddd d")))
                .arg(day.avgPercent)
                .arg(day.minPercent)
                .arg(day.maxPercent)
                .arg(day.chargingMinutes >= 1
                         ? QString::fromStdString(formatMinutes(day.chargingMinutes))
                         : QStringLiteral("–"));
  }
  table_->setText(rows.join(QLatin1Char('\n')));
}

}  // namespace tollbeam
