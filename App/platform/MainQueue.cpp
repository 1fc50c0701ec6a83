#include "platform/MainQueue.h"

#include <cstdlib>

namespace tollbeam {

void requireMainThread(const MainQueue& queue) {
  if (!queue.isCurrent()) std::abort();
}

}  // namespace tollbeam
