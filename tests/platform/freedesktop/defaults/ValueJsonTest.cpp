#include "platform/freedesktop/defaults/ValueJson.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <random>

namespace tollbeam {

namespace {

std::optional<Dictionary> roundTrip(const Dictionary& dictionary) {
  return dictionaryFromJson(toJson(dictionary));
}

Value randomValue(std::mt19937_64& random, int depth) {
  switch (random() % (depth > 0 ? 7 : 5)) {
    case 0:
      return (random() & 1) != 0;
    case 1:
      // From the largest to the smallest sizes.
      return static_cast<std::int64_t>(random()) >> (random() % 64);
    case 2: {
      const double number = std::ldexp(static_cast<double>(static_cast<std::int64_t>(random())),
                                       static_cast<int>(random() % 1900) - 1000);
      return std::isfinite(number) ? number : 0.5;
    }
    case 3: {
      std::string text;
      for (auto i = random() % 8; i > 0; --i) text += "a\"\\\n\t\x01\x7f/"[random() % 8];
      return text + "é€😀";
    }
    case 4:
      return Null{};
    case 5: {
      List list;
      for (auto i = random() % 4; i > 0; --i) list.push_back(randomValue(random, depth - 1));
      return list;
    }
    default: {
      Dictionary dictionary;
      for (auto i = random() % 4; i > 0; --i) {
        dictionary.insert_or_assign("k\"" + std::to_string(i), randomValue(random, depth - 1));
      }
      return dictionary;
    }
  }
}

}  // namespace

TEST(ValueJson, WritesTextThatPeopleCanEdit) {
  EXPECT_EQ(toJson({{"limit", 80}, {"quietEnabled", false}, {"lowSound", "Glass"}}),
            "{\n  \"limit\": 80,\n  \"lowSound\": \"Glass\",\n  \"quietEnabled\": false\n}\n");
}

TEST(ValueJson, KeepsTheKindsApart) {
  const Dictionary all{{"flag", true},
                       {"integer", 80},
                       {"double", 80.0},
                       {"fraction", 0.1},
                       {"text", "80"},
                       {"list", List{1, 1.0, "1", true, List{}}},
                       {"dictionary", Dictionary{{"inner", Dictionary{}}}}};
  EXPECT_EQ(roundTrip(all), all);
}

TEST(ValueJson, KeepsNumbersToTheLastDigit) {
  using Integer = std::numeric_limits<std::int64_t>;
  const Dictionary all{{"smallest", Integer::min()},
                       {"largest", Integer::max()},
                       {"unsigned", std::numeric_limits<std::uint64_t>::max()},
                       {"beyond a double's digits", std::int64_t{9007199254740993}},
                       {"time", 1767225600.123456},
                       {"huge", std::numeric_limits<double>::max()},
                       {"tiny", std::numeric_limits<double>::denorm_min()},
                       {"round", 1e22},
                       {"minus zero", -0.0}};
  EXPECT_EQ(roundTrip(all), all);
  EXPECT_TRUE(std::signbit(*roundTrip(all)->at("minus zero").number()));
}

TEST(ValueJson, ReadsBackEveryValue) {
  std::mt19937_64 random(20240229);
  for (int i = 0; i < 2000; ++i) {
    const Dictionary all{{"value", randomValue(random, 3)}};
    ASSERT_EQ(roundTrip(all), all) << toJson(all);
  }
}

TEST(ValueJson, LeavesOutWhatJsonCannotHold) {
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(roundTrip({{"a", infinity}, {"b", std::nan("")}, {"c", List{1, -infinity, 2}}}),
            (Dictionary{{"c", List{1, 2}}}));
}

TEST(ValueJson, ReplacesInvalidUtf8) {
  EXPECT_EQ(roundTrip({{"text", "a\xff\xfe"}}), (Dictionary{{"text", "a\uFFFD\uFFFD"}}));
}

TEST(ValueJson, ReadsBackNulls) {
  const Dictionary all{{"a", Null{}}, {"b", List{Null{}, 1}}, {"c", Dictionary{{"d", Null{}}}}};
  EXPECT_EQ(dictionaryFromJson(R"({"a": null, "b": [null, 1], "c": {"d": null}})"), all);
  EXPECT_EQ(roundTrip(all), all);
}

TEST(ValueJson, TakesTheLastOfEqualKeys) {
  EXPECT_EQ(dictionaryFromJson(R"({"a": 1, "a": 2})"), (Dictionary{{"a", 2}}));
}

TEST(ValueJson, ReadsOnlyOneWholeValidObject) {
  for (const char* text : {"", " ", "{", "[]", "80", "null", "\"text\"", "{\"a\": }", "{\"a\": 1,}",
                           "{'a': 1}", "{\"a\": 1} x", "{\"a\": 1}{\"b\": 2}", "{\"a\": \"\xff\"}",
                           "{\"a\": 01}", "{\"a\": 1e999}", "{\"a\": \"\n\"}", "{\"a\": NaN}"}) {
    EXPECT_EQ(dictionaryFromJson(text), std::nullopt) << text;
  }
  EXPECT_EQ(dictionaryFromJson(std::string_view("{\"a\": 1}\0", 9)), std::nullopt);
}

TEST(ValueJson, RejectsDeepNesting) {
  const std::string deep = "{\"a\": " + std::string(100'000, '[') + std::string(100'000, ']') + "}";
  EXPECT_EQ(dictionaryFromJson(deep), std::nullopt);
}

}  // namespace tollbeam
