#include "ui/summary/DailySummaryView.h"

#include <QEvent>
#include <QVBoxLayout>
#include <utility>

namespace tollbeam {

namespace {

constexpr int kDays = 7;
constexpr int kAboveTable = 6;

}  // namespace

DailySummaryView::DailySummaryView(AppModel& model, const Clock& clock, const Calendar& calendar,
                                   const Style& style, QWidget* parent)
    : QWidget(parent),
      model_(model),
      clock_(clock),
      calendar_(calendar),
      style_(style),
      title_(new Disclosure(style, tr("Daily summary"), this)) {
  auto* column = new QVBoxLayout(this);
  column->addWidget(title_);
  connect(title_, &Disclosure::toggled, this, [this, column](bool open) {
    if (open && !table_) {
      table_ = new SummaryTable(style_, this);
      column->addWidget(table_);
    }
    table_->setVisible(open);
    restyle();
  });
  connect(&model_, &AppModel::historyVersionChanged, this, &DailySummaryView::refresh);
  style_.follow(this, [this] { restyle(); });
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

void DailySummaryView::refresh() {
  if (!isVisible() || !title_->isChecked()) return;
  std::vector<SummaryText> days;
  for (const DaySummary& day : model_.history().dailySummaries(kDays, clock_.now(), calendar_)) {
    days.push_back(summaryText(day, calendar_, QLocale()));
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

// Lays out everything up to the window at once. Left to the event loop, each level would take a
// turn of it, which flickers, and a window that is being shown would appear at its old height.
void DailySummaryView::settle() {
  for (QWidget* widget = this; widget; widget = widget->parentWidget()) {
    if (widget->layout()) widget->layout()->activate();
    if (widget->isWindow()) break;
  }
}

}  // namespace tollbeam
