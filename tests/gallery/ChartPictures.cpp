#include <QGuiApplication>
#include <QLocale>
#include <QMouseEvent>
#include <QVBoxLayout>

#include "Days.h"
#include "Pictures.h"
#include "recorded/RecordedPlatform.h"
#include "support/ModelPorts.h"
#include "ui/chart/HistoryChart.h"
#include "ui/summary/DailySummaryView.h"

namespace tollbeam::gallery {

namespace {

struct Given {
  Stretches stretches = kDay;
  int days = 1;
  bool open = false;
  QLocale locale = QLocale(QLocale::English, QLocale::UnitedKingdom);
  Qt::LayoutDirection direction = QGuiApplication::layoutDirection();
  std::optional<double> pointer = {};
};

struct Scene {
  explicit Scene(const Given& given) : before(QLocale()) {
    QLocale::setDefault(given.locale);
    window.setLayoutDirection(given.direction);
    test::store(test::samplesAlong(given.stretches, kMidnight), platform.fileManager);
    model = std::make_unique<AppModel>(test::modelPorts(platform));
    auto* column = new QVBoxLayout(&window);
    const int padding = style.px(16);
    column->setContentsMargins(padding, padding, padding, padding);
    column->setSpacing(style.px(16 - DailySummaryView::kReach));
    column->setSizeConstraint(QLayout::SetFixedSize);
    auto* chart = new HistoryChart(*model, platform.clock, platform.calendar, style);
    auto* summary = new DailySummaryView(*model, platform.clock, platform.calendar, style);
    column->addWidget(chart);
    column->addWidget(summary);
    chart->setDays(given.days);
    summary->title().setChecked(given.open);
    window.show();
    if (given.pointer) {
      const QPointF at(*given.pointer * chart->width(), 40);
      QMouseEvent move(QEvent::MouseMove, at, chart->mapToGlobal(at), Qt::NoButton, Qt::NoButton,
                       Qt::NoModifier);
      QCoreApplication::sendEvent(chart, &move);
    }
  }
  ~Scene() { QLocale::setDefault(before); }
  Scene(const Scene&) = delete;
  Scene& operator=(const Scene&) = delete;

  QLocale before;
  RecordedPlatform platform{kNow};
  Style style{platform.appearance};
  std::unique_ptr<AppModel> model;
  QWidget window;
};

Picture picture(const std::string& name, const Given& given) {
  return {"chart-" + name, [given] {
            auto scene = std::make_shared<Scene>(given);
            return std::shared_ptr<QWidget>(scene, &scene->window);
          }};
}

}  // namespace

std::vector<Picture> chartPictures() {
  const QLocale us(QLocale::English, QLocale::UnitedStates);
  const QLocale german(QLocale::German, QLocale::Germany);
  const QLocale arabic(QLocale::Arabic, QLocale::Egypt);
  const QLocale portuguese(QLocale::Portuguese, QLocale::Portugal);
  return {
      picture("day", {}),
      picture("day-pointed", {.pointer = 0.3}),
      picture("week", {.stretches = kWeek, .days = 7, .open = true}),
      picture("week-pointed", {.stretches = kWeek, .days = 7, .pointer = 0.2}),
      picture("short", {.stretches = {{{10, 90}, {11, 80}}, {{12, 60}}, {{13, 100}, {14.3, 100}}}}),
      picture("full-and-empty", {.stretches = {{{-9, 100}, {-1, 100}, {7, 0}, {10, 0}}}}),
      picture("placeholder", {.stretches = {}}),
      picture("twelve-hours", {.locale = us}),
      picture("twelve-hours-pointed", {.locale = us, .pointer = 0.86}),
      picture("german", {.stretches = kWeek, .days = 7, .open = true, .locale = german}),
      picture("portuguese", {.stretches = kWeek, .days = 7, .locale = portuguese}),
      picture("arabic", {.open = true, .locale = arabic, .direction = Qt::RightToLeft}),
      picture("arabic-week", {.stretches = kWeek,
                              .days = 7,
                              .open = true,
                              .locale = arabic,
                              .direction = Qt::RightToLeft,
                              .pointer = 0.6}),
  };
}

}  // namespace tollbeam::gallery
