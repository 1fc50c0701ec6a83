// Callbacks with owners. Whoever subscribes keeps the Subscription; when it dies the callback is
// never called again, so nobody calls into an object that is gone. Main thread only.
#pragma once

#include <functional>
#include <list>
#include <memory>
#include <utility>

namespace tollbeam {

/// Keeps one callback alive. An empty one (default or moved from) keeps nothing.
class [[nodiscard]] Subscription {
 public:
  Subscription() = default;
  explicit Subscription(std::shared_ptr<void> keepsAlive) : keepsAlive_(std::move(keepsAlive)) {}

 private:
  std::shared_ptr<void> keepsAlive_;
};

/// The list that a port keeps of its subscribers, oldest first. It may be destroyed before its
/// subscriptions and while it notifies; a callback may subscribe and unsubscribe.
template <typename... Args>
class Observers {
 public:
  using Callback = std::function<void(Args...)>;

  Subscription add(Callback callback) {
    auto entry = std::make_shared<Callback>(std::move(callback));
    entries_.remove_if([](const std::weak_ptr<Callback>& e) { return e.expired(); });
    entries_.push_back(entry);
    return Subscription(std::move(entry));
  }

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
