#include <QPainter>
#include <QRadioButton>
#include <QTest>
#include <cmath>
#include <optional>

#include "Days.h"
#include "Pictures.h"
#include "recorded/RecordedPlatform.h"
#include "support/ModelPorts.h"
#include "support/WaitFor.h"
#include "ui/popover/Popover.h"
#include "ui/popover/PopoverView.h"

namespace tollbeam::gallery {

namespace {

class NoClicks final : public OutsideClicks {
 public:
  std::optional<Subscription> observe(std::function<void(Button)> /*callback*/) override {
    return std::nullopt;
  }
};

const Stretches kLowDay{{{-9.7, 52}, {-8.3, 42}, {-6.7, 80}, {-3.0, 80}, {-0.6, 70}},
                        {{6.9, 67}, {14.33, 14}}};
const Stretches kFullDay{{{-9.7, 71}, {-5.3, 48}, {-3.5, 80}, {-0.3, 80}},
                         {{7.5, 81}, {9.2, 60}, {10.4, 63}, {13.33, 100}, {14.33, 100}}};
const Stretches kEmptyDay{{{-6, 100}, {-1, 40}}, {{8.2, 62}, {14.33, 0}}};
const Stretches kLongWeek{
    {{-153.6, 58}, {-100, 80}, {-80, 20}, {-78, 100}, {-30, 100}, {14.33, 21}}};

struct Scene {
  Scene(Dictionary battery, Dictionary properties, const Stretches& history) {
    if (!battery.empty()) platform.powerSources.table = List{std::move(battery)};
    if (!properties.empty()) platform.powerSources.properties = std::move(properties);
    // One sample a minute, as the program records.
    samples = test::samplesAlong(history, kMidnight, 1);
    platform.compositor.running = true;
  }

  void pluggedInFor(double minutes) {
    for (Sample& sample : samples) sample.a = sample.t >= kNow.secondsSince1970 - minutes * 60;
  }

  void open() {
    test::store(samples, platform.fileManager);
    model.emplace(test::modelPorts(platform));
    model->start();
    view = new PopoverView(*model, platform.clock, platform.calendar, style, [] {});
    popover.emplace(clicks, platform.compositor, platform.clock, style, view);
    QObject::connect(&*popover, &Popover::aboutToShow, view, &PopoverView::refresh);
    popover->showAt(ClickPosition{1000, 15});
  }

  void chooseWeek() const { view->findChildren<QRadioButton*>().last()->click(); }
  void openSummary() const { view->findChild<DailySummaryView*>()->title().click(); }

  RecordedPlatform platform{kNow};
  std::vector<Sample> samples;
  NoClicks clicks;
  Style style{platform.appearance};
  std::optional<AppModel> model;
  PopoverView* view = nullptr;
  std::optional<Popover> popover;
};

// The popover on a plain desktop, below an empty panel.
class Desk final : public QWidget {
 public:
  explicit Desk(Scene& scene)
      : dark_(scene.style.colours().dark), corner_(scene.popover->body().topLeft()) {
    const QSize body = scene.popover->body().size();
    setFixedSize(body + QSize(2 * kAround, kPanel + kGap + kAround));
    popover_ = scene.popover->grab();
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    painter.fillRect(rect(), dark_ ? QColor(0x3B, 0x44, 0x52) : QColor(0xC9, 0xD1, 0xDC));
    painter.drawPixmap(QPoint(kAround, kPanel + kGap) - corner_, popover_);
    const QRect panel(0, 0, width(), kPanel);
    painter.fillRect(panel, dark_ ? QColor(0x19, 0x1B, 0x1F) : QColor(0xF0, 0xF1, 0xF3));
  }

 private:
  static constexpr int kAround = 32;
  static constexpr int kPanel = 30;
  static constexpr int kGap = 8;

