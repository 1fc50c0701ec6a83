#include "ui/popover/PopoverView.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLocale>
#include <utility>

#include "platform/Clock.h"
#include "texts/Translated.h"
#include "ui/controls/Accessibility.h"
#include "ui/popover/PopoverContent.h"

namespace tollbeam {

namespace {

constexpr double kWidth = 340;
constexpr double kPadding = 16;
constexpr double kBetween = 14;
constexpr double kBetweenBlocks = 16;
constexpr double kChart = 110;

constexpr int kDaysOfFirstChoice = 1;
constexpr int kDaysOfOthers = 7;

}  // namespace

PopoverView::PopoverView(AppModel& model, const Platform& platform, const Style& style,
                         std::function<void()> openSettings)
    : model_(model),
      platform_(platform),
      style_(style),
      noBattery_(new NoBattery(style, this)),
      header_(new Header(style, this)),
      cycles_(new CycleBlock(style, this)),
      details_(new Details(style, this)),
      range_(new SegmentedPicker(style, tr("History"), {tr("24 hours"), tr("7 days")}, this)),
      chart_(new HistoryChart(model, platform, style, this)),
      summary_(new DailySummaryView(model, platform, style, this)),
      divider_(new Divider(style, this)),
      note_(new Text(style, Role::caption2, Ink::secondary, this)),
      settings_(new Button(style, tr("Settings"), this)),
      quit_(new Button(style, tr("Quit"), this)) {
  note_->setText(tr("Tollbeam can only remind you. A Mac app cannot stop the charger."));
  note_->setBreaks(Breaks::afterSentence);
  layOut();

  connect(&header_->banner(), &SnoozeBanner::cancelled, &model_, &AppModel::cancelSnooze);
  connect(range_, &SegmentedPicker::chosenChanged, chart_, [this](int choice) {
    chart_->setDays(choice == 0 ? kDaysOfFirstChoice : kDaysOfOthers);
  });
  connect(settings_, &QPushButton::clicked, this, std::move(openSettings));
  connect(quit_, &QPushButton::clicked, qApp, &QCoreApplication::quit);

  // The history changes with every refresh, so the minutes on the charger count on with it.
  for (const auto signal : {&AppModel::stateChanged, &AppModel::pluggedSinceChanged,
                            &AppModel::historyVersionChanged, &AppModel::snoozeUntilChanged}) {
    connect(&model_, signal, this, &PopoverView::modelChanged);
  }
  connect(&style_, &Style::changed, this, &PopoverView::restyle);
  restyle();
  refresh();
}

void PopoverView::layOut() {
  column_ = new QVBoxLayout(this);
  battery_ = new QVBoxLayout;
  history_ = new QVBoxLayout;
  upToDivider_ = new QVBoxLayout;
  column_->addWidget(noBattery_);
  column_->addLayout(upToDivider_);
  upToDivider_->addLayout(battery_);
  upToDivider_->addWidget(divider_);
  battery_->addWidget(header_);
  battery_->addWidget(cycles_);
  battery_->addWidget(details_);
  battery_->addWidget(range_);
  battery_->addLayout(history_);
  history_->addWidget(chart_);
  history_->addWidget(summary_);
  column_->addWidget(note_);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(settings_);
  buttons->addStretch();
  buttons->addWidget(quit_);
  column_->addLayout(buttons);
}

void PopoverView::restyle() {
  const int padding = style_.px(kPadding);
  column_->setContentsMargins(padding, padding, padding, padding);
  column_->setSpacing(style_.px(kBetween));
  battery_->setSpacing(style_.px(kBetweenBlocks));
  chart_->setFixedHeight(style_.px(kChart));
  // The summary's title takes clicks beyond its words, inside the distance to its neighbours.
  const int reach = style_.px(DailySummaryView::kReach);
  history_->setSpacing(style_.px(kBetweenBlocks) - reach);
  upToDivider_->setSpacing(style_.px(kBetween) - reach);
  updateGeometry();
}

QSize PopoverView::sizeHint() const {
  const int width = style_.px(kWidth);
  return {width, heightForWidth(width)};
}

void PopoverView::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (stale_) refresh();
}

void PopoverView::modelChanged() {
  stale_ = true;
  if (isVisible()) refresh();
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
  // At once, so that it can be measured.
  layout()->invalidate();
  layout()->activate();
}

void PopoverView::refreshBattery(const BatteryState& state) {
  const Date now = platform_.clock.now();
  header_->ring().setCharge(static_cast<int>(state.percent), ringTint(state));
  header_->setState(translated(state.stateText()));
  std::optional<QString> pluggedIn;
  if (const auto since = model_.pluggedSince()) pluggedIn = pluggedInText(*since, now);
  header_->setPluggedIn(pluggedIn);
  std::optional<QString> snooze;
  if (const auto until = model_.snoozeUntil()) {
    snooze = snoozeText(*until, platform_.calendar, QLocale());
  }
  header_->setSnooze(snooze);

  if (state.cycleCount) cycles_->setCount(*state.cycleCount);
  cycles_->setVisible(state.cycleCount.has_value());
  const auto rows = readings(state);
  details_->setReadings(rows);
  details_->setVisible(!rows.empty());
  // Where the keyboard begins, a screen reader tells the essence.
  setAccessibleNameIfOther(*this, header_->ring().accessibleName() + QStringLiteral(". ") +
                                      translated(state.stateText()));
}

}  // namespace tollbeam
