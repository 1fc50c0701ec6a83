// Connects the model to the desktop's notifications: says whether they can work at all, registers
// the one category with its snooze action, explains before the desktop asks for permission, and
// calls back for a tap on "Snooze 1 hour". Held by a shared pointer, because the notification
// centre and the main queue hold it weakly.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/Dialogs.h"
#include "platform/MainBundle.h"
#include "platform/MainQueue.h"
#include "platform/NotificationCenter.h"

namespace tollbeam {

inline constexpr const char* kAlertCategory = "TB_ALERT";
inline constexpr const char* kSnoozeAction = "SNOOZE";

class Notifier final : public NotificationCenterDelegate,
                       public std::enable_shared_from_this<Notifier> {
 public:
  Notifier(NotificationCenter& center, const MainBundle& bundle, MainQueue& mainQueue,
           Dialogs& dialogs);
  Notifier(const Notifier&) = delete;
  Notifier& operator=(const Notifier&) = delete;

  /// Called on the main thread once per tap on the snooze action.
  std::function<void()> onSnooze;

  /// False unless the program runs from an application bundle; everything else here does nothing
  /// then.
  [[nodiscard]] bool available() const;

  /// Registers the category and becomes the notification centre's delegate.
  void setup();

  /// Explains and asks for permission if the user was never asked. May be called again until the
  /// user has answered the desktop's own question.
  void requestIfNeeded();

  void willPresentNotification(
      const NotificationRequest& request,
      const std::function<void(PresentationOptions)>& completionHandler) override;
  void didReceiveNotificationResponse(const std::string& actionIdentifier,
                                      const std::function<void()>& completionHandler) override;

 private:
  void askForPermission();
  void requestAuthorization();

  NotificationCenter& center_;
  const MainBundle& bundle_;
  MainQueue& mainQueue_;
  Dialogs& dialogs_;
  /// From our own question until the desktop has the answer to its own.
  bool asking_ = false;
};

}  // namespace tollbeam