  bool dark_;
  QPoint corner_;
  QPixmap popover_;
};

std::shared_ptr<QWidget> shown(Scene& scene) {
  // Lets animations end. Showing the desk then closes the popover, because it becomes active.
  if (!QTest::qWaitForWindowExposed(&*scene.popover, test::kPatience)) return nullptr;
  constexpr int kRest = 400;
  QTest::qWait(kRest);
  auto desk = std::make_shared<Desk>(scene);
  desk->show();
  return desk;
}

Dictionary battery(int percent, Dictionary more = {}) {
  Dictionary result{
      {"Type", "InternalBattery"}, {"Current Capacity", percent}, {"Max Capacity", 100}};
  for (auto& [key, value] : more) result.insert_or_assign(key, value);
  return result;
}
Dictionary charger(int percent, bool charging, Dictionary more = {}) {
  more.insert_or_assign("Power Source State", "AC Power");
  more.insert_or_assign("Is Charging", charging);
  return battery(percent, more);
}

Dictionary controller(int cycles, int full, double celsius, double watts) {
  return {{"CycleCount", cycles},
          {"DesignCapacity", 5000},
          {"AppleRawMaxCapacity", full},
          {"Temperature", static_cast<int>(std::lround(celsius * 100))},
          {"Voltage", 12000},
          {"Amperage", static_cast<int>(std::lround(watts / 12 * 1000))}};
}

Picture picture(std::string name, Dictionary table, Dictionary properties, const Stretches& history,
                const std::function<void(Scene&)>& arrange = {},
                const std::function<void(Scene&)>& use = {}) {
  return {"popover-" + std::move(name), [=] {
            auto scene = std::make_shared<Scene>(table, properties, history);
            if (arrange) arrange(*scene);
            scene->open();
            if (use) use(*scene);
            return shown(*scene);
          }};
}

}  // namespace

std::vector<Picture> popoverPictures() {
  const auto plugged = [](Scene& scene) { scene.pluggedInFor(192); };
  const auto snoozed = [](Scene& scene) {
    scene.pluggedInFor(192);
    scene.platform.userDefaults.values.insert_or_assign("snoozeUntil",
                                                        kNow.secondsSince1970 + 45 * 60);
  };
  const auto week = [](Scene& scene) { scene.chooseWeek(); };
  const auto weekAndSummary = [](Scene& scene) {
    scene.chooseWeek();
    scene.openSummary();
  };
  const Dictionary good = controller(212, 4650, 31.4, -7.3);
  const auto adapter = [](Dictionary properties, int watts) {
    properties.insert_or_assign("AdapterDetails", Dictionary{{"Watts", watts}});
    return properties;
  };
  return {
      picture("a-on-battery", battery(64, {{"Time to Empty", 227}}), good, kDay),
      picture("b-charging-snoozed-week", charger(82, true, {{"Time to Full Charge", 41}}),
              adapter(controller(742, 4300, 34.8, 28.6), 65), kWeek, snoozed, weekAndSummary),
      picture("c-low-worn", battery(14, {{"Time to Empty", 38}}),
              controller(934, 3850, 36.2, -14.9), kLowDay),
      picture("d-none", {}, {}, {}),
      picture("e-longest", charger(82, true), adapter(good, 65), {}, snoozed),
      picture("f-full", charger(100, false, {{"Is Charged", true}}),
              adapter(controller(0, 5000, 28, 0), 100), kFullDay, plugged),
      picture("g-held-at-99", charger(99, false), adapter(controller(701, 4500, 30, 0.04), 65),
              kFullDay, snoozed),
      picture("h-no-figures", battery(100), {}, kFullDay),
      picture("i-empty-worn-out", battery(0, {{"Time to Empty", 0}}),
              controller(1500, 2500, -3, -3), kEmptyDay),
      picture("j-long-history", battery(21, {{"Time to Empty", 1265}}), good, kLongWeek, {}, week),
  };
}

}  // namespace tollbeam::gallery
