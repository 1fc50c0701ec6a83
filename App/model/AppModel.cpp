#include "model/AppModel.h"

#include <QPointer>
#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "preferences/Prefs.h"

namespace tollbeam {

namespace {

constexpr double kRefreshInterval = 60;
constexpr double kRefreshTolerance = 10;
// Batteries report nonsense right after a wake; by then they have settled.
constexpr double kWakeDelay = 3.0;
// An announced sleep without a wake after so long was called off.
constexpr double kSleepCalledOff = 60;
constexpr double kSnoozeSeconds = 3600;
// More than the two clocks drift apart between two refreshes.
constexpr double kClockStep = 60;
constexpr const char* kExportName = "Tollbeam-history.csv";

std::optional<NotificationSound> notificationSound(const std::string& name) {
  if (name == kNoSound) return std::nullopt;
  if (name == kDefaultSound) return NotificationSound{};
  return NotificationSound{name};
}

}  // namespace

template <typename T>
void AppModel::publish(T& held, std::type_identity_t<T> value, void (AppModel::*changed)()) {
  if (value == held) return;
  held = std::move(value);
  Q_EMIT(this->*changed)();
}

AppModel::AppModel(const Ports& ports)
    : ports_(ports),
      lastNow_(ports_.clock.now()),
      lastUptime_(ports_.clock.uptime()),
      launched_(lastNow_),
      snoozeUntil_(Prefs::snoozeUntil(ports_.userDefaults, lastNow_)),
      reader_(ports_.powerSources, ports_.processInfo),
      history_(ports_.fileManager, lastNow_),
      notifier_(std::make_shared<Notifier>(ports_.notificationCenter, ports_.mainBundle,
                                           ports_.mainQueue, ports_.dialogs)) {}

// The work is dropped when the model is gone by then.
std::function<void()> AppModel::onMain(std::function<void(AppModel&)> work) {
  return [self = QPointer<AppModel>(this), &queue = ports_.mainQueue, work = std::move(work)] {
    requireMainThread(queue);
    if (self) work(*self);
  };
}

void AppModel::start() {
  const auto refreshFor = [this](Reason reason) {
    return onMain([reason](AppModel& model) { model.refresh(reason); });
  };

  notifier_->setup();
  notifier_->onSnooze = onMain([](AppModel& model) { model.snooze(); });
  refresh(Reason::launch);
  reader_.startObserving(refreshFor(Reason::event));
  timer_ = ports_.mainQueue.every(kRefreshInterval, kRefreshTolerance,
                                  onMain([](AppModel& model) { model.tick(); }));
  observations_.push_back(ports_.processInfo.onPowerStateChange(refreshFor(Reason::event)));
  observations_.push_back(ports_.workspace.onWillSleep(onMain([](AppModel& model) {
    model.holdTicks(kSleepCalledOff, [](AppModel&) {});
    model.history_.save(model.readClock());
  })));
  observations_.push_back(ports_.workspace.onDidWake(onMain([](AppModel& model) {
    model.holdTicks(kWakeDelay, [](AppModel& later) { later.refresh(Reason::wake); });
  })));
}

// The minute timer may fall due in the seconds before the wake refresh, and would announce what the
// sleep has changed.
void AppModel::tick() {
  if (holdingTicks_) {
    tickWaits_ = true;
  } else {
    refresh(Reason::timer);
  }
}

void AppModel::holdTicks(double seconds, const std::function<void(AppModel&)>& atEnd) {
  holdingTicks_ = true;
  ports_.mainQueue.after(seconds, onMain([hold = ++holds_, atEnd](AppModel& model) {
                           atEnd(model);
                           if (hold != model.holds_) return;
                           model.holdingTicks_ = false;
                           if (std::exchange(model.tickWaits_, false)) model.refresh(Reason::timer);
                         }));
}

void AppModel::refresh(Reason reason) {
  const BatteryState snapshot = reader_.read();
  const Date now = readClock();

  trackPluggedSince(snapshot, now, reason);
  publish(state_, snapshot, &AppModel::stateChanged);
  // An event leaves it to the history whether the state moved enough for a sample.
  history_.record(snapshot, now, reason != Reason::event);
  bumpHistoryVersion();

  const Prefs prefs = Prefs::current(ports_.userDefaults);
  const bool prime = reason == Reason::launch || reason == Reason::wake;
  const bool deliverable = !prime && canDeliver(prefs, now);
  const auto alerts =
      engine_.run(snapshot, pluggedSince_, now, prefs, deliverable, prime, ports_.userDefaults);
  // "Battery is at 20%. Plug in soon." must not stay on the screen once the charger is in.
  std::erase_if(posted_, [this](AlertKind kind) {
    if (engine_.isOngoing(kind)) return false;
    withdraw(kind);
    return true;
  });
  if (prime) return;
  for (const PendingAlert& alert : alerts) deliver(alert, prefs);
}

void AppModel::snooze() {
  const Date now = readClock();
  Prefs::setSnoozeUntil(ports_.userDefaults, now + kSnoozeSeconds);
  snoozeUntil_ = Prefs::snoozeUntil(ports_.userDefaults, now);
  Q_EMIT snoozeUntilChanged();
  for (const AlertKind kind : std::exchange(posted_, {})) withdraw(kind);
}

void AppModel::cancelSnooze() {
  Prefs::setSnoozeUntil(ports_.userDefaults, std::nullopt);
  publish(snoozeUntil_, std::nullopt, &AppModel::snoozeUntilChanged);
}

void AppModel::exportHistoryCSV() {
  ports_.dialogs.runSavePanel(
      {.suggestedName = kExportName, .contentType = "text/csv", .extension = "csv"},
      [self = QPointer<AppModel>(this)](std::optional<std::string> path) {
        if (!self || !path) return;
        if (const auto failure =
                self->ports_.fileManager.write(*path, self->history_.csv(), {.isDocument = true})) {
          self->ports_.dialogs.showError({"The history could not be saved to “%1”.", {*path}},
                                         *failure);
        }
      });
}

void AppModel::resetHistory() {
  history_.removeAll();
  history_.save(readClock());
  bumpHistoryVersion();
}

void AppModel::bumpHistoryVersion() {
  ++historyVersion_;
  Q_EMIT historyVersionChanged();
}

Date AppModel::readClock() {
  const Date now = ports_.clock.now();
  const double uptime = ports_.clock.uptime();
  const double step =
      (now - std::exchange(lastNow_, now)) - (uptime - std::exchange(lastUptime_, uptime));
  if (std::abs(step) > kClockStep) followClock(step, now);
  return now;
}

// Hours that only the clock has passed are not hours on the charger, and an hour of snooze stays an
// hour.
void AppModel::followClock(double step, Date now) {
  // What the history estimated may lie ahead of a clock that was wrong.
  if (pluggedSince_)
    publish(pluggedSince_, std::min(*pluggedSince_ + step, now), &AppModel::pluggedSinceChanged);
  if (engine_.chargeLast != Date::distantPast()) engine_.chargeLast = engine_.chargeLast + step;
  history_.followClock(step, now);
  // A deadline that has expired moves too, or the clock would bring it back. One more than an hour
  // ahead, or from before the launch, was made by another clock than the one that was wrong.
  const Date before = now - step;
  const auto deadline = Prefs::snoozeUntil(ports_.userDefaults, Date{0});
  if (deadline && *deadline >= launched_ && *deadline - before <= kSnoozeSeconds) {
    Prefs::setSnoozeUntil(ports_.userDefaults, *deadline + step);
  }
  launched_ = launched_ + step;
  publish(snoozeUntil_, Prefs::snoozeUntil(ports_.userDefaults, now),
          &AppModel::snoozeUntilChanged);
}

void AppModel::trackPluggedSince(const BatteryState& snapshot, Date now, Reason reason) {
  if (!snapshot.hasBattery || !snapshot.pluggedIn) {
    publish(pluggedSince_, std::nullopt, &AppModel::pluggedSinceChanged);
    return;
  }
  if (pluggedSince_) return;
  // Only a launch or a wake can have missed the moment of plugging in.
  const bool mayHaveMissedIt = reason == Reason::launch || reason == Reason::wake;
  const auto estimate = mayHaveMissedIt ? history_.pluggedSinceEstimate(now) : std::nullopt;
  publish(pluggedSince_, estimate.value_or(now), &AppModel::pluggedSinceChanged);
}

bool AppModel::canDeliver(const Prefs& prefs, Date now) {
  if (Prefs::snoozeUntil(ports_.userDefaults, now)) return false;
  publish(snoozeUntil_, std::nullopt, &AppModel::snoozeUntilChanged);
  return !prefs.inQuietHours(now, ports_.calendar);
}

void AppModel::deliver(const PendingAlert& alert, const Prefs& prefs) {
  if (!isApplication(ports_.mainBundle)) return;
  posted_.insert(alert.kind);
  ports_.notificationCenter.add({.identifier = std::string(rawValue(alert.kind)),
                                 .content = {.title = alert.title,
                                             .body = alert.body,
                                             .categoryIdentifier = kAlertCategory,
                                             .sound = notificationSound(prefs.sound(alert.kind))}});
}

void AppModel::withdraw(AlertKind kind) {
  ports_.notificationCenter.remove(std::string(rawValue(kind)));
}

}  // namespace tollbeam
