// The history file's text: a JSON array of {"t":…,"p":…,"c":…,"a":…}, compact. Reading is all or
// nothing: one bad sample makes the file unreadable, so that a damaged file is kept for
// inspection instead of being read in part.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "history/Sample.h"

namespace tollbeam {

/// Times are written so that they read back as the same double. Absent when a time is not finite.
[[nodiscard]] std::optional<std::string> encodeSamples(std::span<const Sample> samples);

/// The samples in the file's order. All four keys are needed with the right kind; others are
/// ignored, the last of equal keys counts, and 55.0 is a whole percent while 55.5 is not. Absent
/// when the text is anything but such an array in well-formed UTF-8 JSON.
[[nodiscard]] std::optional<std::vector<Sample>> decodeSamples(std::string json);

}  // namespace tollbeam
