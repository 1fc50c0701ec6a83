// Every port answered from recorded data: descriptions that were set, files in memory, dialogs with
// prepared answers. Public fields record what the program did.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/Appearance.h"
#include "platform/Calendar.h"
#include "platform/Compositor.h"
#include "platform/Dialogs.h"
#include "platform/FileManager.h"
#include "platform/LoginItem.h"
#include "platform/MainBundle.h"
#include "platform/NotificationCenter.h"
#include "platform/Platform.h"
#include "platform/PowerSources.h"
#include "platform/ProcessInfo.h"
#include "platform/SystemSounds.h"
#include "platform/UserDefaults.h"
#include "platform/Workspace.h"
#include "recorded/ManualClock.h"

namespace tollbeam {

class RecordedPowerSources final : public PowerSources {
 public:
  [[nodiscard]] std::optional<List> descriptions() const override { return table; }
  [[nodiscard]] std::optional<Dictionary> smartBattery() const override {
    ++smartBatteryReads;
    return properties;
  }
  std::optional<Subscription> observe(std::function<void()> changed) override;

  std::optional<List> table;
  std::optional<Dictionary> properties;
  bool observable = true;
  int observations = 0;
  mutable int smartBatteryReads = 0;
  Observers<> changes;
};

class RecordedProcessInfo final : public ProcessInfo {
 public:
  [[nodiscard]] bool isLowPowerModeEnabled() const override { return lowPowerMode; }
  Subscription onPowerStateChange(std::function<void()> changed) override {
    return changes.add(std::move(changed));
  }

  bool lowPowerMode = false;
  Observers<> changes;
};

class RecordedAppearance final : public Appearance {
 public:
  [[nodiscard]] bool highContrast() const override { return contrast; }
  [[nodiscard]] bool animations() const override { return animated; }
  Subscription onChange(std::function<void()> changed) override {
    return changes.add(std::move(changed));
  }

  bool contrast = false;
  bool animated = true;
  Observers<> changes;
};

class RecordedCompositor final : public Compositor {
 public:
  [[nodiscard]] bool isRunning() const override { return running; }
  void setShadow(std::uintptr_t window, const WindowShadow& shadow) override {
    shadows.emplace_back(window, shadow);
  }

  bool running = false;
  std::vector<std::pair<std::uintptr_t, WindowShadow>> shadows;
};

class RecordedWorkspace final : public Workspace {
 public:
  Subscription onWillSleep(std::function<void()> callback) override {
    return willSleep.add(std::move(callback));
  }
  Subscription onDidWake(std::function<void()> callback) override {
    return didWake.add(std::move(callback));
  }

  Observers<> willSleep;
  Observers<> didWake;
};

class RecordedUserDefaults final : public UserDefaults {
 public:
  void set(std::string_view key, Value value) override;
  Subscription onChange(std::function<void()> changed) override {
    return changes.add(std::move(changed));
  }

  Dictionary values;
  int writes = 0;
  Observers<> changes;

 protected:
  [[nodiscard]] const Value* stored(std::string_view key) const override {
    return find(values, key);
  }
};

/// Completions come from the main queue, as a desktop's do.
class RecordedNotificationCenter final : public NotificationCenter {
 public:
  explicit RecordedNotificationCenter(MainQueue& queue) : queue_(queue) {}

  void setDelegate(std::weak_ptr<NotificationCenterDelegate> newDelegate) override {
    delegate = std::move(newDelegate);
  }
  void setNotificationCategories(std::vector<NotificationCategory> newCategories) override {
    categories = std::move(newCategories);
  }
  void getAuthorizationStatus(std::function<void(AuthorizationStatus)> completion) override {
    ++statusQuestions;
    queue_.async([this, completion = std::move(completion)] { completion(status); });
  }
  void requestAuthorization(std::function<void(bool)> completion) override {
    ++authorizationRequests;
    queue_.async([this, completion = std::move(completion)] {
      completion(status != AuthorizationStatus::denied);
    });
  }
  void add(const NotificationRequest& request) override { posted.push_back(request); }
  void remove(const std::string& identifier) override { removed.push_back(identifier); }

  AuthorizationStatus status = AuthorizationStatus::authorized;
  int statusQuestions = 0;
  int authorizationRequests = 0;
  std::weak_ptr<NotificationCenterDelegate> delegate;
  std::vector<NotificationCategory> categories;
  std::vector<NotificationRequest> posted;
  std::vector<std::string> removed;

