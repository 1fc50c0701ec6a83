#include "platform/freedesktop/Readiness.h"

#include <gtest/gtest.h>

#include "support/PrivateBus.h"

namespace tollbeam {
namespace {

using namespace std::chrono_literals;
using test::waitFor;

TEST(Readiness, EndsAtTheLimitWhenWaitingOnIsNotWorthIt) {
  Readiness readiness(10ms, 1h, [] { return false; });
  EXPECT_FALSE(readiness.isLate());
  EXPECT_TRUE(waitFor([&readiness] { return readiness.isReady(); }));
}

TEST(Readiness, WaitsOnToTheLongerLimitWhenItIsWorthIt) {
  int asked = 0;
  Readiness readiness(10ms, 100ms, [&asked] { return ++asked > 0; });
  ASSERT_TRUE(waitFor([&readiness] { return readiness.isLate(); }));
  EXPECT_FALSE(readiness.isReady());
  EXPECT_TRUE(waitFor([&readiness] { return readiness.isReady(); }));
  EXPECT_EQ(asked, 1);
}

TEST(Readiness, CanEndWhileItWaitsOn) {
  Readiness readiness(10ms, 1h, [] { return true; });
  int timesReady = 0;
  const auto ready = readiness.whenReady([&timesReady] { ++timesReady; });
  ASSERT_TRUE(waitFor([&readiness] { return readiness.isLate(); }));
  EXPECT_EQ(timesReady, 0);
  readiness.markReady();
  EXPECT_EQ(timesReady, 1);
  int timesLate = 0;
  const auto late = readiness.whenReady([&timesLate] { ++timesLate; });
  EXPECT_TRUE(waitFor([&timesLate] { return timesLate == 1; }));
}

}  // namespace
}  // namespace tollbeam
