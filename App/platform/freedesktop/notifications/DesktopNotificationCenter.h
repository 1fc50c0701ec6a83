// Notifications through the desktop's server, with the permission that the user gave in the
// desktop's settings. A request goes through three gates: permission, the delegate, the server; one
// that was replaced or removed on the way is dropped. Requests that come together make one sound,
// the first one's. Bubbles that are on show at the end are taken down. Main thread only.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/MainQueue.h"
#include "platform/NotificationCenter.h"
#include "platform/freedesktop/notifications/DoNotDisturb.h"
#include "platform/freedesktop/notifications/NotificationPermission.h"
#include "platform/freedesktop/notifications/NotificationServer.h"

namespace tollbeam {

class DesktopNotificationCenter final : public NotificationCenter {
 public:
  struct Options {
    NotificationLook look = {};
    /// Plays a sound where the server plays none and may be disturbed; may be empty.
    std::function<void(const NotificationSound& sound)> playSound = {};
    /// How long a permission store may take to answer.
    std::chrono::milliseconds patience = std::chrono::seconds(2);
  };

  /// `sessionBus` and `queue` outlive this object.
  DesktopNotificationCenter(Bus& sessionBus, MainQueue& queue, Options options);

  void setDelegate(std::weak_ptr<NotificationCenterDelegate> delegate) override;
  void setNotificationCategories(std::vector<NotificationCategory> categories) override;
  void getAuthorizationStatus(std::function<void(AuthorizationStatus)> completionHandler) override;
  void requestAuthorization(std::function<void(bool granted)> completionHandler) override;
  void add(const NotificationRequest& request) override;
  void remove(const std::string& identifier) override;

 private:
  using Turn = std::uint64_t;

  [[nodiscard]] NotificationRequest withItsSound(NotificationRequest request);
  void askDelegate(const NotificationRequest& request, Turn turn);
  void present(const NotificationRequest& request, Turn turn, PresentationOptions options);
  [[nodiscard]] std::vector<NotificationAction> actionsOf(const std::string& category) const;

  MainQueue& queue_;
  std::weak_ptr<NotificationCenterDelegate> delegate_;
  std::vector<NotificationCategory> categories_;
  /// Which request of an identifier is the newest; an older one has lost its place.
  std::map<std::string, Turn> turns_;
  NotificationPermission permission_;
  DoNotDisturb doNotDisturb_;
  NotificationServer server_;
  /// A request of this turn of the main queue has a sound.
  bool sounds_ = false;
  /// Gone with this object: what the delegate answers later finds nobody.
  std::shared_ptr<DesktopNotificationCenter*> self_;
};

}  // namespace tollbeam
