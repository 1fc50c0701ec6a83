#include "platform/freedesktop/session/QtMainQueue.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <memory>
#include <thread>
#include <vector>

#include "support/PrivateBus.h"

namespace tollbeam {

namespace {

using test::waitFor;

double now() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

}  // namespace

TEST(QtMainQueue, KnowsItsThread) {
  const QtMainQueue queue;
  EXPECT_TRUE(queue.isCurrent());
  bool elsewhere = true;
  std::thread([&] { elsewhere = queue.isCurrent(); }).join();
  EXPECT_FALSE(elsewhere);
}

TEST(QtMainQueue, RunsWorkLaterInOrder) {
  QtMainQueue queue;
  std::vector<int> ran;
  queue.async([&] { ran.push_back(1); });
  queue.async([&] { ran.push_back(2); });
  EXPECT_TRUE(ran.empty());
  EXPECT_TRUE(waitFor([&] { return ran.size() == 2; }));
  EXPECT_EQ(ran, (std::vector{1, 2}));
}

TEST(QtMainQueue, TakesWorkFromAnyThread) {
  QtMainQueue queue;
  bool onMainThread = false;
  std::thread([&] { queue.async([&] { onMainThread = queue.isCurrent(); }); }).join();
  EXPECT_TRUE(waitFor([&] { return onMainThread; }));
}

TEST(QtMainQueue, RunsWorkOnceAndNeverEarly) {
  QtMainQueue queue;
  const double start = now();
  std::vector<double> due;
  const auto run = [&](double seconds) {
    due.push_back(seconds);
    EXPECT_GE(now() - start, seconds);
  };
  queue.after(0.35, [&] { run(0.35); });
  queue.after(0.05, [&] { run(0.05); });
  EXPECT_TRUE(waitFor([&] { return due.size() == 2; }));
  EXPECT_EQ(due, (std::vector{0.05, 0.35}));
}

TEST(QtMainQueue, OverdueWorkRunsAfterTheCall) {
  QtMainQueue queue;
  int ran = 0;
  queue.after(0, [&] { ++ran; });
  queue.after(-5, [&] { ++ran; });
  queue.after(std::nan(""), [&] { ++ran; });
  EXPECT_EQ(ran, 0);
  EXPECT_TRUE(waitFor([&] { return ran == 3; }));
}

TEST(QtMainQueue, DistantWorkDoesNotRunNow) {
  QtMainQueue queue;
  bool distant = false;
  queue.after(1e300, [&] { distant = true; });
  bool soon = false;
  queue.after(0.1, [&] { soon = true; });
  EXPECT_TRUE(waitFor([&] { return soon; }));
  EXPECT_FALSE(distant);
}

TEST(QtMainQueue, RepeatsWithoutDrift) {
  QtMainQueue queue;
  const double start = now();
  std::vector<double> at;
  const auto timer = queue.every(0.05, 0, [&] { at.push_back(now() - start); });
  EXPECT_TRUE(waitFor([&] { return at.size() == 10; }));
  for (std::size_t i = 0; i < at.size(); ++i) EXPECT_GE(at[i], 0.05 * static_cast<double>(i + 1));
}

TEST(QtMainQueue, WithToleranceFiresAtFullSeconds) {
  QtMainQueue queue;
  const double start = now();
  std::vector<double> at;
  const auto timer = queue.every(0.5, 1, [&] { at.push_back(now()); });
  EXPECT_TRUE(waitFor([&] { return at.size() == 2; }));
  double due = start;
  for (const double instant : at) {
    due += 0.5;
    EXPECT_GE(instant, std::ceil(due));
  }
}

TEST(QtMainQueue, DoesNotMakeUpForFiringsThatABusyThreadMissed) {
  QtMainQueue queue;
  int fired = 0;
  const auto timer = queue.every(0.02, 0, [&] {
    // Ten firings long.
    if (++fired == 1) std::this_thread::sleep_for(std::chrono::milliseconds(200));
  });
  const double start = now();
  EXPECT_TRUE(waitFor([&] { return fired == 5; }));
  EXPECT_GE(now() - start, 0.2 + 3 * 0.02);
}

TEST(QtMainQueue, StopsAtTheEndOfTheSubscription) {
  QtMainQueue queue;
  int ended = 0;
  int going = 0;
  auto timer = queue.every(0.01, 0, [&] { ++ended; });
  const auto other = queue.every(0.01, 0, [&] { ++going; });
  EXPECT_TRUE(waitFor([&] { return ended > 0; }));
  timer = {};
  const int before = ended;
  going = 0;
  EXPECT_TRUE(waitFor([&] { return going == 5; }));
  EXPECT_EQ(ended, before);
}

TEST(QtMainQueue, ASubscriptionMayEndInItsOwnWork) {
  QtMainQueue queue;
  int fired = 0;
  auto subscription = std::make_unique<Subscription>();
  auto witness = std::make_shared<int>(0);
  *subscription = queue.every(0.01, 0, [&, witness] {
    subscription.reset();
    fired += 1 + *witness;
  });
  const std::weak_ptr<int> captured = witness;
  witness.reset();
  EXPECT_TRUE(waitFor([&] { return captured.expired(); }));
  EXPECT_EQ(fired, 1);
}

TEST(QtMainQueue, SubscriptionsMayOutliveTheQueue) {
  auto queue = std::make_unique<QtMainQueue>();
  int fired = 0;
  const auto timer = queue->every(0.01, 0, [&] { ++fired; });
  queue->after(0.01, [&] { ++fired; });
  queue->async([&] { ++fired; });
  queue.reset();
  QtMainQueue other;
  bool later = false;
  other.after(0.1, [&] { later = true; });
  EXPECT_TRUE(waitFor([&] { return later; }));
  EXPECT_EQ(fired, 0);
}

}  // namespace tollbeam
