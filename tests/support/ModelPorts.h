// The recorded ports that a model uses.
#pragma once

#include "model/AppModel.h"
#include "recorded/RecordedPlatform.h"

namespace tollbeam::test {

inline AppModel::Ports modelPorts(RecordedPlatform& platform) {
  return {.mainQueue = platform.mainQueue,
          .clock = platform.clock,
          .calendar = platform.calendar,
          .fileManager = platform.fileManager,
          .userDefaults = platform.userDefaults,
          .mainBundle = platform.mainBundle,
          .powerSources = platform.powerSources,
          .processInfo = platform.processInfo,
          .workspace = platform.workspace,
          .notificationCenter = platform.notificationCenter,
          .dialogs = platform.dialogs};
}

}  // namespace tollbeam::test
