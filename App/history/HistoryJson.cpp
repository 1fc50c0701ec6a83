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

template <typename T>
bool read(simdjson::simdjson_result<T> from, T& to) {
  return std::move(from).get(to) == simdjson::SUCCESS;
}

std::optional<Held> readNumber(ondemand::value& value) {
  std::int64_t integer = 0;
  if (read(value.get_int64(), integer)) return Number{static_cast<double>(integer), integer};
  double real = 0;
  if (!read(value.get_double(), real)) return std::nullopt;
  constexpr double kTwoTo63 = 9223372036854775808.0;
  // The lowest integer itself was read above; a double at that place has lost its digits.
  const bool isWhole = std::trunc(real) == real && real > -kTwoTo63 && real < kTwoTo63;
  return Number{real, isWhole ? std::optional(static_cast<std::int64_t>(real)) : std::nullopt};
}

// Reads one value to its end; absent when it is not well-formed. The parser checks only the values
// that are read, so unused ones are read too.
std::optional<Held> readValue(ondemand::value value, int depth) {
  ondemand::json_type type{};
  if (depth > kDeepest || !read(value.type(), type)) return std::nullopt;
  switch (type) {
    case ondemand::json_type::number:
      return readNumber(value);
    case ondemand::json_type::boolean: {
      bool flag = false;
      if (!read(value.get_bool(), flag)) return std::nullopt;
      return flag;
    }
    case ondemand::json_type::string: {
      std::string_view text;
      if (!read(value.get_string(), text)) return std::nullopt;
      break;
    }
    case ondemand::json_type::null: {
      bool isNull = false;
      if (!read(value.is_null(), isNull) || !isNull) return std::nullopt;
      break;
    }
    case ondemand::json_type::array: {
      ondemand::array array;
      if (!read(value.get_array(), array)) return std::nullopt;
      for (auto element : array) {
        ondemand::value inner;
        if (!read(element, inner) || !readValue(inner, depth + 1)) return std::nullopt;
      }
      break;
    }
    case ondemand::json_type::object: {
      ondemand::object object;
      if (!read(value.get_object(), object)) return std::nullopt;
      for (auto field : object) {
        std::string_view key;
        if (!read(field.unescaped_key(), key) || !readValue(field.value(), depth + 1)) {
          return std::nullopt;
        }
      }
      break;
    }
  }
  return std::monostate();
}

std::optional<Sample> readSample(ondemand::object object) {
  Held t, p, c, a;
  for (auto field : object) {
    std::string_view key;
    if (!read(field.unescaped_key(), key)) return std::nullopt;
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

// The shortest form that reads back the same, but whole seconds without an exponent, for people who
// read this file.
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
      !read(document.get_array(), array)) {
    return std::nullopt;
  }
  std::vector<Sample> samples;
  for (auto element : array) {
    ondemand::object object;
    if (!read(element.get_object(), object)) return std::nullopt;
    const auto sample = readSample(object);
    if (!sample) return std::nullopt;
    samples.push_back(*sample);
  }
  // Anything but "no more" means that text follows the array.
  if (document.current_location().error() != simdjson::OUT_OF_BOUNDS) return std::nullopt;
  return samples;
}

}  // namespace tollbeam
