#include "ui/popover/PopoverView.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLocale>

#include "texts/Translated.h"
#include "ui/controls/Accessibility.h"
#include "ui/controls/Button.h"
#include "ui/controls/Text.h"
#include "ui/popover/PopoverContent.h"

namespace tollbeam {

namespace {

constexpr double kWidth = 340;
constexpr double kPadding = 16;
constexpr double kBetween = 14;
constexpr double kBetweenBlocks = 16;
constexpr double kBetweenCycles = 4;
constexpr double kBetweenDetails = 6;
constexpr double kChart = 110;

}  // namespace

PopoverView::PopoverView(AppModel& model, const Clock& clock, const Calendar& calendar,
                         const Style& style, const std::function<void()>& openSettings)
    : model_(model),
      clock_(clock),
      calendar_(calendar),
      style_(style),
      noBattery_(new NoBattery(style, this)),
      header_(new Header(style, this)),
      cycles_(new QWidget(this)),
      cycleRow_(new Row(style, cycles_)),
      cycleBar_(new Bar(style, tr("Cycle count"), kCyclesOfALife, cycles_)),
      details_(new QWidget(this)),
      range_(new SegmentedPicker(style, tr("History"), {tr("24 hours"), tr("7 days")}, this)),
      chart_(new HistoryChart(model, clock, calendar, style, this)),
      summary_(new DailySummaryView(model, clock, calendar, style, this)) {
  layOut(openSettings);
  connect(&header_->banner(), &SnoozeBanner::cancelled, &model_, &AppModel::cancelSnooze);
  connect(range_, &SegmentedPicker::chosenChanged, chart_,
          [this](int choice) { chart_->setDays(choice == 0 ? 1 : 7); });

  // The history version changes with every refresh, so the time on the charger keeps counting.
  for (const auto signal : {&AppModel::stateChanged, &AppModel::pluggedSinceChanged,
                            &AppModel::historyVersionChanged, &AppModel::snoozeUntilChanged}) {
    connect(&model_, signal, this, [this] {
      stale_ = true;
      if (isVisible()) refresh();
    });
  }
  refresh();
}

void PopoverView::layOut(const std::function<void()>& openSettings) {
  auto* divider = new Divider(style_, this);
  auto* note = new Text(style_, Role::caption2, Ink::secondary, this);
  note->setText(tr("Tollbeam can only remind you. A Mac app cannot stop the charger."));
  note->setBreaks(Breaks::afterSentence);
  auto* settings = new Button(style_, tr("Settings"), this);
  auto* quit = new Button(style_, tr("Quit"), this);
  connect(settings, &QPushButton::clicked, this, openSettings);
  connect(quit, &QPushButton::clicked, qApp, &QCoreApplication::quit);

  auto* column = new QVBoxLayout(this);
  auto* upToDivider = new QVBoxLayout;
  auto* battery = new QVBoxLayout;
  auto* history = new QVBoxLayout;
  auto* cycles = new QVBoxLayout(cycles_);
  auto* details = new QVBoxLayout(details_);
  for (auto* inner : {cycles, details}) inner->setContentsMargins(0, 0, 0, 0);
  cycles->addWidget(cycleRow_);
  cycles->addWidget(cycleBar_);
  column->addWidget(noBattery_);
  column->addLayout(upToDivider);
  upToDivider->addLayout(battery);
  upToDivider->addWidget(divider);
  battery->addWidget(header_);
  battery->addWidget(cycles_);
  battery->addWidget(details_);
  battery->addWidget(range_);
  battery->addLayout(history);
  history->addWidget(chart_);
  history->addWidget(summary_);
  column->addWidget(note);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(settings);
  buttons->addStretch();
  buttons->addWidget(quit);
  column->addLayout(buttons);

  style_.follow(this, [=, this] {
    const int padding = style_.px(kPadding);
    column->setContentsMargins(padding, padding, padding, padding);
    column->setSpacing(style_.px(kBetween));
    battery->setSpacing(style_.px(kBetweenBlocks));
    cycles->setSpacing(style_.px(kBetweenCycles));
    details->setSpacing(style_.px(kBetweenDetails));
    for (QWidget* block : {cycles_, details_}) block->updateGeometry();
    chart_->setFixedHeight(style_.px(kChart));
    // The clickable edge of the summary's title lies inside the distances to its neighbours.
    const int reach = style_.px(DailySummaryView::kReach);
    history->setSpacing(style_.px(kBetweenBlocks) - reach);
    upToDivider->setSpacing(style_.px(kBetween) - reach);
    updateGeometry();
  });
}

QSize PopoverView::sizeHint() const {
  const int width = style_.px(kWidth);
  return {width, heightForWidth(width)};
}

void PopoverView::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (stale_) refresh();
}

void PopoverView::refresh() {
  stale_ = false;
  const BatteryState& state = model_.state();
  noBattery_->setVisible(!state.hasBattery);
  for (QWidget* block : std::initializer_list<QWidget*>{header_, range_, chart_, summary_}) {
    block->setVisible(state.hasBattery);
  }
  if (state.hasBattery) {
    refreshBattery(state);
  } else {
    cycles_->hide();
    details_->hide();
    setAccessibleNameIfOther(*this, translated(state.stateText()));
  }
  // At once, so that the view can be measured.
  layout()->invalidate();
  layout()->activate();
}

void PopoverView::refreshBattery(const BatteryState& state) {
  const QString text = translated(state.stateText());
  header_->ring().setCharge(static_cast<int>(state.percent), ringTint(state));
  const auto since = model_.pluggedSince();
  const auto until = model_.snoozeUntil();
  header_->setTexts(text, since ? pluggedInText(*since, clock_.now()) : QString(),
                    until ? snoozeText(*until, calendar_, QLocale()) : QString());

  if (state.cycleCount) {
    cycleRow_->setReading(tr("Cycle count"), cycleText(*state.cycleCount));
    cycleBar_->setFilled(*state.cycleCount, cycleTint(*state.cycleCount));
  }
  cycles_->setVisible(state.cycleCount.has_value());

  const auto rows = readings(state);
  while (detailRows_.size() < rows.size()) {
    detailRows_.push_back(new Row(style_, details_));
    details_->layout()->addWidget(detailRows_.back());
  }
  for (std::size_t i = 0; i < detailRows_.size(); ++i) {
    if (i < rows.size()) detailRows_[i]->setReading(rows[i].label, rows[i].value, rows[i].color);
    detailRows_[i]->setVisible(i < rows.size());
  }
  details_->setVisible(!rows.empty());
  for (QWidget* block : {cycles_, details_}) block->updateGeometry();
  // A screen reader says it when the popover opens, because the keyboard focus is on the view.
  setAccessibleNameIfOther(*this, header_->ring().accessibleName() + QStringLiteral(". ") + text);
}

}  // namespace tollbeam
