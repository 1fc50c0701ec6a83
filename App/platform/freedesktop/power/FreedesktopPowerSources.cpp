#include "platform/freedesktop/power/FreedesktopPowerSources.h"

#include <algorithm>
#include <utility>

#include "platform/freedesktop/power/readings/SmartBattery.h"

namespace tollbeam {

namespace {

using namespace std::chrono_literals;

const auto kService = QStringLiteral("org.freedesktop.UPower");

QStringList deviceKeys() {
  return {QStringLiteral("Type"),       QStringLiteral("IsPresent"),  QStringLiteral("Model"),
          QStringLiteral("State"),      QStringLiteral("Percentage"), QStringLiteral("TimeToFull"),
          QStringLiteral("TimeToEmpty")};
}

// No table and no battery look the same to a reader.
List visibleIn(const PowerTableCache::Table& table) {
  return inWholePercent(table.sources.value_or(List{}));
}

}  // namespace

FreedesktopPowerSources::FreedesktopPowerSources(Bus& systemBus, SleepHold& hold,
                                                 std::string suppliesFolder, PowerTiming timing)
    : bus_(systemBus),
      hold_(hold),
      suppliesFolder_(std::move(suppliesFolder)),
      device_(systemBus,
              {kService, QStringLiteral("/org/freedesktop/UPower/devices/DisplayDevice"),
               QStringLiteral("org.freedesktop.UPower.Device")},
              deviceKeys(), Activation::allowed),
      manager_(systemBus, {kService, QStringLiteral("/org/freedesktop/UPower"), kService},
               {QStringLiteral("OnBattery")}, Activation::allowed),
      kernelMonitor_([this](auto change) { onKernelEvent(change); }),
      cache_(timing.silence),
      readiness_(timing.glitch) {
  sinceStart_.start();
  const auto setUp = [](QTimer& timer, auto action) {
    timer.setSingleShot(true);
    timer.callOnTimeout(&timer, std::move(action));
  };
  setUp(review_, [this] { onReviewDue(); });
  // A coarse timer may fire early, before the table changes.
  review_.setTimerType(Qt::PreciseTimer);
  setUp(settling_, [this] { onSettled(); });
  settling_.setInterval(timing.settling);
  setUp(patienceWithDaemon_, [this] { tryFirstReading(); });
  patienceWithDaemon_.start(timing.daemon);
  for (auto* properties : {&device_, &manager_}) {
    QObject::connect(properties, &RemoteProperties::heard, properties, [this] {
      if (cache_.heardFromDaemon()) onDaemonUpdated();
    });
    QObject::connect(properties, &RemoteProperties::updated, properties,
                     [this] { onDaemonUpdated(); });
  }
  ownReadiness_ = readiness_.whenReady([this] { announceIfChanged(); });
  holdReleased_ = hold.onRelease([this] {
    // Changes that are settling are announced when they have.
    if (readiness_.isReady() && !settling_.isActive()) announceIfChanged();
  });
}

std::optional<List> FreedesktopPowerSources::descriptions() const {
  auto table = read();
  known_ = visibleIn(table);
  return std::move(table.sources);
}

std::optional<Dictionary> FreedesktopPowerSources::smartBattery() const {
  const auto supplies = readKernel();
  return supplies ? smartBatteryProperties(*supplies) : std::nullopt;
}

std::optional<Subscription> FreedesktopPowerSources::observe(std::function<void()> changed) {
  if (!bus_.isConnected() && !kernelMonitor_.isListening()) return std::nullopt;
  return observers_.add(std::move(changed));
}

Subscription FreedesktopPowerSources::whenReady(std::function<void()> ready) {
  return readiness_.whenReady(std::move(ready));
}

std::optional<UPowerAnswer> FreedesktopPowerSources::daemonsAnswer() const {
  if (!device_.values() || !manager_.values()) return std::nullopt;
  const Value* onBattery = find(*manager_.values(), "OnBattery");
  return UPowerAnswer{*device_.values(), onBattery && onBattery->flag().value_or(false)};
}

std::optional<PowerSupplies> FreedesktopPowerSources::readKernel() const {
  auto supplies = readPowerSupplies(suppliesFolder_);
  if (!supplies) return std::nullopt;
  return packs_.of(*std::move(supplies));
}

PowerTableCache::Table FreedesktopPowerSources::read() const {
  // A change of the charger during a launch or a sleep is not a flapping contact.
  if (!readiness_.isReady() || hold_.isHolding()) cache_.forgetContact();
  const std::chrono::milliseconds now(sinceStart_.elapsed());
  auto table = cache_.update(daemonsAnswer(), readKernel(), now);
  followsKernelsBatteries_ = table.fromKernel;
  if (const auto due = cache_.due()) {
    review_.start(std::max(*due - now, 0ms));
  } else {
    review_.stop();
  }
  return table;
}

void FreedesktopPowerSources::tryFirstReading() {
  using State = RemoteProperties::State;
  const bool gone = device_.state() == State::absent || manager_.state() == State::absent;
  if (!daemonsAnswer() && !gone && patienceWithDaemon_.isActive()) return;
  if (readiness_.isReady() || settling_.isActive()) return;
  if (read().isGlitch) {
    glitched_ = true;
  } else if (std::exchange(glitched_, false)) {
    // A battery that wakes up reports its charge first, and in another signal that it discharges.
    settling_.start();
  } else {
    readiness_.markReady();
  }
}

void FreedesktopPowerSources::onDaemonUpdated() {
  if (!readiness_.isReady()) return tryFirstReading();
  // Other changes are not worth a wake-up half a second later.
  if (known_ != visibleIn(read()) && !settling_.isActive()) settling_.start();
}

void FreedesktopPowerSources::onReviewDue() {
  if (cache_.review(std::chrono::milliseconds(sinceStart_.elapsed()))) {
    device_.ask();
    manager_.ask();
  }
  onDaemonUpdated();
}

void FreedesktopPowerSources::onKernelEvent(PowerSupplyMonitor::Change change) {
  // UPower signals the changes of its batteries.
  if (change == PowerSupplyMonitor::Change::battery && !followsKernelsBatteries_) return;
  if (readiness_.isReady()) {
    // Counts each change of the contact, also one that is undone before the burst has settled.
    static_cast<void>(read());
  } else if (!glitched_ && !settling_.isActive()) {
    // The first reading is yet to come.
    return;
  }
  // The last event of a burst needs its full time: its content may come as late as the first's.
  if (settling_.isActive()) {
    settleAgain_ = true;
  } else {
    settling_.start();
  }
}

void FreedesktopPowerSources::onSettled() {
  if (std::exchange(settleAgain_, false)) settling_.start();
  if (!readiness_.isReady()) return tryFirstReading();
  announceIfChanged();
}

void FreedesktopPowerSources::announceIfChanged() {
  const auto table = read();
  if (hold_.isHolding()) return;
  auto visible = visibleIn(table);
  if (known_ == visible) return;
  known_ = std::move(visible);
  observers_.notify();
}

}  // namespace tollbeam
