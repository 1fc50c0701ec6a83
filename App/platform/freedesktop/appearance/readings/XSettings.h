// Decodes the property that an XSETTINGS manager (the settings daemon of an X11 desktop) publishes.
// The bytes come from another program and may be anything.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "values/Value.h"

namespace tollbeam {

/// The settings by name ("Net/ThemeName"), numbers and texts; colours are left out. Absent when the
/// bytes are damaged anywhere: half of the settings would mix one theme with another.
[[nodiscard]] std::optional<Dictionary> decodeXSettings(const std::vector<std::uint8_t>& bytes);

}  // namespace tollbeam
