#include "platform/freedesktop/power/readings/DaemonSilence.h"

#include <gtest/gtest.h>

namespace tollbeam {
namespace {

using namespace std::chrono_literals;

class DaemonSilenceTest : public testing::Test {
 protected:
  /// Contradicts the daemon from `from` on, until it is queried two minutes later.
  void contradictUntilAsked(DaemonSilence::Time from) {
    silence.compare(true, from);
    silence.compare(true, from + 119s);
    EXPECT_FALSE(silence.review(from + 119s));
    EXPECT_EQ(silence.due(), from + 120s);
    silence.compare(true, from + 120s);
    EXPECT_TRUE(silence.review(from + 120s));
  }

  DaemonSilence silence;
};

TEST_F(DaemonSilenceTest, DoesNotBeginWithoutAContradiction) {
  silence.compare(false, 0s);
  silence.compare(false, 1h);
  EXPECT_FALSE(silence.isSilent());
  EXPECT_FALSE(silence.isInDoubt());
  EXPECT_FALSE(silence.review(1h));
  EXPECT_EQ(silence.due(), std::nullopt);
}

TEST_F(DaemonSilenceTest, BeginsWhenTheDaemonDoesNotAnswerAfterAContradictionOfTwoMinutes) {
  contradictUntilAsked(10s);
  EXPECT_FALSE(silence.review(131s));  // Once is enough.
  EXPECT_EQ(silence.due(), 140s);
  silence.compare(true, 139s);
  EXPECT_FALSE(silence.isSilent());
  EXPECT_TRUE(silence.isInDoubt());
  silence.compare(true, 140s);
  EXPECT_TRUE(silence.isSilent());
  EXPECT_EQ(silence.due(), std::nullopt);
}

TEST_F(DaemonSilenceTest, NeverBeginsBesideADaemonThatAnswers) {
  DaemonSilence::Time now = 0s;
  for (int i = 0; i < 10; ++i, now += 121s) {
    contradictUntilAsked(now);
    silence.heard();
    silence.compare(true, now + 121s);
    EXPECT_FALSE(silence.isSilent());
    EXPECT_TRUE(silence.isInDoubt());
  }
}

TEST_F(DaemonSilenceTest, NeverBeginsWithoutAQuestion) {
  silence.compare(true, 0s);
  silence.compare(true, 1h);
  EXPECT_FALSE(silence.isSilent());
  EXPECT_TRUE(silence.review(1h));
  silence.compare(true, 1h);
  EXPECT_FALSE(silence.isSilent());
}

TEST_F(DaemonSilenceTest, IsCountedAnewAfterAnAgreement) {
  contradictUntilAsked(0s);
  silence.compare(false, 125s);
  EXPECT_FALSE(silence.isInDoubt());
  silence.compare(true, 131s);
  EXPECT_FALSE(silence.isSilent());
  EXPECT_EQ(silence.due(), 251s);
}

// The last values of a daemon that hangs may become true again; that is no answer.
TEST_F(DaemonSilenceTest, LastsUntilTheDaemonAnswersOrSignals) {
  contradictUntilAsked(0s);
  silence.compare(true, 130s);
  silence.compare(false, 140s);
  EXPECT_TRUE(silence.isSilent());
  silence.heard();
  EXPECT_FALSE(silence.isSilent());
  silence.compare(false, 150s);
  EXPECT_FALSE(silence.isSilent());
}

TEST_F(DaemonSilenceTest, CanHaveAnotherPatience) {
  silence = DaemonSilence({.polling = 2s, .answer = 1s});
  silence.compare(true, 0s);
  EXPECT_EQ(silence.due(), 2s);
  EXPECT_TRUE(silence.review(2s));
  silence.compare(true, 3s);
  EXPECT_TRUE(silence.isSilent());
}

}  // namespace
}  // namespace tollbeam
