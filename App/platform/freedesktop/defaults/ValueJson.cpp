#include "platform/freedesktop/defaults/ValueJson.h"

#include <simdjson.h>

#include <QString>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <utility>

namespace tollbeam {

namespace {

namespace dom = simdjson::dom;

Dictionary dictionaryOf(const dom::object& object);

Value valueOf(const dom::element& element) {
  switch (element.type()) {
    case dom::element_type::ARRAY: {
      List list;
      for (const dom::element& entry : dom::array(element)) {
        list.push_back(valueOf(entry));
      }
      return list;
    }
    case dom::element_type::OBJECT:
      return dictionaryOf(dom::object(element));
    case dom::element_type::INT64:
      return std::int64_t{element};
    case dom::element_type::UINT64:
      return std::uint64_t{element};
    case dom::element_type::DOUBLE:
      return double{element};
    case dom::element_type::STRING:
      return std::string(std::string_view(element));
    case dom::element_type::BOOL:
      return bool{element};
    case dom::element_type::NULL_VALUE:
      break;
  }
  return Null{};
}

Dictionary dictionaryOf(const dom::object& object) {
  Dictionary dictionary;
  for (const dom::key_value_pair& field : object) {
    dictionary.insert_or_assign(std::string(field.key), valueOf(field.value));
  }
  return dictionary;
}

template <typename Number>
void appendNumber(std::string& out, Number number) {
  std::array<char, 32> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
  out.append(text.data(), end);
}

void appendDouble(std::string& out, double number) {
  const std::size_t start = out.size();
  appendNumber(out, number);
  // Without a point or an exponent it would come back as an integer.
  if (out.find_first_of(".e", start) == std::string::npos) out += ".0";
}

void appendText(std::string& out, const std::string& text) {
  out += '"';
  for (const char c : QString::fromStdString(text).toStdString()) {
    if (c == '"' || c == '\\') {
      out += '\\';
      out += c;
    } else if (static_cast<unsigned char>(c) < 0x20) {
      std::array<char, 8> escape{};
      std::snprintf(escape.data(), escape.size(), "\\u%04x", static_cast<unsigned>(c));
      out += escape.data();
    } else {
      out += c;
    }
  }
  out += '"';
}

bool storable(const Value& value) {
  const auto number = value.number();
  return !number || std::isfinite(*number);
}

void appendValue(std::string& out, const Value& value, const std::string& indent);

void appendList(std::string& out, const List& list, const std::string& indent) {
  const char* separator = "";
  out += '[';
  for (const Value& entry : list) {
    if (!storable(entry)) continue;
    out += std::exchange(separator, ", ");
    appendValue(out, entry, indent);
  }
  out += ']';
}

void appendDictionary(std::string& out, const Dictionary& dictionary, const std::string& indent) {
  const std::string inner = indent + "  ";
  const char* separator = "\n";
  out += '{';
  for (const auto& [key, entry] : dictionary) {
    if (!storable(entry)) continue;
    out += std::exchange(separator, ",\n") + inner;
    appendText(out, key);
    out += ": ";
    appendValue(out, entry, inner);
  }
  out += "\n" + indent + '}';
}

void appendValue(std::string& out, const Value& value, const std::string& indent) {
  if (value.isNull()) {
    out += "null";
  } else if (const auto flag = value.flag()) {
    out += *flag ? "true" : "false";
  } else if (const auto* text = value.text()) {
    appendText(out, *text);
  } else if (const auto* list = value.list()) {
    appendList(out, *list, indent);
  } else if (const auto* dictionary = value.dictionary()) {
    appendDictionary(out, *dictionary, indent);
  } else if (!value.isIntegral()) {
    appendDouble(out, value.number().value_or(0));
  } else if (const auto number = value.integer().value_or(0); number < 0 && *value.number() > 0) {
    // Unsigned and above the signed range.
    appendNumber(out, std::bit_cast<std::uint64_t>(number));
  } else {
    appendNumber(out, number);
  }
}

}  // namespace

std::optional<Dictionary> dictionaryFromJson(std::string_view json) {
  dom::parser parser;
  dom::object object;
  if (parser.parse(json.data(), json.size()).get(object) != simdjson::SUCCESS) return std::nullopt;
  return dictionaryOf(object);
}

std::string toJson(const Dictionary& dictionary) {
  std::string out;
  appendDictionary(out, dictionary, "");
  out += '\n';
  return out;
}

}  // namespace tollbeam
