#pragma once

#include <functional>
#include <list>
#include <memory>
#include <utility>

namespace tollbeam {

/// Keeps one callback alive: once it is destroyed, the callback is never called again, so that no
/// call reaches an object that is gone. One that is empty (default or moved from) keeps nothing.
/// Main thread only.
class [[nodiscard]] Subscription {
 public:
  /// An empty one.
  Subscription() = default;

  /// Shares the ownership of what the callback needs.
  explicit Subscription(std::shared_ptr<void> keepsAlive) : keepsAlive_(std::move(keepsAlive)) {}

 private:
  std::shared_ptr<void> keepsAlive_;
};

/// The subscribers of a port, oldest first. It may be destroyed before its subscriptions and while
/// it notifies; a callback may subscribe and unsubscribe. Main thread only.
template <typename... Args>
class Observers {
 public:
  /// What subscribers give.
  using Callback = std::function<void(Args...)>;

  /// Calls `callback` at every notification until the subscription is destroyed.
  Subscription add(Callback callback) {
    auto entry = std::make_shared<Callback>(std::move(callback));
    entries_.remove_if([](const std::weak_ptr<Callback>& e) { return e.expired(); });
    entries_.push_back(entry);
    return Subscription(std::move(entry));
  }

  /// Calls all who are subscribed now.
  void notify(Args... args) const {
    // A copy, because a callback may add to the list or destroy its owner.
    const auto entries = entries_;
    for (const auto& weak : entries) {
      if (const auto callback = weak.lock()) (*callback)(args...);
    }
  }

 private:
  std::list<std::weak_ptr<Callback>> entries_;
};

}  // namespace tollbeam
