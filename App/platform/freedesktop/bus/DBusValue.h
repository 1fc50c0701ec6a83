// What comes over the bus as a plain value: flags, numbers, texts, and a structure of numbers as a
// list of them. What no service that we meet has a use for is absent.
#pragma once

#include <QVariant>
#include <optional>

#include "values/Value.h"

namespace tollbeam {

/// A variant inside a variant counts as what is inside.
[[nodiscard]] std::optional<Value> valueFromBus(const QVariant& variant);

}  // namespace tollbeam
