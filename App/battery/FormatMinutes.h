// Minutes as people read them: "1 h 5 min", "2 h", "45 min".
#pragma once

#include <cstdint>

#include "values/Message.h"

namespace tollbeam {

/// Never less than "1 min", so that zero and negative counts read as "nearly there".
[[nodiscard]] Message formatMinutes(std::int64_t minutes);

}  // namespace tollbeam
