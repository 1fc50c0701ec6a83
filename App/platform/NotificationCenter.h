#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Port.h"
#include "values/Message.h"

namespace tollbeam {

/// Whether the user lets the program show notifications.
enum class AuthorizationStatus {
  notDetermined,  ///< the user was never asked
  denied,         ///< the user said no
  authorized      ///< the user said yes, or the desktop lets every program
};

/// A button of a notification.
struct NotificationAction {
  std::string identifier;  ///< what the delegate hears when the user presses it
  Message title;           ///< what it says
};

/// A kind of notification, with the buttons of each.
struct NotificationCategory {
  std::string identifier;                   ///< named by the contents of this kind
  std::vector<NotificationAction> actions;  ///< in their order on the screen
};

/// The sound of a notification.
struct NotificationSound {
  /// A name as `SystemSounds` takes it; absent: the desktop's own notification sound.
  std::optional<std::string> name;

  /// Field by field.
  friend bool operator==(const NotificationSound&, const NotificationSound&) = default;
};

/// What a notification shows.
struct NotificationContent {
  Message title;                           ///< one line
  Message body;                            ///< one sentence or two
  std::string categoryIdentifier;          ///< without such a category it has no buttons
  std::optional<NotificationSound> sound;  ///< absent: silent

  /// Field by field.
  friend bool operator==(const NotificationContent&, const NotificationContent&) = default;
};

/// A notification to show.
struct NotificationRequest {
  std::string identifier;       ///< it replaces the one on show with the same identifier
  NotificationContent content;  ///< what to show

  /// Field by field.
  friend bool operator==(const NotificationRequest&, const NotificationRequest&) = default;
};

/// How to present a request.
struct PresentationOptions {
  bool banner = false;  ///< on the screen
  bool sound = false;   ///< with its sound

  /// Field by field.
  friend bool operator==(const PresentationOptions&, const PresentationOptions&) = default;
};

/// Hears what happens to notifications. Its operations may be called on any thread; each calls its
/// `completionHandler` once.
class NotificationCenterDelegate {
 public:
  virtual ~NotificationCenterDelegate() = default;

  /// Called before a request is shown; answers how to present it.
  virtual void willPresentNotification(
      const NotificationRequest& request,
      const std::function<void(PresentationOptions)>& completionHandler) = 0;

  /// Called when the user answered: `actionIdentifier` is that of the pressed button, or another
  /// text for a click on the notification itself.
  virtual void didReceiveNotificationResponse(const std::string& actionIdentifier,
                                              const std::function<void()>& completionHandler) = 0;
};

/// The desktop's notifications. A failure is quiet: what cannot be shown is not shown.
class NotificationCenter : public Port {
 public:
  /// Held weakly; one that is gone hears nothing.
  virtual void setDelegate(std::weak_ptr<NotificationCenterDelegate> delegate) = 0;

  /// Replaces any earlier set.
  virtual void setNotificationCategories(std::vector<NotificationCategory> categories) = 0;

  /// Answers whether notifications may be shown. The completion may come on any thread, never
  /// before this returns.
  virtual void getAuthorizationStatus(
      std::function<void(AuthorizationStatus)> completionHandler) = 0;

  /// Asks the user for permission to show notifications with sound. The completion may come on any
  /// thread, never before this returns.
  virtual void requestAuthorization(std::function<void(bool granted)> completionHandler) = 0;

  /// Shows the request at once, in the place of the one with the same identifier.
  virtual void add(const NotificationRequest& request) = 0;

  /// Takes a request back that is on show or still waits; does nothing when there is none.
  virtual void remove(const std::string& identifier) = 0;
};

}  // namespace tollbeam
