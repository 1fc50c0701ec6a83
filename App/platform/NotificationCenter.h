// The desktop's notifications: one category of alerts with its actions, permission, posting with
// replacement, and the action that the user chose. Every failure is quiet: what cannot be shown is
// not shown.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "values/Message.h"

namespace tollbeam {

enum class AuthorizationStatus { notDetermined, denied, authorized };

struct NotificationAction {
  std::string identifier;
  Message title;
};

struct NotificationCategory {
  std::string identifier;
  std::vector<NotificationAction> actions;
};

struct NotificationSound {
  /// Absent: the desktop's own notification sound.
  std::optional<std::string> name;

  friend bool operator==(const NotificationSound&, const NotificationSound&) = default;
};

struct NotificationContent {
  Message title;
  Message body;
  std::string categoryIdentifier;
  /// Absent: silent.
  std::optional<NotificationSound> sound;

  friend bool operator==(const NotificationContent&, const NotificationContent&) = default;
};

struct NotificationRequest {
  /// A request replaces the one of the same identifier that is still on show.
  std::string identifier;
  NotificationContent content;

  friend bool operator==(const NotificationRequest&, const NotificationRequest&) = default;
};

struct PresentationOptions {
  bool banner = false;
  bool sound = false;

  friend bool operator==(const PresentationOptions&, const PresentationOptions&) = default;
};

/// Told of what happens to notifications. Its operations may be called on any thread.
class NotificationCenterDelegate {
 public:
  virtual ~NotificationCenterDelegate() = default;

  /// How to present a request that is about to be shown.
  virtual void willPresentNotification(
      const NotificationRequest& request,
      const std::function<void(PresentationOptions)>& completionHandler) = 0;

  /// The user answered: `actionIdentifier` is one of the category's, or another text for a click
  /// on the notification itself.
  virtual void didReceiveNotificationResponse(const std::string& actionIdentifier,
                                              const std::function<void()>& completionHandler) = 0;
};

class NotificationCenter {
 public:
  NotificationCenter() = default;
  NotificationCenter(const NotificationCenter&) = delete;
  NotificationCenter& operator=(const NotificationCenter&) = delete;
  virtual ~NotificationCenter() = default;

  /// Weakly held: a delegate that is gone is told nothing.
  virtual void setDelegate(std::weak_ptr<NotificationCenterDelegate> delegate) = 0;

  /// Replaces any earlier set.
  virtual void setNotificationCategories(std::vector<NotificationCategory> categories) = 0;

  /// The completion may come on any thread, never before this returns.
  virtual void getAuthorizationStatus(
      std::function<void(AuthorizationStatus)> completionHandler) = 0;

  /// Asks for permission to show alerts with sound. The completion may come on any thread, never
  /// before this returns.
  virtual void requestAuthorization(std::function<void(bool granted)> completionHandler) = 0;

  /// Shows the request at once, replacing the one of the same identifier.
  virtual void add(const NotificationRequest& request) = 0;

  /// Takes a shown or still waiting request back; nothing happens when there is none.
  virtual void remove(const std::string& identifier) = 0;
};

}  // namespace tollbeam
