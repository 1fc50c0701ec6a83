// The settings' ports out of the recorded ones.
#pragma once

#include "recorded/RecordedPlatform.h"
#include "ui/settings/SettingsView.h"

namespace tollbeam::test {

inline SettingsView::Ports settingsPorts(RecordedPlatform& recorded) {
  return {.userDefaults = recorded.userDefaults,
          .systemSounds = recorded.systemSounds,
          .loginItem = recorded.loginItem,
          .dialogs = recorded.dialogs,
          .calendar = recorded.calendar,
          .clock = recorded.clock};
}

}  // namespace tollbeam::test