 private:
  MainQueue& queue_;
};

class RecordedMainBundle final : public MainBundle {
 public:
  [[nodiscard]] std::string pathExtension() const override { return extension; }
  [[nodiscard]] std::optional<std::string> identifier() const override { return id; }

  std::string extension = "app";
  std::optional<std::string> id = "org.tollbeam.Tollbeam";
};

class RecordedFileManager final : public FileManager {
 public:
  [[nodiscard]] std::optional<std::string> applicationSupportDirectory() const override {
    return support;
  }
  void createDirectory(const std::string& path) override { created.push_back(path); }
  [[nodiscard]] std::optional<std::string> contents(const std::string& path) const override;
  /// Equal bytes are the same version, unless the file is `touched`.
  [[nodiscard]] std::optional<FileVersion> version(const std::string& path) const override;
  std::optional<std::string> write(const std::string& path, std::string_view bytes,
                                   const WriteOptions& options = {}) override;
  void removeKept(const std::string& path, const std::string& suffix) override {
    files.erase(path + suffix);
  }

  std::optional<std::string> support = "/support";
  std::vector<std::string> created;
  std::map<std::string, std::string> files;
  /// Files that exist and cannot be read.
  std::set<std::string> unreadable;
  /// How often a file's attributes were changed.
  std::map<std::string, int> touched;
  /// Files that were written as documents.
  std::set<std::string> documents;
  /// Every write fails with this while it is present.
  std::optional<std::string> failure;
  /// What another program puts in the place of every file as soon as it is written.
  std::optional<std::string> replacement;
  int writes = 0;
};

/// A fixed offset from UTC.
class RecordedCalendar final : public Calendar {
 public:
  [[nodiscard]] TimeOfDay timeOfDay(Date instant) const override;
  [[nodiscard]] CalendarDay day(Date instant) const override;
  [[nodiscard]] std::optional<Date> startOfDay(CalendarDay day) const override;
  [[nodiscard]] std::optional<Date> instant(CalendarDay day, TimeOfDay time) const override;

  double secondsEastOfUtc = 0;
};

class RecordedDialogs final : public Dialogs {
 public:
  void runAlert(AlertDialog alert,
                std::function<void(std::optional<std::size_t>)> answer) override {
    alerts.push_back(std::move(alert));
    alertAnswers.push_back(std::move(answer));
  }
  void runSavePanel(SavePanel panel,
                    std::function<void(std::optional<std::string>)> answer) override {
    savePanels.push_back(std::move(panel));
    savePanelAnswers.push_back(std::move(answer));
  }
  void showError(const Message& message, const std::string& reason) override {
    errors.emplace_back(message, reason);
  }

  std::vector<AlertDialog> alerts;
  std::vector<std::function<void(std::optional<std::size_t>)>> alertAnswers;
  std::vector<SavePanel> savePanels;
  std::vector<std::function<void(std::optional<std::string>)>> savePanelAnswers;
  std::vector<std::pair<Message, std::string>> errors;
};

class RecordedSystemSounds final : public SystemSounds {
 public:
  void play(const std::string& name) override { played.push_back(name); }
  void playDefault() override { ++defaultsPlayed; }

  std::vector<std::string> played;
  int defaultsPlayed = 0;
};

class RecordedLoginItem final : public LoginItem {
 public:
  std::optional<Message> registerItem() override { return become(Status::enabled); }
  std::optional<Message> unregisterItem() override { return become(Status::notRegistered); }
  [[nodiscard]] Status status() const override { return current; }

  Status current = Status::notRegistered;
  /// Every change fails with this while it is present.
  std::optional<Message> failure;

 private:
  std::optional<Message> become(Status wanted) {
    if (!failure) current = wanted;
    return failure;
  }
};

/// All ports, with the clock at `now`.
struct RecordedPlatform {
  explicit RecordedPlatform(Date now) : clock(now) {}

  ManualClock clock;
  ManualQueue mainQueue{clock};
  RecordedCalendar calendar;
  RecordedFileManager fileManager;
  RecordedUserDefaults userDefaults;
  RecordedMainBundle mainBundle;
  RecordedPowerSources powerSources;
  RecordedProcessInfo processInfo;
  RecordedWorkspace workspace;
  RecordedNotificationCenter notificationCenter{mainQueue};
  RecordedDialogs dialogs;
  RecordedSystemSounds systemSounds;
  RecordedLoginItem loginItem;
  RecordedAppearance appearance;
  RecordedCompositor compositor;

  [[nodiscard]] Platform ports();
};

}  // namespace tollbeam
