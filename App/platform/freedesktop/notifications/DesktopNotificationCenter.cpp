#include "platform/freedesktop/notifications/DesktopNotificationCenter.h"

#include <utility>

#include "platform/freedesktop/notifications/DoNotDisturb.h"

namespace tollbeam {

DesktopNotificationCenter::DesktopNotificationCenter(Bus& sessionBus, MainQueue& queue,
                                                     Options options)
    : queue_(queue),
      permission_(sessionBus, options.look.desktopEntry, options.patience),
      server_(sessionBus, std::move(options.look)),
      self_(std::make_shared<DesktopNotificationCenter*>(this)) {
  server_.onSilentServer = [this, &sessionBus,
                            play = std::move(options.playSound)](const auto& sound) {
    if (!play) return;
    askDoNotDisturb(sessionBus, &server_, [play, sound](bool on) {
      if (!on) play(sound);
    });
  };
  server_.onAction = [this](const std::string& actionIdentifier) {
    if (const auto delegate = delegate_.lock()) {
      delegate->didReceiveNotificationResponse(actionIdentifier, [] {});
    }
  };
}

void DesktopNotificationCenter::add(const NotificationRequest& request) {
  NotificationRequest audible = request;
  // Two alerts of one refresh are one event to the user.
  if (request.content.sound && std::exchange(hasSoundThisTurn_, true)) {
    audible.content.sound.reset();
  } else if (request.content.sound) {
    queue_.async([weak = std::weak_ptr(self_)] {
      if (const auto self = weak.lock()) (*self)->hasSoundThisTurn_ = false;
    });
  }
  const Version version = ++versions_[request.identifier];
  permission_.whenKnown([this, audible, version](AuthorizationStatus status) {
    if (status != AuthorizationStatus::denied) askDelegate(audible, version);
  });
}

void DesktopNotificationCenter::remove(const std::string& identifier) {
  ++versions_[identifier];
  server_.withdraw(identifier);
}

void DesktopNotificationCenter::askDelegate(const NotificationRequest& request, Version version) {
  const auto delegate = delegate_.lock();
  if (!delegate) {
    present(request, version, {.banner = true, .sound = true});
    return;
  }
  delegate->willPresentNotification(request, [&queue = queue_, weak = std::weak_ptr(self_), request,
                                              version](PresentationOptions options) {
    auto answered = [weak, request, version, options] {
      if (const auto self = weak.lock()) (*self)->present(request, version, options);
    };
    if (queue.isCurrent()) {
      answered();
    } else {
      queue.async(std::move(answered));
    }
  });
}

void DesktopNotificationCenter::present(const NotificationRequest& request, Version version,
                                        PresentationOptions options) {
  if (!options.banner || versions_[request.identifier] != version) return;
  const NotificationContent& content = request.content;
  Bubble bubble{.title = content.title,
                .body = content.body,
                .actions = {},
                .sound = options.sound ? content.sound : std::nullopt};
  for (const auto& category : categories_) {
    if (category.identifier == content.categoryIdentifier) bubble.actions = category.actions;
  }
  server_.show(request.identifier, std::move(bubble));
}

}  // namespace tollbeam
