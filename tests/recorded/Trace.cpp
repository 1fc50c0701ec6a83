#include "recorded/Trace.h"

#include <simdjson.h>

#include <utility>

namespace tollbeam {

namespace {

namespace dom = simdjson::dom;

std::optional<Value> toValue(dom::element element);

std::optional<List> toList(dom::array array) {
  List list;
  for (const auto inner : array) {
    auto value = toValue(inner);
    if (!value) return std::nullopt;
    list.push_back(*std::move(value));
  }
  return list;
}

std::optional<Dictionary> toDictionary(dom::object object) {
  Dictionary dictionary;
  for (const auto field : object) {
    auto value = toValue(field.value);
    if (!value) return std::nullopt;
    dictionary.insert_or_assign(std::string(field.key), *std::move(value));
  }
  return dictionary;
}

std::optional<Value> toValue(dom::element element) {
  switch (element.type()) {
    case dom::element_type::BOOL:
      return Value(element.get_bool().value_unsafe());
    case dom::element_type::INT64:
      return Value(element.get_int64().value_unsafe());
    case dom::element_type::UINT64:
      return Value(element.get_uint64().value_unsafe());
    case dom::element_type::DOUBLE:
      return Value(element.get_double().value_unsafe());
    case dom::element_type::STRING:
      return Value(std::string(element.get_string().value_unsafe()));
    case dom::element_type::ARRAY: {
      auto list = toList(element.get_array().value_unsafe());
      if (!list) return std::nullopt;
      return Value(*std::move(list));
    }
    case dom::element_type::OBJECT: {
      auto dictionary = toDictionary(element.get_object().value_unsafe());
      if (!dictionary) return std::nullopt;
      return Value(*std::move(dictionary));
    }
    default:
      return std::nullopt;
  }
}

bool readTable(dom::element element, TraceStep& step) {
  if (element.is_null()) {
    step.table.emplace(std::nullopt);
    return true;
  }
  dom::array array;
  if (element.get(array) != simdjson::SUCCESS) return false;
  step.table = toList(array);
  return step.table->has_value();
}

bool readSmartBattery(dom::element element, TraceStep& step) {
  if (element.is_null()) {
    step.smartBattery.emplace(std::nullopt);
    return true;
  }
  dom::object object;
  if (element.get(object) != simdjson::SUCCESS) return false;
  step.smartBattery = toDictionary(object);
  return step.smartBattery->has_value();
}

std::optional<TraceStep> readStep(dom::object line) {
  TraceStep step;
  bool hasTime = false;
  for (const auto field : line) {
    if (field.key == "t") {
      hasTime = field.value.get(step.at.secondsSince1970) == simdjson::SUCCESS;
    } else if (field.key == "table") {
      if (!readTable(field.value, step)) return std::nullopt;
    } else if (field.key == "smartBattery") {
      if (!readSmartBattery(field.value, step)) return std::nullopt;
    } else if (field.key == "lowPowerMode") {
      bool on = false;
      if (field.value.get(on) != simdjson::SUCCESS) return std::nullopt;
      step.lowPowerMode = on;
    } else if (field.key == "set") {
      dom::object object;
      if (field.value.get(object) != simdjson::SUCCESS) return std::nullopt;
      auto dictionary = toDictionary(object);
      if (!dictionary) return std::nullopt;
      step.set = *std::move(dictionary);
    } else if (field.key == "do") {
      std::string_view action;
      if (field.value.get(action) != simdjson::SUCCESS) return std::nullopt;
      step.action = action;
    } else {
      return std::nullopt;
    }
  }
  if (!hasTime) return std::nullopt;
  return step;
}

}  // namespace

std::optional<std::vector<TraceStep>> readTrace(std::string_view text) {
  std::vector<TraceStep> steps;
  dom::parser parser;
  while (!text.empty()) {
    const auto end = std::min(text.find('\n'), text.size());
    const simdjson::padded_string line(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.size() == 0) continue;
    dom::object object;
    if (parser.parse(line).get(object) != simdjson::SUCCESS) return std::nullopt;
    auto step = readStep(object);
    if (!step || (!steps.empty() && step->at < steps.back().at)) return std::nullopt;
    steps.push_back(*std::move(step));
  }
  return steps;
}

}  // namespace tollbeam
