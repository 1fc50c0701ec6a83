#include "platform/UserDefaults.h"

#include <gtest/gtest.h>

#include <limits>

#include "recorded/RecordedPlatform.h"

namespace tollbeam {
namespace {

class UserDefaultsTest : public testing::Test {
 protected:
  void hold(Value value) { store.values.insert_or_assign("k", std::move(value)); }

  RecordedUserDefaults store;
};

TEST_F(UserDefaultsTest, ReadsAbsentKeysAsFalseZeroAndAbsent) {
  EXPECT_FALSE(store.boolForKey("k"));
  EXPECT_EQ(store.integerForKey("k"), 0);
  EXPECT_EQ(store.doubleForKey("k"), 0);
  EXPECT_FALSE(store.stringForKey("k"));
}

TEST_F(UserDefaultsTest, RegisteredDefaultsAnswerWithoutBeingWritten) {
  store.registerDefaults({{"k", 80}});
  EXPECT_EQ(store.integerForKey("k"), 80);
  EXPECT_TRUE(store.values.empty());
  EXPECT_EQ(store.writes, 0);
  hold(75);
  EXPECT_EQ(store.integerForKey("k"), 75);
}

TEST_F(UserDefaultsTest, ReadsNumbersAsFlags) {
  hold(0);
  EXPECT_FALSE(store.boolForKey("k"));
  hold(-3);
  EXPECT_TRUE(store.boolForKey("k"));
  hold(0.25);
  EXPECT_TRUE(store.boolForKey("k"));
}

TEST_F(UserDefaultsTest, ReadsYesTrueAndOneInAnyCaseAsTrueAndOtherTextAsFalse) {
  for (const char* text : {"YES", "yes", "True", "true", "1"}) {
    hold(text);
    EXPECT_TRUE(store.boolForKey("k")) << text;
  }
  for (const char* text : {"", "NO", "2", "y", "on", "yes ", "truest"}) {
    hold(text);
    EXPECT_FALSE(store.boolForKey("k")) << text;
  }
}

TEST_F(UserDefaultsTest, ReadsFlagsAsOneAndZero) {
  hold(true);
  EXPECT_EQ(store.integerForKey("k"), 1);
  EXPECT_EQ(store.doubleForKey("k"), 1.0);
  hold(false);
  EXPECT_EQ(store.integerForKey("k"), 0);
}

TEST_F(UserDefaultsTest, TruncatesFractions) {
  hold(79.9);
  EXPECT_EQ(store.integerForKey("k"), 79);
  EXPECT_EQ(store.doubleForKey("k"), 79.9);
  hold(-79.9);
  EXPECT_EQ(store.integerForKey("k"), -79);
}

TEST_F(UserDefaultsTest, ClampsNumbersToTheSixtyFourBitRange) {
  hold(1e30);
  EXPECT_EQ(store.integerForKey("k"), std::numeric_limits<std::int64_t>::max());
  hold(-1e30);
  EXPECT_EQ(store.integerForKey("k"), std::numeric_limits<std::int64_t>::min());
  hold("99999999999999999999");
  EXPECT_EQ(store.integerForKey("k"), std::numeric_limits<std::int64_t>::max());
  hold("-99999999999999999999");
  EXPECT_EQ(store.integerForKey("k"), std::numeric_limits<std::int64_t>::min());
}

TEST_F(UserDefaultsTest, ReadsTextByItsLeadingNumber) {
  hold("85 percent");
  EXPECT_EQ(store.integerForKey("k"), 85);
  hold("  +7.9x");
  EXPECT_EQ(store.integerForKey("k"), 7);
  EXPECT_EQ(store.doubleForKey("k"), 7.9);
  hold("-12");
  EXPECT_EQ(store.integerForKey("k"), -12);
  for (const char* text : {"percent", "", "inf", "nan", "-", "+-5", "   "}) {
    hold(text);
    EXPECT_EQ(store.integerForKey("k"), 0) << text;
    EXPECT_EQ(store.doubleForKey("k"), 0) << text;
  }
}

TEST_F(UserDefaultsTest, ReadsListsAndDictionariesAsFalseAndZero) {
  for (Value value : {Value(List{1}), Value(Dictionary{{"a", 1}})}) {
    hold(value);
    EXPECT_FALSE(store.boolForKey("k"));
    EXPECT_EQ(store.integerForKey("k"), 0);
    EXPECT_EQ(store.doubleForKey("k"), 0);
    EXPECT_FALSE(store.stringForKey("k"));
  }
}

TEST_F(UserDefaultsTest, AValueOfTheWrongKindHidesTheRegisteredDefault) {
  store.registerDefaults({{"k", 80}});
  hold("none of your business");
  EXPECT_EQ(store.integerForKey("k"), 0);
}

}  // namespace
}  // namespace tollbeam
