// Values as JSON text, in a form that people can edit: one key per line, sorted. Every value comes
// back as what it was: 80 an integer, 80.0 a double, 64-bit integers to the last digit.
// QJsonDocument would not do: it reads 80.0 as an integer and 2^64 - 1 as a double, and takes line
// ends in a text.
//
// What JSON cannot hold is left out: a number that is not finite is no value, and bytes of a text
// that are not UTF-8 become U+FFFD.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "values/Value.h"

namespace tollbeam {

/// Absent unless the text is one valid JSON object.
[[nodiscard]] std::optional<Dictionary> dictionaryFromJson(std::string_view json);

[[nodiscard]] std::string toJson(const Dictionary& dictionary);

}  // namespace tollbeam
