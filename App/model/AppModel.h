// The driver of the whole program: reads the battery, tracks since when the machine is plugged in,
// records the history, asks the alert engine what is due and posts it, and publishes what the views
// show. Views observe the four published values and call the actions; they never talk to the
// reader, the engine or the notifier. Main thread only; a callback that arrives on another thread
// stops the process.
#pragma once

#include <QObject>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <type_traits>
#include <vector>

#include "alerts/AlertEngine.h"
#include "alerts/Notifier.h"
#include "battery/BatteryReader.h"
#include "battery/BatteryState.h"
#include "history/HistoryStore.h"
#include "platform/Calendar.h"
#include "platform/Clock.h"
#include "platform/Dialogs.h"
#include "platform/FileManager.h"
#include "platform/MainBundle.h"
#include "platform/MainQueue.h"
#include "platform/NotificationCenter.h"
#include "platform/PowerSources.h"
#include "platform/ProcessInfo.h"
#include "platform/Subscription.h"
#include "platform/UserDefaults.h"
#include "platform/Workspace.h"
#include "values/Date.h"

namespace tollbeam {

class AppModel final : public QObject {
  Q_OBJECT

 public:
  enum class Reason {
    launch,  ///< once, from `start`
    event,   ///< a power-source or Low Power Mode change, or the popover about to open
    timer,   ///< every 60 seconds
    wake,    ///< 3 seconds after the machine woke
  };

  /// The ports that the model uses. They must outlive it.
  struct Ports {
    MainQueue& mainQueue;
    Clock& clock;
    Calendar& calendar;
    FileManager& fileManager;
    UserDefaults& userDefaults;
    MainBundle& mainBundle;
    PowerSources& powerSources;
    ProcessInfo& processInfo;
    Workspace& workspace;
    NotificationCenter& notificationCenter;
    Dialogs& dialogs;
  };

  /// Loads the history.
  explicit AppModel(const Ports& ports);

  /// The last snapshot; the empty one before the first refresh.
  [[nodiscard]] const BatteryState& state() const { return state_; }
  /// Since when the machine is on external power with a battery present; else absent.
  [[nodiscard]] std::optional<Date> pluggedSince() const { return pluggedSince_; }
  /// Grows whenever the history may have changed.
  [[nodiscard]] std::int64_t historyVersion() const { return historyVersion_; }
  /// The snooze deadline for display; cleared by the first delivering refresh after it.
  [[nodiscard]] std::optional<Date> snoozeUntil() const { return snoozeUntil_; }

  [[nodiscard]] HistoryStore& history() { return history_; }
  [[nodiscard]] Notifier& notifier() { return *notifier_; }

  /// Sets up the notifications, runs the first refresh, and starts the observations and the timer.
  /// To be called once.
  void start();

  /// One refresh cycle.
  void refresh(Reason reason);

  /// Holds all alerts back for one hour from now, and removes those on show.
  void snooze();

  /// Lets alerts through again.
  void cancelSnooze();

  /// Asks for a file and writes the history there as CSV.
  void exportHistoryCSV();

  /// Empties the history, its file included.
  void resetHistory();

 Q_SIGNALS:
  void stateChanged();
  void pluggedSinceChanged();
  void historyVersionChanged();
  void snoozeUntilChanged();

 private:
  /// Stores a published value; emits `changed` if it is another.
  template <typename T>
  void publish(T& held, std::type_identity_t<T> value, void (AppModel::*changed)());
  void bumpHistoryVersion();

  /// The wall clock's time. Follows a clock that was set since the last call.
  Date readClock();
  /// Moves what the model remembers by `step` seconds, the step of a clock that now shows `now`.
  void followClock(double step, Date now);

  /// `work` on this model, as a callback that stops the process on any thread but the main one.
  [[nodiscard]] std::function<void()> onMain(std::function<void(AppModel&)> work);
  /// The minute timer fell due: refreshes, now or when ticks are no longer held back.
  void tick();
  /// Holds ticks back for `seconds`, unless a later call takes over, and runs `atEnd` then.
  void holdTicks(double seconds, const std::function<void(AppModel&)>& atEnd);

  void trackPluggedSince(const BatteryState& snapshot, Date now, Reason reason);
  [[nodiscard]] bool canDeliver(const Prefs& prefs, Date now);
  void deliver(const PendingAlert& alert, const Prefs& prefs);
  void withdraw(AlertKind kind);

  const Ports ports_;
  Date lastNow_;
  double lastUptime_;
  /// When the model was made, by the clock as it is set now.
  Date launched_;
  BatteryState state_;
  std::optional<Date> pluggedSince_;
  std::int64_t historyVersion_ = 0;
  std::optional<Date> snoozeUntil_;
  BatteryReader reader_;
  HistoryStore history_;
  std::shared_ptr<Notifier> notifier_;
  AlertEngine engine_;
  std::set<AlertKind> posted_;
  /// Counts how often ticks were held back; only the end of the newest hold releases them.
  int holds_ = 0;
  bool holdingTicks_ = false;
  bool tickWaits_ = false;
  Subscription timer_;
  std::vector<Subscription> observations_;
};

}  // namespace tollbeam
