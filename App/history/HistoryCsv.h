// The export: a header line and a line per sample, oldest first, each ending in a line feed.
#pragma once

#include <span>
#include <string>

#include "history/Sample.h"

namespace tollbeam {

/// Times are UTC with whole seconds, the fraction cut off (towards the past, before 1970 too).
[[nodiscard]] std::string csvText(std::span<const Sample> samples);

}  // namespace tollbeam
