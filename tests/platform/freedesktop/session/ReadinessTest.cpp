#include "platform/freedesktop/session/Readiness.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "support/PrivateBus.h"

namespace tollbeam {
namespace {

using namespace std::chrono_literals;
using test::waitFor;

TEST(Readiness, IsAnnouncedWhenItIsMarked) {
  Readiness readiness(1h);
  int calls = 0;
  const auto waiting = readiness.whenReady([&calls] { ++calls; });
  EXPECT_FALSE(readiness.isReady());
  EXPECT_EQ(calls, 0);
  readiness.markReady();
  EXPECT_TRUE(readiness.isReady());
  EXPECT_EQ(calls, 1);
}

TEST(Readiness, IsAnnouncedAtItsLimit) {
  Readiness readiness(1ms);
  bool called = false;
  const auto waiting = readiness.whenReady([&called] { called = true; });
  EXPECT_FALSE(readiness.isReady());
  EXPECT_TRUE(waitFor([&called] { return called; }));
  EXPECT_TRUE(readiness.isReady());
}

TEST(Readiness, IsAnnouncedOnceOnly) {
  Readiness readiness(1ms);
  int calls = 0;
  const auto early = readiness.whenReady([&calls] { ++calls; });
  readiness.markReady();
  // Neither a late subscriber nor a limit that has passed repeats the announcement.
  bool late = false;
  const auto waiting = readiness.whenReady([&late] { late = true; });
  ASSERT_TRUE(waitFor([&late] { return late; }));
  readiness.markReady();
  EXPECT_EQ(calls, 1);
}

TEST(Readiness, IsAnnouncedToALateSubscriberAfterTheCall) {
  Readiness readiness(1h);
  readiness.markReady();
  bool called = false;
  const auto waiting = readiness.whenReady([&called] { called = true; });
  EXPECT_FALSE(called);
  EXPECT_TRUE(waitFor([&called] { return called; }));
}

TEST(Readiness, IsNotAnnouncedAfterTheEndOfTheSubscription) {
  Readiness readiness(1h);
  int calls = 0;
  auto gone = readiness.whenReady([&calls] { ++calls; });
  gone = Subscription();
  readiness.markReady();
  EXPECT_EQ(calls, 0);
}

TEST(Readiness, IsAnnouncedInTheOrderOfSubscription) {
  Readiness readiness(1h);
  std::vector<int> order;
  const auto first = readiness.whenReady([&order] { order.push_back(1); });
  const auto second = readiness.whenReady([&order] { order.push_back(2); });
  readiness.markReady();
  EXPECT_EQ(order, (std::vector{1, 2}));
}

TEST(Readiness, MayBeDestroyedInItsOwnCallback) {
  auto readiness = std::make_unique<Readiness>(1ms);
  const auto waiting = readiness->whenReady([&readiness] { readiness.reset(); });
  EXPECT_TRUE(waitFor([&readiness] { return readiness == nullptr; }));
}

}  // namespace
}  // namespace tollbeam
