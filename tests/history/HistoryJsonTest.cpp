#include "history/HistoryJson.h"

#include <gtest/gtest.h>
#include <simdjson.h>

#include <cmath>
#include <limits>
#include <map>
#include <random>

namespace tollbeam {
namespace {

using Samples = std::vector<Sample>;

Samples randomSamples(std::mt19937& random, int count) {
  Samples samples;
  double t = std::uniform_real_distribution(0.0, 2e9)(random);
  for (int i = 0; i < count; ++i) {
    t += std::uniform_real_distribution(0.0, 120.0)(random);
    samples.push_back(
        {t, std::uniform_int_distribution(-5, 120)(random), random() % 2 == 0, random() % 2 == 0});
  }
  return samples;
}

TEST(HistoryJson, WritesCompactObjectsInOrder) {
  EXPECT_EQ(encodeSamples({}), "[]");
  EXPECT_EQ(encodeSamples(Samples{{1.5, 55, false, true}, {2, 56, true, false}}),
            R"([{"t":1.5,"p":55,"c":false,"a":true},{"t":2,"p":56,"c":true,"a":false}])");
}

TEST(HistoryJson, WritesNothingForATimeThatIsNoNumber) {
  EXPECT_FALSE(encodeSamples(Samples{{std::numeric_limits<double>::infinity(), 1, true, true}}));
  EXPECT_FALSE(encodeSamples(Samples{{std::numeric_limits<double>::quiet_NaN(), 1, true, true}}));
}

TEST(HistoryJson, ReadsBackExactlyWhatItWrote) {
  std::mt19937 random(7);
  for (int round = 0; round < 200; ++round) {
    const Samples samples = randomSamples(random, round);
    EXPECT_EQ(decodeSamples(encodeSamples(samples).value()), samples);
  }
  const Samples extremes = {{std::numeric_limits<double>::max(), 0, false, false},
                            {std::numeric_limits<double>::denorm_min(), 1, true, false},
                            {-0.1, std::numeric_limits<std::int64_t>::min(), false, true},
                            {1e22, std::numeric_limits<std::int64_t>::max(), true, true}};
  EXPECT_EQ(decodeSamples(encodeSamples(extremes).value()), extremes);
}

TEST(HistoryJson, IgnoresKeyOrderUnknownKeysAndWhiteSpace) {
  EXPECT_EQ(
      decodeSamples(R"( [ { "a" : true , "x":[1,{"t":null},"s"], "c":false,"p":55 , "t":1 } ] )"
                    "\n"),
      (Samples{{1, 55, false, true}}));
  EXPECT_EQ(decodeSamples(R"([{"\u0074":1,"p":55,"c":false,"a":true}])"),
            (Samples{{1, 55, false, true}}));
}

TEST(HistoryJson, TheLastOfEqualKeysCounts) {
  EXPECT_EQ(decodeSamples(R"([{"t":9,"p":"x","c":1,"a":true,"t":1,"p":55,"c":false}])"),
            (Samples{{1, 55, false, true}}));
  EXPECT_FALSE(decodeSamples(R"([{"t":1,"p":55,"c":false,"a":true,"a":1}])"));
}

TEST(HistoryJson, AWholeNumberMayBeWrittenAsAFraction) {
  EXPECT_EQ(decodeSamples(R"([{"t":1,"p":55.0,"c":false,"a":true}])")->at(0).p, 55);
  EXPECT_EQ(decodeSamples(R"([{"t":1,"p":5.5e1,"c":false,"a":true}])")->at(0).p, 55);
  EXPECT_FALSE(decodeSamples(R"([{"t":1,"p":55.5,"c":false,"a":true}])"));
  EXPECT_FALSE(decodeSamples(R"([{"t":1,"p":1e19,"c":false,"a":true}])"));
  EXPECT_FALSE(decodeSamples(R"([{"t":1,"p":9223372036854775808,"c":false,"a":true}])"));
  EXPECT_FALSE(decodeSamples(R"([{"t":1,"p":-9223372036854775809,"c":false,"a":true}])"));
}

TEST(HistoryJson, ATimeMayBeAnyNumber) {
  EXPECT_EQ(
      decodeSamples(R"([{"t":123456789012345678901234567890,"p":5,"c":true,"a":true}])")->at(0).t,
      123456789012345678901234567890.0);
  EXPECT_FALSE(decodeSamples(R"([{"t":1e999,"p":5,"c":true,"a":true}])"));
}

TEST(HistoryJson, OneBadSampleMakesTheFileUnreadable) {
  const std::string good = R"({"t":1,"p":55,"c":false,"a":true})";
  ASSERT_TRUE(decodeSamples("[" + good + "," + good + "]"));
  for (const char* bad : {
           R"({"t":1,"p":55,"a":true})",
           R"({"p":55,"c":false,"a":true})",
           R"({"t":1,"c":false,"a":true})",
           R"({"t":1,"p":55,"c":false})",
           R"({"t":"1","p":55,"c":false,"a":true})",
           R"({"t":true,"p":55,"c":false,"a":true})",
           R"({"t":1,"p":true,"c":false,"a":true})",
           R"({"t":1,"p":"55","c":false,"a":true})",
           R"({"t":1,"p":55,"c":0,"a":true})",
           R"({"t":1,"p":55,"c":false,"a":"true"})",
           R"({"t":null,"p":55,"c":false,"a":true})",
           R"({"t":1,"p":null,"c":false,"a":true})",
           R"({"t":1,"p":55,"c":false,"a":true,"x":1e999})",
           R"({"t":1,"p":55,"c":false,"a":true,"x":[1,]})",
           R"({"t":1,"p":55,"c":false,"a":true,"x":nul})",
           R"({"t":1,"p":55,"c":false,"a":true,"x":01})",
           R"({"t":1,"p":55,"c":false,"a":true,"x":"\ud800"})",
           R"({"t":1,"p":55,"c":false,"a":true,})",
           "null",
           "1",
           "[]",
           "\"x\"",
           "{}",
       }) {
    EXPECT_FALSE(decodeSamples("[" + good + "," + bad + "]")) << bad;
  }
}

TEST(HistoryJson, OnlyASingleArrayIsReadable) {
  for (const std::string text : {"", " ", "{}", "null", "1", "[", "[[]]", "[] []", "[],", "[]x",
                                 "\xEF\xBB\xBF[]", "[\"\xFF\"]"}) {
    EXPECT_FALSE(decodeSamples(text)) << text;
  }
  EXPECT_EQ(decodeSamples("[]"), Samples{});
}

TEST(HistoryJson, EveryTruncationIsUnreadable) {
  std::mt19937 random(3);
  const std::string text = encodeSamples(randomSamples(random, 6)).value();
  for (std::size_t length = 0; length < text.size(); ++length) {
    EXPECT_FALSE(decodeSamples(text.substr(0, length))) << length;
  }
}

TEST(HistoryJson, DeepNestingIsUnreadableRatherThanFatal) {
  EXPECT_FALSE(decodeSamples(std::string(200000, '[') + std::string(200000, ']')));
  EXPECT_FALSE(decodeSamples(R"([{"t":1,"p":55,"c":false,"a":true,"x":)" +
                             std::string(200000, '[') + std::string(200000, ']') + "}]"));
}

// The parser's other face validates a whole document before it gives anything out: an independent
// reading of the same text.
std::optional<Samples> readOtherwise(const simdjson::dom::element& root) {
  simdjson::dom::array array;
  if (root.get(array) != simdjson::SUCCESS) return std::nullopt;
  Samples samples;
  for (const auto element : array) {
    simdjson::dom::object object;
    if (element.get(object) != simdjson::SUCCESS) return std::nullopt;
    std::map<std::string, simdjson::dom::element> members;
    for (const auto field : object) members.insert_or_assign(std::string(field.key), field.value);
    Sample sample;
    for (const char* key : {"t", "p", "c", "a"}) {
      if (!members.contains(key)) return std::nullopt;
    }
    double percent = 0;
    if (members["t"].get(sample.t) != simdjson::SUCCESS ||
        members["p"].get(percent) != simdjson::SUCCESS || std::trunc(percent) != percent ||
        std::abs(percent) > 1e15 || members["c"].get(sample.c) != simdjson::SUCCESS ||
        members["a"].get(sample.a) != simdjson::SUCCESS) {
      return std::nullopt;
    }
    sample.p = static_cast<std::int64_t>(percent);
    samples.push_back(sample);
  }
  return samples;
}

TEST(HistoryJson, ReadsDamagedFilesAsTheValidatingParserDoes) {
  std::mt19937 random(11);
  const std::string whole =
      R"([{"t":12.5,"p":55,"c":false,"a":true,"x":{"y":[1,-2.5e3,"é\n",null,true]}},)"
      R"({"a":true,"c":true,"p":7.0,"t":1700000000.25,"z":""}])";
  const std::string alphabet = "[]{}\",:0123456789.eE+-truefalsn\\u \n\x80\xC3";
  int readable = 0;
  for (int round = 0; round < 100000; ++round) {
    std::string text = whole;
    for (auto edits = 1 + random() % 3; edits > 0; --edits) {
      const auto at = random() % (text.size() + 1);
      switch (random() % 3) {
        case 0:
          if (at < text.size()) text[at] = alphabet[random() % alphabet.size()];
          break;
        case 1:
          text.erase(at, 1 + random() % 3);
          break;
        default:
          text.insert(at, 1, alphabet[random() % alphabet.size()]);
      }
    }
    simdjson::dom::parser parser;
    simdjson::dom::element root;
    const auto error = parser.parse(text).get(root);
    // It refuses integers beyond 64 bits, which are numbers all the same.
    if (error == simdjson::NUMBER_ERROR) continue;
    const auto expected =
        error == simdjson::SUCCESS ? readOtherwise(root) : std::optional<Samples>();
    ASSERT_EQ(decodeSamples(text), expected) << text;
    readable += expected ? 1 : 0;
  }
  EXPECT_GT(readable, 1000);
}

}  // namespace
}  // namespace tollbeam
