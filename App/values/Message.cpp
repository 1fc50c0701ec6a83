#include "values/Message.h"

namespace tollbeam {

std::string Message::text() const {
  std::string result;
  for (std::size_t at = 0; at < pattern.size(); ++at) {
    const char digit = pattern[at] == '%' && at + 1 < pattern.size() ? pattern[at + 1] : '0';
    const auto place = static_cast<std::size_t>(digit - '1');
    if (digit >= '1' && digit <= '9' && place < arguments.size()) {
      result += arguments[place];
      ++at;
    } else {
      result += pattern[at];
    }
  }
  return result;
}

}  // namespace tollbeam
