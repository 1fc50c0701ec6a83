// The histories that the pictures show.
#pragma once

#include <vector>

#include "support/Histories.h"

namespace tollbeam::gallery {

constexpr Date kNow{1'763'648'400};       // Thursday 20 November 2025, 14:20 UTC
constexpr Date kMidnight{1'763'596'800};  // of that day

/// Corners of the chart's line, in hours from `kMidnight`, with gaps between the stretches.
using Stretches = std::vector<std::vector<test::Corner>>;

inline const Stretches kDay = {{{-9.7, 71}, {-5.3, 48}, {-3.5, 80}, {-1.2, 80}, {-0.3, 76}},
                               {{7.5, 74}, {8.2, 80}, {10.4, 80}, {14.33, 64}}};

inline const Stretches kWeek = {{{-153.6, 58}, {-151, 45}, {-149.6, 80}, {-143.6, 80}},
                                {{-137, 78},
                                 {-135, 80},
                                 {-131, 80},
                                 {-126.5, 52},
                                 {-124.8, 80},
                                 {-111.5, 80},
                                 {-107, 61},
                                 {-97.5, 43}},
                                {{-87.6, 42},
                                 {-85, 64},
                                 {-80.5, 38},
                                 {-78.4, 80},
                                 {-63.2, 80},
                                 {-57.8, 49},
                                 {-56, 80},
                                 {-52.5, 80},
                                 {-49, 66}},
                                {{-40.4, 65},
                                 {-35.6, 33},
                                 {-33, 80},
                                 {-15.4, 80},
                                 {-11.9, 58},
                                 {-10.5, 80},
                                 {-6.4, 80},
                                 {-0.6, 51}},
                                {{7.4, 50}, {9, 41}, {11.1, 34}, {14.33, 82}}};

}  // namespace tollbeam::gallery
