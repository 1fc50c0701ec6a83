// Notifications through the desktop's server, with the permission that the user gave in the
// desktop's settings. A request passes the permission, the delegate and the server in turn; one
// that is replaced or removed meanwhile is dropped. Requests of one turn of the main queue make one
// sound, the first one's. The end takes down what is on show. Main thread only.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/MainQueue.h"
#include "platform/NotificationCenter.h"
#include "platform/freedesktop/notifications/NotificationPermission.h"
#include "platform/freedesktop/notifications/NotificationServer.h"

namespace tollbeam {

class DesktopNotificationCenter final : public NotificationCenter {
 public:
  struct Options {
    NotificationLook look = {};
    /// Plays a sound where the server plays none, unless the user does not want to be disturbed;
    /// may be empty.
    std::function<void(const NotificationSound& sound)> playSound = {};
    /// A permission store that takes longer counts as none.
    std::chrono::milliseconds patience = std::chrono::seconds(2);
  };

  /// `sessionBus` and `queue` outlive this object.
  DesktopNotificationCenter(Bus& sessionBus, MainQueue& queue, Options options);

  void setDelegate(std::weak_ptr<NotificationCenterDelegate> delegate) override {
    delegate_ = std::move(delegate);
  }
  void setNotificationCategories(std::vector<NotificationCategory> categories) override {
    categories_ = std::move(categories);
  }
  void getAuthorizationStatus(std::function<void(AuthorizationStatus)> completionHandler) override {
    permission_.askAgain(std::move(completionHandler));
  }
  void requestAuthorization(std::function<void(bool granted)> completionHandler) override {
    permission_.request(std::move(completionHandler));
  }
  void add(const NotificationRequest& request) override;
  void remove(const std::string& identifier) override;

 private:
  using Version = std::uint64_t;

  void askDelegate(const NotificationRequest& request, Version version);
  void present(const NotificationRequest& request, Version version, PresentationOptions options);

  MainQueue& queue_;
  std::weak_ptr<NotificationCenterDelegate> delegate_;
  std::vector<NotificationCategory> categories_;
  /// Incremented when a request of the identifier is added or removed: earlier ones are dropped.
  std::map<std::string, Version> versions_;
  NotificationPermission permission_;
  NotificationServer server_;
  /// A request of this turn of the main queue has a sound.
  bool hasSoundThisTurn_ = false;
  /// Expires with this object: later answers of the delegate are dropped.
  std::shared_ptr<DesktopNotificationCenter*> self_;
};

}  // namespace tollbeam
