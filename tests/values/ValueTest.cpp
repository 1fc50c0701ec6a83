#include "values/Value.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <type_traits>

namespace tollbeam {
namespace {

TEST(Value, KeepsFlagsNumbersAndTextApart) {
  EXPECT_EQ(Value(true).flag(), true);
  EXPECT_FALSE(Value(true).number());
  EXPECT_FALSE(Value(true).integer());
  EXPECT_FALSE(Value(1).flag());
  EXPECT_FALSE(Value("1").number());
  EXPECT_EQ(Value(1).text(), nullptr);
  EXPECT_EQ(*Value("AC Power").text(), "AC Power");
}

TEST(Value, RejectsPointersAsFlagsAndCharactersAsNumbers) {
  static_assert(!std::is_constructible_v<Value, const int*>);
  static_assert(!std::is_constructible_v<Value, const Value*>);
  static_assert(!std::is_constructible_v<Value, std::nullptr_t>);
  static_assert(!std::is_constructible_v<Value, char>);
  static_assert(!std::is_constructible_v<Value, float>);
  static_assert(std::is_convertible_v<bool, Value> && std::is_convertible_v<int, Value>);
  static_assert(std::is_convertible_v<double, Value> && std::is_convertible_v<const char*, Value>);
}

TEST(Value, TruncatesFractionsTowardsZero) {
  EXPECT_EQ(Value(2.9).integer(), 2);
  EXPECT_EQ(Value(-2.9).integer(), -2);
  EXPECT_EQ(Value(-0.5).integer(), 0);
}

TEST(Value, ReadsIntegersFrom2To63UpAsSignedIntegersOfTheSameBits) {
  EXPECT_EQ(Value(std::uint64_t{18446744073709550366U}).integer(), -1250);
  EXPECT_EQ(Value(std::uint64_t{1} << 63).integer(), std::numeric_limits<std::int64_t>::min());
  EXPECT_EQ(Value(9223372036854775808.0).integer(), std::numeric_limits<std::int64_t>::min());
  EXPECT_EQ(Value(std::uint64_t{1} << 63).number(), 9223372036854775808.0);
}

TEST(Value, HasNoIntegerBeyondSixtyFourBits) {
  EXPECT_FALSE(Value(1e30).integer());
  EXPECT_FALSE(Value(-1e30).integer());
  EXPECT_FALSE(Value(std::nan("")).integer());
  EXPECT_FALSE(Value(std::numeric_limits<double>::infinity()).integer());
}

TEST(Value, FindsByKey) {
  const Dictionary d{{"a", 1}};
  EXPECT_EQ(find(d, "a")->integer(), 1);
  EXPECT_EQ(find(d, "b"), nullptr);
}

}  // namespace
}  // namespace tollbeam
