#include <QAbstractButton>
#include <QAccessible>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <optional>

#include "Pictures.h"
#include "platform/recorded/RecordedPlatform.h"
#include "ui/Popover.h"
#include "ui/PopoverView.h"

namespace tollbeam::gallery {

namespace {

constexpr double kNow = 1'763'648'400;       // Thursday 20 November 2025, 14:20 UTC
constexpr double kMidnight = 1'763'596'800;  // of that day

class NoClicks final : public OutsideClicks {
 public:
  std::optional<Subscription> observe(std::function<void(Button)> /*callback*/) override {
    return std::nullopt;
  }
};

// Hours from today's midnight and the charge there; between two points it was recorded.
using Stretch = std::vector<std::pair<double, double>>;

const std::vector<Stretch> kDay{{{-9.7, 71}, {-5.3, 48}, {-3.5, 80}, {-1.2, 80}, {-0.3, 76}},
                                {{7.5, 74}, {8.2, 80}, {10.4, 80}, {14.33, 64}}};
const std::vector<Stretch> kLowDay{{{-9.7, 52}, {-8.3, 42}, {-6.7, 80}, {-3.0, 80}, {-0.6, 70}},
                                   {{6.9, 67}, {14.33, 14}}};
const std::vector<Stretch> kWeek{
    {{-153.6, 58}, {-151, 45}, {-149.6, 80}, {-143.6, 80}},
    {{-137, 78}, {-135, 80}, {-131, 80}, {-126.5, 52}, {-124.8, 80}, {-111.5, 80}, {-107, 61},
     {-97.5, 43}},
    {{-87.6, 42}, {-85, 64}, {-80.5, 38}, {-78.4, 80}, {-63.2, 80}, {-57.8, 49}, {-56, 80},
     {-52.5, 80}, {-49, 66}},
    {{-40.4, 65}, {-35.6, 33}, {-33, 80}, {-15.4, 80}, {-11.9, 58}, {-10.5, 80}, {-6.4, 80},
     {-0.6, 51}},
    {{7.4, 50}, {9, 41}, {11.1, 34}, {14.33, 82}}};

std::string historyFile(const std::vector<Stretch>& stretches) {
  std::string json = "[";
  for (const Stretch& stretch : stretches) {
    for (std::size_t i = 0; i + 1 < stretch.size(); ++i) {
      const auto [from, start] = stretch[i];
      const auto [to, end] = stretch[i + 1];
      for (double hour = from; hour < to; hour += 1.0 / 12) {
        const double part = (hour - from) / (to - from);
        if (json.size() > 1) json += ',';
        const char* charging = end > start ? "true" : "false";
        json += QString::asprintf("{\"t\":%.0f,\"p\":%d,\"c\":%s,\"a\":%s}", kMidnight + hour * 3600,
                                  static_cast<int>(std::lround(start + (end - start) * part)),
                                  charging, charging)
                    .toStdString();
      }
    }
  }
  return json + "]";
}

struct Scene {
  Scene(Dictionary battery, Dictionary properties, const std::vector<Stretch>& history) {
    if (!battery.empty()) platform.powerSources.table = List{std::move(battery)};
    if (!properties.empty()) platform.powerSources.properties = std::move(properties);
    platform.fileManager.files["/support/Tollbeam/history.json"] = historyFile(history);
    platform.compositor.running = true;
  }

  void open() {
    model.emplace(platform.ports());
    model->start();
    view = new PopoverView(*model, platform.ports(), style, [] {});
    popover.emplace(clicks, platform.compositor, platform.clock, style, view);
    QObject::connect(&*popover, &Popover::aboutToShow, view, &PopoverView::refresh);
    popover->showAt({});
  }

  void press(const char* words) const {
    for (auto* button : view->findChildren<QAbstractButton*>()) {
      if (button->text() == QLatin1String(words)) button->click();
    }
  }

  RecordedPlatform platform{Date{kNow}};
  NoClicks clicks;
  Style style{platform.appearance};
  std::optional<AppModel> model;
  PopoverView* view = nullptr;
  std::optional<Popover> popover;
};

// The popover on a plain desktop, below an empty panel.
class Desk final : public QWidget {
 public:
  explicit Desk(std::shared_ptr<Scene> scene) : scene_(std::move(scene)) {}

  [[nodiscard]] QSize sizeHint() const override {
    return scene_->popover->body().size() + QSize(2 * kAround, kPanel + kGap + kAround);
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    const bool dark = scene_->style.colours().dark;
    painter.fillRect(rect(), dark ? QColor(0x3B, 0x44, 0x52) : QColor(0xC9, 0xD1, 0xDC));
    painter.fillRect(0, 0, width(), kPanel, dark ? QColor(0x19, 0x1B, 0x1F) : QColor(0xF0, 0xF1, 0xF3));
    const QPoint corner = scene_->popover->body().topLeft();
    painter.drawPixmap(QPoint(kAround, kPanel + kGap) - corner, scene_->popover->grab());
  }

 private:
  static constexpr int kAround = 32;
  static constexpr int kPanel = 30;
  static constexpr int kGap = 8;

  std::shared_ptr<Scene> scene_;
};

std::shared_ptr<QWidget> shown(const std::shared_ptr<Scene>& scene) {
  auto desk = std::make_shared<Desk>(scene);
  desk->setFixedSize(desk->sizeHint());
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

Picture picture(std::string name, Dictionary table, Dictionary properties,
                const std::vector<Stretch>& history,
                const std::function<void(Scene&)>& arrange = {},
                const std::function<void(Scene&)>& use = {}) {
  return {"popover-" + std::move(name), [=] {
            auto scene = std::make_shared<Scene>(table, properties, history);
            if (arrange) arrange(*scene);
            scene->open();
            if (use) use(*scene);
            return shown(scene);
          }};
}

}  // namespace

std::vector<Picture> popoverPictures() {
  const auto snoozed = [](Scene& scene) {
    scene.platform.userDefaults.values.insert_or_assign("snoozeUntil", kNow + 45 * 60);
  };
  return {
      picture("a-on-battery", battery(64, {{"Time to Empty", 227}}),
              controller(212, 4650, 31.4, -7.3), kDay)};
}

}  // namespace tollbeam::gallery
