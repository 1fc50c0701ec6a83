#include "platform/freedesktop/power/FreedesktopPowerSources.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "platform/freedesktop/power/readings/SmartBattery.h"

namespace tollbeam {

namespace {

using namespace std::chrono_literals;

const auto service = QStringLiteral("org.freedesktop.UPower");

RemoteProperties::Address displayDevice() {
  return {service, QStringLiteral("/org/freedesktop/UPower/devices/DisplayDevice"),
          QStringLiteral("org.freedesktop.UPower.Device")};
}

RemoteProperties::Address manager() {
  return {service, QStringLiteral("/org/freedesktop/UPower"), service};
}

QStringList deviceKeys() {
  return {QStringLiteral("Type"),       QStringLiteral("IsPresent"),  QStringLiteral("Model"),
          QStringLiteral("State"),      QStringLiteral("Percentage"), QStringLiteral("TimeToFull"),
          QStringLiteral("TimeToEmpty")};
}

// Nothing to read and no battery are the same to a reader.
List asSeen(const PowerTableCache::Table& table) {
  return inWholePercent(table.sources.value_or(List{}));
}

}  // namespace

FreedesktopPowerSources::FreedesktopPowerSources(Bus& systemBus, Workspace& workspace,
                                                 std::string suppliesFolder,
                                                 LaunchPatience patience,
                                                 DaemonSilence::Patience patienceWithSilence,
                                                 std::chrono::milliseconds settling)
    : bus_(systemBus),
      suppliesFolder_(std::move(suppliesFolder)),
      device_(systemBus, displayDevice(), deviceKeys(), Activation::allowed),
      manager_(systemBus, manager(), {QStringLiteral("OnBattery")}, Activation::allowed),
      cache_(patienceWithSilence),
      readiness_(patience.glitch),
      hold_(workspace, [this] { onHoldReleased(); }) {
  sinceStart_.start();
  review_.setSingleShot(true);
  review_.setTimerType(Qt::PreciseTimer);
  QObject::connect(&review_, &QTimer::timeout, &review_, [this] { onReviewDue(); });
  settling_.setSingleShot(true);
  settling_.setInterval(settling);
  QObject::connect(&settling_, &QTimer::timeout, &settling_, [this] { onSettled(); });
  for (auto* properties : {&device_, &manager_}) {
    QObject::connect(properties, &RemoteProperties::heard, &settling_, [this] { onDaemonHeard(); });
    QObject::connect(properties, &RemoteProperties::updated, &settling_,
                     [this] { onDaemonUpdated(); });
  }
  patienceWithDaemon_.setSingleShot(true);
  QObject::connect(&patienceWithDaemon_, &QTimer::timeout, &patienceWithDaemon_,
                   [this] { lookForFirstReading(); });
  patienceWithDaemon_.start(patience.daemon);
  ownReadiness_ = readiness_.whenReady([this] { onReady(); });
}

std::optional<List> FreedesktopPowerSources::descriptions() const {
  auto table = read();
  known_ = asSeen(table);
  return std::move(table.sources);
}

std::optional<Dictionary> FreedesktopPowerSources::smartBattery() const {
  const auto supplies = readKernel();
  return supplies ? smartBatteryProperties(*supplies) : std::nullopt;
}

std::optional<Subscription> FreedesktopPowerSources::observe(std::function<void()> changed) {
  if (!bus_.isConnected()) watchKernel();
  if (!bus_.isConnected() && !kernelMonitor_) return std::nullopt;
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
  // What the machine starts or wakes up with is no flapping of the charger's contact.
  if (!readiness_.isReady() || hold_.isHolding()) cache_.forgetContact();
  const std::chrono::milliseconds now(sinceStart_.elapsed());
  auto table = cache_.update(daemonsAnswer(), readKernel(), now);
  followsKernelsBatteries_ = table.fromKernel || !daemonsAnswer();
  if (const auto due = cache_.due()) {
    review_.start(std::max(*due - now, 0ms));
  } else {
    review_.stop();
  }
  return table;
}

void FreedesktopPowerSources::lookForFirstReading() {
  using State = RemoteProperties::State;
  const bool gone = device_.state() == State::absent || manager_.state() == State::absent;
  if (!daemonsAnswer() && !gone && patienceWithDaemon_.isActive()) return;
  if (settling_.isActive()) return;
  // Before the look: what happens after it is an event. The kernel may have the battery's first
  // word.
  watchKernel();
  if (read().isGlitch) {
    glitched_ = true;
    return;
  }
  // A battery that wakes up tells its charge first; that it feeds the machine, in another signal.
  if (std::exchange(glitched_, false)) return settling_.start();
  readiness_.markReady();
}

void FreedesktopPowerSources::onDaemonHeard() {
  const bool goesOn = cache_.isDaemonSilent();
  cache_.heardFromDaemon();
  if (goesOn) onDaemonUpdated();
}

void FreedesktopPowerSources::onDaemonUpdated() {
  if (!readiness_.isReady()) return lookForFirstReading();
  // Only what a reader would see is worth a wake-up half a second from now.
  if (known_ != asSeen(read()) && !settling_.isActive()) settling_.start();
}

void FreedesktopPowerSources::onReviewDue() {
  if (cache_.review(std::chrono::milliseconds(sinceStart_.elapsed()))) {
    device_.ask();
    manager_.ask();
  }
  onDaemonUpdated();
}

void FreedesktopPowerSources::onKernelEvent(PowerSupplyMonitor::Change change) {
  // UPower signals what its batteries do.
  if (change == PowerSupplyMonitor::Change::battery && !followsKernelsBatteries_) return;
  // Each change of the contact counts, also one that is over when the burst has settled.
  if (readiness_.isReady()) static_cast<void>(read());
  // The last event of a burst needs its full time: its content may come as late as the first's.
  if (settling_.isActive()) {
    settleAgain_ = true;
  } else {
    settling_.start();
  }
}

void FreedesktopPowerSources::onReady() {
  patienceWithDaemon_.stop();
  watchKernel();
  announceIfChanged(read());
}

void FreedesktopPowerSources::onSettled() {
  if (std::exchange(settleAgain_, false)) settling_.start();
  if (!readiness_.isReady()) return lookForFirstReading();
  announceIfChanged(read());
}

void FreedesktopPowerSources::onHoldReleased() {
  // What is settling is told when it has.
  if (readiness_.isReady() && !settling_.isActive()) announceIfChanged(read());
}

void FreedesktopPowerSources::watchKernel() {
  if (kernelMonitor_) return;
  kernelMonitor_ = PowerSupplyMonitor::start(
      [this](PowerSupplyMonitor::Change change) { onKernelEvent(change); });
}

void FreedesktopPowerSources::announceIfChanged(const PowerTableCache::Table& table) {
  if (hold_.isHolding()) return;
  auto seen = asSeen(table);
  if (known_ == seen) return;
  known_ = std::move(seen);
  observers_.notify();
}

}  // namespace tollbeam
