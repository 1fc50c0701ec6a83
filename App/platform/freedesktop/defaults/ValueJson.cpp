#include "platform/freedesktop/defaults/ValueJson.h"

#include <simdjson.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

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

std::string quoted(const std::string& text) {
  const QJsonArray list{QString::fromStdString(text)};
  const QByteArray json = QJsonDocument(list).toJson(QJsonDocument::Compact);
  return json.sliced(1, json.size() - 2).toStdString();
}

std::string jsonOf(double number) {
  std::array<char, 32> digits{};
  const auto end = std::to_chars(digits.begin(), digits.end(), number).ptr;
  const std::string json(digits.begin(), end);
  // Without a point or an exponent it would come back as an integer.
  return json.find_first_of(".e") == std::string::npos ? json + ".0" : json;
}

bool isStorable(const Value& value) {
  const auto number = value.number();
  return !number || std::isfinite(*number);
}

std::string jsonOf(const Value& value, const std::string& indent);

std::string jsonOf(const List& list, const std::string& indent) {
  std::string entries;
  for (const Value& entry : list) {
    if (isStorable(entry)) entries += (entries.empty() ? "" : ", ") + jsonOf(entry, indent);
  }
  return '[' + entries + ']';
}

std::string jsonOf(const Dictionary& dictionary, const std::string& indent) {
  const std::string inner = indent + "  ";
  std::string entries;
  for (const auto& [key, entry] : dictionary) {
    if (!isStorable(entry)) continue;
    entries += (entries.empty() ? "\n" : ",\n") + inner + quoted(key) + ": " + jsonOf(entry, inner);
  }
  return '{' + entries + '\n' + indent + '}';
}

std::string jsonOf(const Value& value, const std::string& indent) {
  if (value.isNull()) return "null";
  if (const auto flag = value.flag()) return *flag ? "true" : "false";
  if (const auto* text = value.text()) return quoted(*text);
  if (const auto* list = value.list()) return jsonOf(*list, indent);
  if (const auto* dictionary = value.dictionary()) return jsonOf(*dictionary, indent);
  const double number = value.number().value_or(0);
  if (!value.isIntegral()) return jsonOf(number);
  const std::int64_t integer = value.integer().value_or(0);
  const bool isAboveSignedRange = integer < 0 && number > 0;
  return isAboveSignedRange ? std::to_string(static_cast<std::uint64_t>(integer))
                            : std::to_string(integer);
}

}  // namespace

std::optional<Dictionary> dictionaryFromJson(std::string_view json) {
  dom::parser parser;
  dom::object object;
  if (parser.parse(json.data(), json.size()).get(object) != simdjson::SUCCESS) return std::nullopt;
  return dictionaryOf(object);
}

std::string toJson(const Dictionary& dictionary) { return jsonOf(dictionary, "") + '\n'; }

}  // namespace tollbeam
