#include "ui/PopoverView.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QHBoxLayout>
#include <QLocale>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

namespace tollbeam {

namespace {

constexpr int kWidth = 340;
constexpr int kPadding = 16;
constexpr int kSpacing = 14;
constexpr double kLastSecond = 253402300799;  // of the year 9999

QString details(const BatteryState& state) {
  QStringList lines;
  if (state.hasBattery) lines << QStringLiteral("%1%").arg(state.percent);
  if (state.cycleCount) lines << QStringLiteral("Cycle count: %1").arg(*state.cycleCount);
  const auto health = state.healthPercent();
  const auto label = state.healthLabel();
  if (health && label) {
    lines << QString::asprintf("Battery health: %.0f%% · %s", *health, label->c_str());
  }
  return lines.join(QLatin1Char('\n'));
}

}  // namespace

PopoverView::PopoverView(AppModel& model, const Platform& /*platform*/, const Style& /*style*/,
                         std::function<void()> openSettings)
    : model_(model),
      state_(new QLabel(this)),
      details_(new QLabel(this)),
      banner_(new QWidget(this)),
      bannerText_(new QLabel(banner_)) {
  setFixedWidth(kWidth);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(kPadding, kPadding, kPadding, kPadding);
  column->setSpacing(kSpacing);

  QFont headline = state_->font();
  headline.setWeight(QFont::DemiBold);
  state_->setFont(headline);
  state_->setWordWrap(true);
  column->addWidget(state_);
  column->addWidget(details_);

  auto* cancel = new QPushButton(tr("Cancel"), banner_);
  auto* bannerRow = new QHBoxLayout(banner_);
  bannerRow->setContentsMargins(0, 0, 0, 0);
  bannerRow->addWidget(bannerText_, 1);
  bannerRow->addWidget(cancel);
  column->addWidget(banner_);
  connect(cancel, &QPushButton::clicked, &model_, &AppModel::cancelSnooze);

  auto* note = new QLabel(tr("Tollbeam can only remind you. A Mac app cannot stop the charger."));
  note->setWordWrap(true);
  column->addWidget(note);

  auto* settings = new QPushButton(tr("Settings"), this);
  auto* quit = new QPushButton(tr("Quit"), this);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(settings);
  buttons->addStretch();
  buttons->addWidget(quit);
  column->addLayout(buttons);
  connect(settings, &QPushButton::clicked, this, std::move(openSettings));
  connect(quit, &QPushButton::clicked, qApp, &QCoreApplication::quit);

  connect(&model_, &AppModel::stateChanged, this, &PopoverView::update);
  connect(&model_, &AppModel::snoozeUntilChanged, this, &PopoverView::update);
  update();
}

void PopoverView::update() {
  const BatteryState& state = model_.state();
  state_->setText(QString::fromStdString(state.stateText()));
  details_->setText(details(state));
  details_->setVisible(!details_->text().isEmpty());
  banner_->setVisible(model_.snoozeUntil().has_value());
  if (const auto until = model_.snoozeUntil()) {
    // A deadline beyond all years can only have been written by hand.
    const double seconds = std::min(until->secondsSince1970, kLastSecond);
    const auto time = QDateTime::fromSecsSinceEpoch(static_cast<qint64>(seconds)).time();
    bannerText_->setText(
        tr("Alerts snoozed until %1").arg(QLocale().toString(time, QLocale::ShortFormat)));
  }
}

}  // namespace tollbeam
