#include "ui/summary/DailySummaryView.h"

#include <QEvent>
#include <QVBoxLayout>
#include <utility>

#include "platform/Clock.h"

namespace tollbeam {

namespace {

constexpr int kDays = 7;
constexpr int kAboveTable = 6;

}  // namespace

DailySummaryView::DailySummaryView(AppModel& model, const Platform& platform, const Style& style,
                                   QWidget* parent)
    : QWidget(parent),
      model_(model),
      platform_(platform),
      style_(style),
      title_(new Disclosure(style, tr("Daily summary"), this)) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(title_);
  connect(title_, &Disclosure::toggled, this, &DailySummaryView::onToggled);
  connect(&model_, &AppModel::historyVersionChanged, this, &DailySummaryView::refresh);
  connect(&style_, &Style::changed, this, &DailySummaryView::restyle);
  restyle();
}

void DailySummaryView::restyle() {
  const bool open = title_->isChecked();
  const int reach = style_.px(kReach);
  layout()->setSpacing(open ? style_.px(kAboveTable) - reach : 0);
  layout()->setContentsMargins(0, 0, 0, open ? reach : 0);
  if (table_) table_->restyle();
  refresh();
  settle();
}

void DailySummaryView::onToggled(bool open) {
  if (open && !table_) {
    table_ = new SummaryTable(style_, this);
    layout()->addWidget(table_);
  }
  table_->setVisible(open);
  restyle();
}

void DailySummaryView::refresh() {
  if (!isVisible() || !title_->isChecked()) return;
  std::vector<SummaryText> days;
  const QLocale locale;
  const Calendar& calendar = platform_.calendar;
  for (const DaySummary& day :
       model_.history().dailySummaries(kDays, platform_.clock.now(), calendar)) {
    days.push_back(summaryText(day, calendar, locale));
  }
  if (days == table_->days()) return;
  table_->setDays(std::move(days));
  settle();
}

void DailySummaryView::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  refresh();
}

void DailySummaryView::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::LocaleChange) refresh();
}

// The new height reaches the window at once: a step a turn of the event loop would be seen as a
// flicker, and the window would be mapped at the height that it last had.
void DailySummaryView::settle() {
  for (QWidget* widget = this; widget; widget = widget->parentWidget()) {
    if (widget->layout()) widget->layout()->activate();
    if (widget->isWindow()) break;
  }
}

}  // namespace tollbeam
