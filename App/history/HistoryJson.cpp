#include "history/HistoryJson.h"

#include <simdjson.h>

#include <charconv>
#include <cmath>
#include <variant>

namespace tollbeam {

namespace {

namespace ondemand = simdjson::ondemand;

// What a member holds, as far as a sample cares; `monostate` is a value of any other kind.
struct Number {
  double value;
  std::optional<std::int64_t> whole;
};
using Held = std::variant<std::monostate, Number, bool>;

// Far deeper than any file of ours, far shallower than the stack.
constexpr int kDeepest = 256;

std::optional<Number> readNumber(ondemand::value& value) {
  std::int64_t integer = 0;
  if (value.get_int64().get(integer) == simdjson::SUCCESS) {
    return Number{static_cast<double>(integer), integer};
  }
  double real = 0;
  if (value.get_double().get(real) != simdjson::SUCCESS) return std::nullopt;
  constexpr double kTwoTo63 = 9223372036854775808.0;
  Number number{real, std::nullopt};
  // The lowest integer itself was read above; a double at that place has lost its digits.
  if (std::trunc(real) == real && real > -kTwoTo63 && real < kTwoTo63) {
    number.whole = static_cast<std::int64_t>(real);
  }
  return number;
}

// Reads one value to its end; absent when it is not well-formed. The parser checks only what is
// asked of it, so values that nobody needs are walked through all the same.
std::optional<Held> readValue(ondemand::value value, int depth);

bool walkArray(ondemand::value& value, int depth) {
  ondemand::array array;
  if (value.get_array().get(array) != simdjson::SUCCESS) return false;
  for (auto element : array) {
    ondemand::value inner;
    if (element.get(inner) != simdjson::SUCCESS || !readValue(inner, depth + 1)) return false;
  }
  return true;
}

bool walkObject(ondemand::value& value, int depth) {
  ondemand::object object;
  if (value.get_object().get(object) != simdjson::SUCCESS) return false;
  for (auto field : object) {
    std::string_view key;
    if (field.error() != simdjson::SUCCESS || field.unescaped_key().get(key) != simdjson::SUCCESS ||
        !readValue(field.value(), depth + 1)) {
      return false;
    }
  }
  return true;
}

std::optional<Held> readValue(ondemand::value value, int depth) {
  if (depth > kDeepest) return std::nullopt;
  ondemand::json_type type{};
  if (value.type().get(type) != simdjson::SUCCESS) return std::nullopt;
  switch (type) {
    case ondemand::json_type::number:
      if (const auto number = readNumber(value)) return *number;
      return std::nullopt;
    case ondemand::json_type::boolean: {
      bool flag = false;
      if (value.get_bool().get(flag) != simdjson::SUCCESS) return std::nullopt;
      return flag;
    }
    case ondemand::json_type::string: {
      std::string_view text;
      if (value.get_string().get(text) != simdjson::SUCCESS) return std::nullopt;
      return std::monostate();
    }
    case ondemand::json_type::null: {
      bool isNull = false;
      if (value.is_null().get(isNull) != simdjson::SUCCESS || !isNull) return std::nullopt;
      return std::monostate();
    }
    case ondemand::json_type::array:
      if (!walkArray(value, depth)) return std::nullopt;
      return std::monostate();
    case ondemand::json_type::object:
      if (!walkObject(value, depth)) return std::nullopt;
      return std::monostate();
  }
  return std::nullopt;
}

std::optional<Sample> readSample(ondemand::object object) {
  Held t, p, c, a;
  for (auto field : object) {
    std::string_view key;
    if (field.error() != simdjson::SUCCESS || field.unescaped_key().get(key) != simdjson::SUCCESS) {
      return std::nullopt;
    }
    // The key's text lives in the parser's buffer, which reading the value may reuse.
    Held* member = key == "t" ? &t : key == "p" ? &p : key == "c" ? &c : key == "a" ? &a : nullptr;
    const auto held = readValue(field.value(), 1);
    if (!held) return std::nullopt;
    if (member) *member = *held;
  }
  const auto* time = std::get_if<Number>(&t);
  const auto* percent = std::get_if<Number>(&p);
  const auto* charging = std::get_if<bool>(&c);
  const auto* onPower = std::get_if<bool>(&a);
  if (!time || !percent || !percent->whole || !charging || !onPower) return std::nullopt;
  return Sample{.t = time->value, .p = *percent->whole, .c = *charging, .a = *onPower};
}

template <typename T>
void append(std::string& text, T number) {
  char digits[40];
  const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
  text.append(digits, end);
}

// The shortest form that reads back the same, but whole seconds without an exponent: people look
// into this file.
void appendTime(std::string& text, double t) {
  constexpr double kExactlyHeld = 9007199254740992.0;
  if (std::trunc(t) == t && std::abs(t) < kExactlyHeld) {
    append(text, static_cast<std::int64_t>(t));
  } else {
    append(text, t);
  }
}

}  // namespace

std::optional<std::string> encodeSamples(std::span<const Sample> samples) {
  std::string text;
  text.reserve(samples.size() * 52 + 2);
  text += '[';
  for (const Sample& sample : samples) {
    if (!std::isfinite(sample.t)) return std::nullopt;
    if (text.size() > 1) text += ',';
    text += R"({"t":)";
    appendTime(text, sample.t);
    text += R"(,"p":)";
    append(text, sample.p);
    text += sample.c ? R"(,"c":true)" : R"(,"c":false)";
    text += sample.a ? R"(,"a":true})" : R"(,"a":false})";
  }
  text += ']';
  return text;
}

std::optional<std::vector<Sample>> decodeSamples(std::string json) {
  // A byte-order mark is no JSON; newer parsers skip it silently.
  if (json.starts_with("\xEF\xBB\xBF")) return std::nullopt;
  json.reserve(json.size() + simdjson::SIMDJSON_PADDING);
  ondemand::parser parser;
  ondemand::document document;
  ondemand::array array;
  if (parser.iterate(simdjson::padded_string_view(json)).get(document) != simdjson::SUCCESS ||
      document.get_array().get(array) != simdjson::SUCCESS) {
    return std::nullopt;
  }
  std::vector<Sample> samples;
  for (auto element : array) {
    ondemand::object object;
    if (element.get_object().get(object) != simdjson::SUCCESS) return std::nullopt;
    const auto sample = readSample(object);
    if (!sample) return std::nullopt;
    samples.push_back(*sample);
  }
  // Anything but "no more" means that text follows the array.
  if (document.current_location().error() != simdjson::OUT_OF_BOUNDS) return std::nullopt;
  return samples;
}

}  // namespace tollbeam
