#include "platform/freedesktop/notifications/DesktopNotificationCenter.h"

#include <algorithm>
#include <utility>

namespace tollbeam {

DesktopNotificationCenter::DesktopNotificationCenter(Bus& sessionBus, MainQueue& queue,
                                                     Options options)
    : queue_(queue),
      permission_(sessionBus, options.look.desktopEntry, options.patience),
      doNotDisturb_(sessionBus),
      server_(sessionBus, std::move(options.look)),
      self_(std::make_shared<DesktopNotificationCenter*>(this)) {
  server_.onSilentServer = [this, play = std::move(options.playSound)](const auto& sound) {
    if (!play) return;
    doNotDisturb_.ask([play, sound](bool on) {
      if (!on) play(sound);
    });
  };
  server_.onAction = [this](const std::string& actionIdentifier) {
    if (const auto delegate = delegate_.lock()) {
      delegate->didReceiveNotificationResponse(actionIdentifier, [] {});
    }
  };
}

void DesktopNotificationCenter::setDelegate(std::weak_ptr<NotificationCenterDelegate> delegate) {
  delegate_ = std::move(delegate);
}

void DesktopNotificationCenter::setNotificationCategories(
    std::vector<NotificationCategory> categories) {
  categories_ = std::move(categories);
}

void DesktopNotificationCenter::getAuthorizationStatus(
    std::function<void(AuthorizationStatus)> completionHandler) {
  permission_.askAgain(std::move(completionHandler));
}

void DesktopNotificationCenter::requestAuthorization(
    std::function<void(bool granted)> completionHandler) {
  permission_.request(std::move(completionHandler));
}

void DesktopNotificationCenter::add(const NotificationRequest& request) {
  const Turn turn = ++turns_[request.identifier];
  permission_.whenKnown([this, audible = withItsSound(request), turn](AuthorizationStatus status) {
    if (status != AuthorizationStatus::denied) askDelegate(audible, turn);
  });
}

// Two alerts of one refresh are one event to the user.
NotificationRequest DesktopNotificationCenter::withItsSound(NotificationRequest request) {
  if (!request.content.sound) return request;
  if (std::exchange(sounds_, true)) {
    request.content.sound.reset();
  } else {
    queue_.async([weak = std::weak_ptr(self_)] {
      if (const auto self = weak.lock()) (*self)->sounds_ = false;
    });
  }
  return request;
}

void DesktopNotificationCenter::remove(const std::string& identifier) {
  ++turns_[identifier];
  server_.withdraw(identifier);
}

void DesktopNotificationCenter::askDelegate(const NotificationRequest& request, Turn turn) {
  const auto delegate = delegate_.lock();
  if (!delegate) {
    present(request, turn, {.banner = true, .sound = true});
    return;
  }
  delegate->willPresentNotification(request, [&queue = queue_, weak = std::weak_ptr(self_), request,
                                              turn](PresentationOptions options) {
    auto answered = [weak, request, turn, options] {
      if (const auto self = weak.lock()) (*self)->present(request, turn, options);
    };
    if (queue.isCurrent()) {
      answered();
    } else {
      queue.async(std::move(answered));
    }
  });
}

void DesktopNotificationCenter::present(const NotificationRequest& request, Turn turn,
                                        PresentationOptions options) {
  if (!options.banner || turns_[request.identifier] != turn) return;
  const NotificationContent& content = request.content;
  server_.show(request.identifier, {.title = content.title,
                                    .body = content.body,
                                    .actions = actionsOf(content.categoryIdentifier),
                                    .sound = options.sound ? content.sound : std::nullopt});
}

std::vector<NotificationAction> DesktopNotificationCenter::actionsOf(
    const std::string& category) const {
  const auto found = std::find_if(categories_.begin(), categories_.end(),
                                  [&](const auto& one) { return one.identifier == category; });
  return found == categories_.end() ? std::vector<NotificationAction>{} : found->actions;
}

}  // namespace tollbeam
