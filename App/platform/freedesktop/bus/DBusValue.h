// Values from the bus as plain values: flags, numbers, texts, and a structure of doubles as a list.
// Other types are absent; no service that this program uses sends them.
#pragma once

#include <QVariant>
#include <optional>

#include "values/Value.h"

namespace tollbeam {

/// A variant inside a variant counts as what is inside.
[[nodiscard]] std::optional<Value> valueFromBus(const QVariant& variant);

}  // namespace tollbeam
