// A model on recorded ports, for the tests of its parts.
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "model/AppModel.h"
#include "recorded/RecordedPlatform.h"
#include "support/ModelPorts.h"

namespace tollbeam {

using Identifiers = std::vector<std::string>;

inline constexpr Date kStart{1'700'000'000};
inline constexpr const char* kFile = "/support/Tollbeam/history.json";

class AppModelTest : public testing::Test {
 protected:
  void power(int percent, bool pluggedIn, bool charging = false) {
    platform.powerSources.table =
        List{Dictionary{{"Type", "InternalBattery"},
                        {"Current Capacity", percent},
                        {"Max Capacity", 100},
                        {"Is Charging", charging},
                        {"Power Source State", pluggedIn ? "AC Power" : "Battery Power"}}};
  }
  void onBattery(int percent) { power(percent, false); }
  void pluggedInAt(int percent) { power(percent, true); }

  AppModel& created() { return model.emplace(test::modelPorts(platform)); }
  AppModel& started() {
    created().start();
    return *model;
  }
  void fallAsleep(double seconds) {
    platform.workspace.willSleep.notify();
    platform.clock.sleep(seconds);
  }
  void event() { platform.powerSources.changes.notify(); }

  Identifiers posted() const {
    Identifiers identifiers;
    for (const auto& request : platform.notificationCenter.posted) {
      identifiers.push_back(request.identifier);
    }
    return identifiers;
  }
  std::size_t samples() { return model->history().samples().size(); }

  RecordedPlatform platform{kStart};
  std::optional<AppModel> model;
};

}  // namespace tollbeam
