#include "values/AlertKind.h"

#include <cstdlib>

namespace tollbeam {

std::string_view rawValue(AlertKind kind) {
  switch (kind) {
    case AlertKind::chargeLimit:
      return "chargeLimit";
    case AlertKind::low:
      return "low";
    case AlertKind::tooLong:
      return "tooLong";
    case AlertKind::health:
      return "health";
    case AlertKind::lowPower:
      return "lowPower";
  }
  std::abort();
}

}  // namespace tollbeam
