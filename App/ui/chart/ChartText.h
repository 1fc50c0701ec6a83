// The chart in words, for screen readers.
#pragma once

#include <QString>
#include <span>

#include "history/Sample.h"
#include "values/Date.h"

namespace tollbeam {

/// "Last 24 hours: 48% to 80%, now 64%." of the samples up to `now`. Without the last part when the
/// newest of them is older than 15 minutes; empty when there is none.
[[nodiscard]] QString spokenChart(std::span<const Sample> samples, int days, Date now);

}  // namespace tollbeam
