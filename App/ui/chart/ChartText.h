// What the chart says in words, for those who hear it.
#pragma once

#include <QString>
#include <span>

#include "history/Sample.h"
#include "values/Date.h"

namespace tollbeam {

/// "Last 24 hours: 48% to 80%, now 64%." of the samples up to `now`; without the last part when the
/// newest is not of now, and empty without any.
[[nodiscard]] QString spokenChart(std::span<const Sample> samples, int days, Date now);

}  // namespace tollbeam
