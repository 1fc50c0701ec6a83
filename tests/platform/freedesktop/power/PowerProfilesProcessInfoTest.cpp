#include "platform/freedesktop/power/PowerProfilesProcessInfo.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <memory>

#include "recorded/RecordedPlatform.h"
#include "support/FakeProperties.h"
#include "support/PrivateBus.h"

namespace tollbeam {
namespace {

using test::FakeProperties;
using test::waitFor;

const auto currentName = QStringLiteral("org.freedesktop.UPower.PowerProfiles");
const auto olderName = QStringLiteral("net.hadess.PowerProfiles");

QVariantMap profile(const char* name) {
  return {{QStringLiteral("ActiveProfile"), QString::fromUtf8(name)}};
}

class PowerProfilesProcessInfoTest : public testing::Test {
 protected:
  PowerProfilesProcessInfoTest() { current.properties = older.properties = profile("balanced"); }

  void start() {
    info = std::make_unique<PowerProfilesProcessInfo>(bus.join(), hold);
    observation = info->onPowerStateChange([this] { announced.push_back(lowPower()); });
    ready = info->whenReady([this] { ++timesReady; });
    EXPECT_EQ(timesReady, 0);
    ASSERT_TRUE(waitFor([this] { return timesReady > 0; }));
  }

  [[nodiscard]] bool lowPower() const { return info->isLowPowerModeEnabled(); }

  test::PrivateBus bus;
  QDBusConnection daemon = bus.connect();
  FakeProperties current{daemon, QStringLiteral("/org/freedesktop/UPower/PowerProfiles"),
                         currentName};
  FakeProperties older{daemon, QStringLiteral("/net/hadess/PowerProfiles"), olderName};
  RecordedWorkspace workspace;
  SleepHold hold{workspace};
  std::vector<bool> announced;
  int timesReady = 0;
  std::unique_ptr<PowerProfilesProcessInfo> info;
  Subscription observation;
  Subscription ready;
};

TEST_F(PowerProfilesProcessInfoTest, WithoutADaemonThereIsNoLowPowerMode) {
  start();
  EXPECT_FALSE(lowPower());
}

TEST_F(PowerProfilesProcessInfoTest, IsReadyWithTheDaemonsAnswerUnderEitherName) {
  current.properties = older.properties = profile("power-saver");
  for (const auto& name : {currentName, olderName}) {
    ASSERT_TRUE(daemon.registerService(name));
    timesReady = 0;
    start();
    EXPECT_TRUE(lowPower());
    daemon.unregisterService(name);
  }
}

TEST_F(PowerProfilesProcessInfoTest, OnlyPowerSaverIsLowPowerMode) {
  ASSERT_TRUE(daemon.registerService(olderName));
  start();
  older.change(profile("power-saver"));
  EXPECT_TRUE(waitFor([this] { return lowPower(); }));
  older.change(profile("performance"));
  EXPECT_TRUE(waitFor([this] { return !lowPower(); }));
  older.change(profile("balanced"));
  older.change(profile("power-saver"));
  EXPECT_TRUE(waitFor([this] { return lowPower(); }));
  EXPECT_EQ(announced, (std::vector{true, false, true}));
}

TEST_F(PowerProfilesProcessInfoTest, OneDaemonUnderBothNamesIsAnnouncedOnce) {
  ASSERT_TRUE(daemon.registerService(currentName));
  ASSERT_TRUE(daemon.registerService(olderName));
  start();
  for (const auto* name : {"power-saver", "balanced"}) {
    current.change(profile(name));
    older.change(profile(name));
  }
  ASSERT_TRUE(waitFor([this] { return announced.size() == 2; }));
  current.change(profile("power-saver"));
  ASSERT_TRUE(waitFor([this] { return lowPower(); }));
  EXPECT_EQ(announced, (std::vector{true, false, true}));
}

TEST_F(PowerProfilesProcessInfoTest, KeepsTheModeWhenTheDaemonVanishes) {
  ASSERT_TRUE(daemon.registerService(olderName));
  older.properties = profile("power-saver");
  start();
  announced.clear();
  daemon.unregisterService(olderName);
  // The first name goes before the other one comes.
  current.properties = profile("power-saver");
  ASSERT_TRUE(daemon.registerService(currentName));
  ASSERT_TRUE(waitFor([this] { return current.asked > 0; }));
  current.change(profile("balanced"));
  ASSERT_TRUE(waitFor([this] { return !lowPower(); }));
  EXPECT_EQ(announced, std::vector{false});
}

TEST_F(PowerProfilesProcessInfoTest, ADaemonWithoutAProfileChangesNothing) {
  ASSERT_TRUE(daemon.registerService(currentName));
  current.properties = profile("power-saver");
  start();
  EXPECT_TRUE(lowPower());
  current.change(profile(""));
  current.change({{QStringLiteral("ActiveProfile"), 7}});
  older.properties = profile("power-saver");
  ASSERT_TRUE(daemon.registerService(olderName));
  ASSERT_TRUE(waitFor([this] { return older.asked > 0; }));
  older.change(profile("balanced"));
  ASSERT_TRUE(waitFor([this] { return !lowPower(); }));
  EXPECT_EQ(announced, (std::vector{true, false}));
}

TEST_F(PowerProfilesProcessInfoTest, WaitsForAHangingDaemonOnlyForALimitedTime) {
  ASSERT_TRUE(daemon.registerService(currentName));
  current.silent = true;
  current.properties = profile("power-saver");
  start();
  EXPECT_FALSE(lowPower());
  current.answer();
  EXPECT_TRUE(waitFor([this] { return lowPower(); }));
}

TEST_F(PowerProfilesProcessInfoTest, AnnouncesASwitchDuringASleepAfterTheWakeRefresh) {
  ASSERT_TRUE(daemon.registerService(currentName));
  start();
  workspace.willSleep.notify();
  current.change(profile("power-saver"));
  ASSERT_TRUE(waitFor([this] { return lowPower(); }));
  QElapsedTimer sinceWake;
  sinceWake.start();
  workspace.didWake.notify();
  ASSERT_TRUE(waitFor([this] { return !announced.empty(); }));
  EXPECT_GE(sinceWake.elapsed(), 3500);
  current.change(profile("balanced"));
  EXPECT_TRUE(waitFor([this] { return announced.size() == 2; }));
  EXPECT_EQ(announced, (std::vector{true, false}));
}

TEST_F(PowerProfilesProcessInfoTest, MayBeDestroyedInItsOwnCallback) {
  ASSERT_TRUE(daemon.registerService(currentName));
  start();
  observation = info->onPowerStateChange([this] { info.reset(); });
  current.change(profile("power-saver"));
  EXPECT_TRUE(waitFor([this] { return info == nullptr; }));
}

TEST_F(PowerProfilesProcessInfoTest, IsKnownAgainOnARestartedBus) {
  ASSERT_TRUE(daemon.registerService(currentName));
  start();
  ASSERT_FALSE(lowPower());
  bus.stop();
  bus.start();
  auto restarted = bus.connect();
  FakeProperties saver{restarted, QStringLiteral("/org/freedesktop/UPower/PowerProfiles"),
                       currentName};
  saver.properties = profile("power-saver");
  ASSERT_TRUE(restarted.registerService(currentName));
  EXPECT_TRUE(waitFor([this] { return lowPower(); }));
}

}  // namespace
}  // namespace tollbeam
