// What an XSETTINGS manager (the settings daemon of an X11 desktop) publishes in its property,
// decoded. The bytes are another program's and are trusted in nothing.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "values/Value.h"

namespace tollbeam {

/// The settings by name ("Net/ThemeName"), numbers and texts; colours are left out. Absent when the
/// bytes are damaged anywhere: half of a list would mix one theme's parts with another's.
[[nodiscard]] std::optional<Dictionary> decodeXSettings(const std::vector<std::uint8_t>& bytes);

}  // namespace tollbeam
