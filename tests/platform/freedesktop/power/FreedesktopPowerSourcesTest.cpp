#include "platform/freedesktop/power/FreedesktopPowerSources.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <chrono>
#include <memory>

#include "platform/freedesktop/power/readings/Supplies.h"
#include "platform/freedesktop/power/readings/SuppliesFolder.h"
#include "platform/freedesktop/session/SleepHold.h"
#include "recorded/RecordedPlatform.h"
#include "support/FakeProperties.h"
#include "support/PrivateBus.h"

namespace tollbeam {
namespace {

using namespace std::chrono_literals;
using test::FakeProperties;
using test::passedOn;
using test::waitFor;

const auto service = QStringLiteral("org.freedesktop.UPower");
const auto percentage = QStringLiteral("Percentage");
const auto state = QStringLiteral("State");

/// Power sources with a daemon, a kernel and a system bus of their own.
class Machine {
 public:
  Machine() {
    device.properties = {{QStringLiteral("Type"), 2U},
                         {QStringLiteral("IsPresent"), true},
                         {state, 2U},
                         {percentage, 55.0},
                         {QStringLiteral("TimeToEmpty"), qlonglong{3600}},
                         {QStringLiteral("UpdateTime"), qulonglong{1}}};
    manager.properties = {{QStringLiteral("OnBattery"), true}};
    folder.add("BAT0", test::energyPack());  // At 80 %, unlike the daemon's 55 %.
    folder.add("AC", test::mains("0"));
  }

  void startDaemon() { ASSERT_TRUE(daemon.registerService(service)); }
  void stopDaemon() { daemon.unregisterService(service); }

  void start() {
    sources = std::make_unique<FreedesktopPowerSources>(bus.join(), hold, folder.path(), timing);
    ready = sources->whenReady([this] {
      ++timesReady;
      percentWhenReady = percent();
      sourceWhenReady = powerSource();
      observation = sources->observe([this] {
        percentsAnnounced.push_back(percent());
        sourcesAnnounced.push_back(powerSource());
        if (sinceWake.isValid()) announcedAfterWake.push_back(sinceWake.elapsed());
      });
    });
    EXPECT_EQ(timesReady, 0);
  }

  void startAndWaitUntilReady() {
    start();
    ASSERT_TRUE(waitFor([this] { return timesReady > 0; }));
  }

  [[nodiscard]] std::optional<double> percent() const {
    const auto table = sources->descriptions();
    if (!table || table->empty()) return std::nullopt;
    return find(*table->front().dictionary(), "Current Capacity")->number();
  }

  [[nodiscard]] std::string powerSource() const {
    const auto table = sources->descriptions();
    if (!table || table->empty()) return "no battery";
    return *find(*table->front().dictionary(), "Power Source State")->text();
  }

  /// After this the next change of external power is one of a flapping contact.
  void plugInAndLetItSettle() {
    folder.set("AC", "online", "1");
    manager.change({{QStringLiteral("OnBattery"), false}});
    ASSERT_TRUE(waitFor(
        [this] { return !sourcesAnnounced.empty() && sourcesAnnounced.back() == "AC Power"; }));
    device.change({{percentage, 50.0}});
    ASSERT_TRUE(waitFor([this] { return percentsAnnounced.back() == 50; }));
  }

  void fallAsleep() { workspace.willSleep.notify(); }
  void wake() {
    sinceWake.start();
    workspace.didWake.notify();
  }

  /// Neither UPower nor the kernel has a real reading of the battery.
  void letTheBatteryGlitch() {
    device.properties[percentage] = 0.0;
    device.properties[state] = 0U;
    folder.set("BAT0", "capacity", "0");
    folder.set("BAT0", "status", "Unknown");
  }

  using Percents = std::vector<std::optional<double>>;

  test::PrivateBus bus;
  test::SuppliesFolder folder;
  QDBusConnection daemon = bus.connect();
  FakeProperties device{daemon, QStringLiteral("/org/freedesktop/UPower/devices/DisplayDevice"),
                        QStringLiteral("org.freedesktop.UPower.Device")};
  FakeProperties manager{daemon, QStringLiteral("/org/freedesktop/UPower"), service};
  RecordedWorkspace workspace;
  SleepHold hold{workspace};
  QElapsedTimer sinceWake;
  std::vector<qint64> announcedAfterWake;
  PowerTiming timing;
  int timesReady = 0;
  std::optional<double> percentWhenReady;
  std::string sourceWhenReady;
  Percents percentsAnnounced;
  std::vector<std::string> sourcesAnnounced;
  std::unique_ptr<FreedesktopPowerSources> sources;
  Subscription ready;
  std::optional<Subscription> observation;
};

/// To see that something does not happen, a test waits until it happens on another machine that
/// started later: timers of one length fire in the order of their starts, however busy the real
/// machine is.
class FreedesktopPowerSourcesTest : public testing::Test, protected Machine {
 protected:
  /// Returns after the end of a burst that is settling.
  static void letItSettle() {
    Machine other;
    other.startDaemon();
    other.startAndWaitUntilReady();
    other.device.change({{percentage, 40.0}});
    ASSERT_TRUE(waitFor([&] { return !other.percentsAnnounced.empty(); }));
  }

  /// Returns after the time for which a launch waits for a daemon that hangs.
  void waitUntilTheDaemonIsTooLate() const {
    Machine other;
    other.startDaemon();
    other.device.silent = other.manager.silent = true;
    other.timing.daemon = timing.daemon;
    other.startAndWaitUntilReady();
  }
};

TEST_F(FreedesktopPowerSourcesTest, AreReadyWithTheDaemonsFirstWholeAnswer) {
  startDaemon();
  timing.daemon = 1h;
  timing.glitch = 1h;
  startAndWaitUntilReady();
  EXPECT_EQ(percentWhenReady, 55);
  EXPECT_EQ(device.asked, 1);
  EXPECT_EQ(manager.asked, 1);
}

TEST_F(FreedesktopPowerSourcesTest, WaitForBothAnswersOfTheDaemon) {
  startDaemon();
  manager.silent = true;
  start();
  ASSERT_TRUE(waitFor([this] { return device.asked == 1 && manager.asked == 1; }));
  EXPECT_EQ(percent(), 80);
  manager.answer();
  ASSERT_TRUE(waitFor([this] { return timesReady > 0; }));
  EXPECT_EQ(percentWhenReady, 55);
}

TEST_F(FreedesktopPowerSourcesTest, AreReadyAtOnceWithoutTheDaemon) {
  timing.daemon = 1h;
  timing.glitch = 1h;
  startAndWaitUntilReady();
  EXPECT_EQ(percentWhenReady, 80);
}

TEST_F(FreedesktopPowerSourcesTest, AreReadyAtOnceWithoutABattery) {
  timing.daemon = 1h;
  timing.glitch = 1h;
  device.properties[QStringLiteral("Type")] = 0U;
  device.properties[QStringLiteral("IsPresent")] = false;
  folder.set("BAT0", "present", "0");
  startAndWaitUntilReady();
  startDaemon();
  timesReady = 0;
  startAndWaitUntilReady();
  EXPECT_EQ(percentWhenReady, std::nullopt);
}

TEST_F(FreedesktopPowerSourcesTest, WaitForAHangingDaemonOnlyForALimitedTime) {
  startDaemon();
  timing.glitch = 1h;
  device.silent = manager.silent = true;
  startAndWaitUntilReady();
  EXPECT_EQ(percentWhenReady, 80);
  EXPECT_EQ(device.asked, 1);
}

TEST_F(FreedesktopPowerSourcesTest, AnnounceALateAnswerOfAHangingDaemon) {
  startDaemon();
  device.silent = manager.silent = true;
  startAndWaitUntilReady();
  device.answer();
  manager.answer();
  ASSERT_TRUE(waitFor([this] { return !percentsAnnounced.empty(); }));
  EXPECT_EQ(percentsAnnounced, Percents{55});
}

TEST_F(FreedesktopPowerSourcesTest, CallEachReadyCallbackOnce) {
  startDaemon();
  startAndWaitUntilReady();
  int timesLate = 0;
  const auto late = sources->whenReady([&timesLate] { ++timesLate; });
  EXPECT_EQ(timesLate, 0);
  ASSERT_TRUE(waitFor([&timesLate] { return timesLate > 0; }));
  int timesLater = 0;
  const auto later = sources->whenReady([&timesLater] { ++timesLater; });
  ASSERT_TRUE(waitFor([&timesLater] { return timesLater > 0; }));
  EXPECT_EQ(timesReady, 1);
  EXPECT_EQ(timesLate, 1);
}

TEST_F(FreedesktopPowerSourcesTest, AnnounceABurstOnce) {
  startDaemon();
  startAndWaitUntilReady();
  for (int i = 0; i < 20; ++i) device.change({{percentage, 54.0 - i}});
  manager.change({{QStringLiteral("OnBattery"), false}});
  device.change({{state, 1U}});
  ASSERT_TRUE(waitFor([this] { return !percentsAnnounced.empty(); }));
  device.change({{percentage, 90.0}});
  ASSERT_TRUE(waitFor([this] { return percentsAnnounced.size() > 1; }));
  EXPECT_EQ(percentsAnnounced, (Percents{35, 90}));
}

TEST_F(FreedesktopPowerSourcesTest, AnnounceOnlyVisibleChanges) {
  startDaemon();
  startAndWaitUntilReady();
  device.change({{percentage, 55.4}});
  device.change({{QStringLiteral("TimeToEmpty"), qlonglong{3659}}});
  device.change({{QStringLiteral("UpdateTime"), qulonglong{2}}});
  ASSERT_TRUE(waitFor([this] { return percent() == 55.4; }));
  device.change({{percentage, 40.0}});
  ASSERT_TRUE(waitFor([this] { return !percentsAnnounced.empty(); }));
  EXPECT_EQ(percentsAnnounced, Percents{40});
}

TEST_F(FreedesktopPowerSourcesTest, AnnounceNothingAfterAChangeThatIsUndone) {
  startDaemon();
  startAndWaitUntilReady();
  manager.change({{QStringLiteral("OnBattery"), false}});
  manager.change({{QStringLiteral("OnBattery"), true}});
  device.change({{percentage, 54.0}});
  device.change({{percentage, 55.0}});
  ASSERT_TRUE(passedOn(daemon));
  letItSettle();
  EXPECT_EQ(percentsAnnounced, Percents{});
  device.change({{percentage, 53.0}});
  ASSERT_TRUE(waitFor([this] { return !percentsAnnounced.empty(); }));
  EXPECT_EQ(percentsAnnounced, Percents{53});
}

// A popover that opens while a burst settles, or a timer that is due then, reads the table.
TEST_F(FreedesktopPowerSourcesTest, AnnounceAChangeBackAfterTheChangeWasRead) {
  startDaemon();
  startAndWaitUntilReady();
  device.change({{percentage, 54.0}});
  ASSERT_TRUE(waitFor([this] { return percent() == 54; }));
  device.change({{percentage, 55.0}});
  ASSERT_TRUE(waitFor([this] { return !percentsAnnounced.empty(); }));
  EXPECT_EQ(percentsAnnounced, Percents{55});
}

TEST_F(FreedesktopPowerSourcesTest, AnnounceAChangeBackAfterTheWakeRefresh) {
  startDaemon();
  startAndWaitUntilReady();
  fallAsleep();
  device.change({{percentage, 15.0}});
  wake();
  ASSERT_TRUE(waitFor([this] { return percent() == 15; }));
  device.change({{percentage, 55.0}});
  ASSERT_TRUE(waitFor([this] { return !percentsAnnounced.empty(); }));
  EXPECT_EQ(percentsAnnounced, Percents{55});
  EXPECT_GE(announcedAfterWake.front(), 3500);
}

TEST_F(FreedesktopPowerSourcesTest, AnnounceTheLastStateOfAFlappingContact) {
  startDaemon();
  startAndWaitUntilReady();
  QElapsedTimer sincePluggedIn;
  sincePluggedIn.start();
  plugInAndLetItSettle();
  manager.change({{QStringLiteral("OnBattery"), true}});
  device.change({{percentage, 49.0}});
  ASSERT_TRUE(waitFor([this] { return percent() == 49; }));
  const auto meanwhile = powerSource();
  // On a busy machine three seconds may have passed, after which the change counts.
  if (sincePluggedIn.elapsed() < 3000) {
    EXPECT_EQ(meanwhile, "AC Power");
  }
  ASSERT_TRUE(waitFor([this] { return sourcesAnnounced.back() == "Battery Power"; }));
}

// A change of the charger during a sleep is no flapping contact.
TEST_F(FreedesktopPowerSourcesTest, ReadExternalPowerAsItIsAfterAWake) {
  startDaemon();
  startAndWaitUntilReady();
  plugInAndLetItSettle();
  fallAsleep();
  manager.change({{QStringLiteral("OnBattery"), true}});
  device.change({{percentage, 40.0}});
  wake();
  ASSERT_TRUE(waitFor([this] { return percent() == 40; }));
  EXPECT_EQ(powerSource(), "Battery Power");
}

TEST_F(FreedesktopPowerSourcesTest, UseTheKernelWhileTheDaemonHangs) {
  startDaemon();
  timing.silence = {.polling = 50ms, .answer = 50ms};
  startAndWaitUntilReady();
  device.silent = manager.silent = true;
  ASSERT_TRUE(waitFor([this] { return !percentsAnnounced.empty(); }));
  EXPECT_EQ(percentsAnnounced, Percents{80});
  device.silent = manager.silent = false;
  device.answer();
  ASSERT_TRUE(waitFor([this] { return percentsAnnounced.size() > 1; }));
  EXPECT_EQ(percentsAnnounced, (Percents{80, 55}));
}

TEST_F(FreedesktopPowerSourcesTest, UseTheDaemonAgainAfterAnySignalOfIt) {
  startDaemon();
  timing.silence = {.polling = 50ms, .answer = 1s};
  startAndWaitUntilReady();
  device.silent = manager.silent = true;
  ASSERT_TRUE(waitFor([this] { return percentsAnnounced == Percents{80}; }));
  device.change({{QStringLiteral("UpdateTime"), qulonglong{2}}});
  ASSERT_TRUE(waitFor([this] { return percentsAnnounced.size() > 1; }));
  EXPECT_EQ(percentsAnnounced[1], 55);
}

TEST_F(FreedesktopPowerSourcesTest, KeepADaemonThatAnswersWhateverTheKernelReports) {
  startDaemon();
  timing.silence = {.polling = 20ms, .answer = 5s};
  startAndWaitUntilReady();
  ASSERT_TRUE(waitFor([this] { return device.asked > 5 && manager.asked > 5; }));
  EXPECT_EQ(percent(), 55);
  EXPECT_EQ(percentsAnnounced, Percents{});
}

TEST_F(FreedesktopPowerSourcesTest, AnnounceTheChangesOfASleepOnceAfterTheWakeRefresh) {
  startDaemon();
  startAndWaitUntilReady();
  fallAsleep();
  manager.change({{QStringLiteral("OnBattery"), false}});
  wake();
  device.change({{percentage, 15.0}});
  ASSERT_TRUE(waitFor([this] { return percent() == 15; }));
  letItSettle();
  device.change({{percentage, 14.0}});
  ASSERT_TRUE(waitFor([this] { return !percentsAnnounced.empty(); }));
  EXPECT_GE(announcedAfterWake.front(), 3500);
  device.change({{percentage, 13.0}});
  ASSERT_TRUE(waitFor([this] { return percentsAnnounced.size() > 1; }));
  EXPECT_EQ(percentsAnnounced, (Percents{14, 13}));
}

TEST_F(FreedesktopPowerSourcesTest, AnnounceNothingDuringASleepAndNothingAfterOneWithoutAChange) {
  startDaemon();
  startAndWaitUntilReady();
  bool released = false;
  const auto release = hold.onRelease([&released] { released = true; });
  device.change({{percentage, 54.0}});
  ASSERT_TRUE(waitFor([this] { return percent() == 54; }));
  fallAsleep();
  device.change({{percentage, 53.0}});
  ASSERT_TRUE(passedOn(daemon));
  letItSettle();
  EXPECT_EQ(percentsAnnounced, Percents{});
  device.change({{percentage, 55.0}});
  ASSERT_TRUE(waitFor([this] { return percent() == 55; }));
  wake();
  ASSERT_TRUE(waitFor([&released] { return released; }));
  EXPECT_EQ(percentsAnnounced, Percents{});
  device.change({{percentage, 20.0}});
  ASSERT_TRUE(waitFor([this] { return !percentsAnnounced.empty(); }));
  EXPECT_EQ(percentsAnnounced, Percents{20});
}

TEST_F(FreedesktopPowerSourcesTest, LetABurstAtTheEndOfTheHoldSettle) {
  startDaemon();
  timing.settling = 5s;  // Longer than the hold.
  startAndWaitUntilReady();
  bool released = false;
  const auto release = hold.onRelease([&released] { released = true; });
  wake();
  device.change({{percentage, 15.0}});
  ASSERT_TRUE(waitFor([this] { return percent() == 15; }));
  device.change({{percentage, 14.0}});
  ASSERT_TRUE(passedOn(daemon));
  ASSERT_TRUE(waitFor([&released] { return released; }));
  EXPECT_EQ(percentsAnnounced, Percents{});
  ASSERT_TRUE(waitFor([this] { return !percentsAnnounced.empty(); }));
  EXPECT_EQ(percentsAnnounced, Percents{14});
}

TEST_F(FreedesktopPowerSourcesTest, KeepTheBatteryWhileTheDaemonRestarts) {
  startDaemon();
  startAndWaitUntilReady();
  stopDaemon();
  ASSERT_TRUE(waitFor([this] { return percent() != 55; }));
  EXPECT_EQ(percent(), 80);
  device.properties[percentage] = 54.0;
  startDaemon();
  ASSERT_TRUE(waitFor([this] { return percent() != 80; }));
  EXPECT_EQ(percent(), 54);
}

TEST_F(FreedesktopPowerSourcesTest, ReadTheKernelEachTimeWithoutADaemon) {
  startAndWaitUntilReady();
  folder.set("BAT0", "capacity", "42");
  EXPECT_EQ(percent(), 42);
}

TEST_F(FreedesktopPowerSourcesTest, KeepTheTableDuringAGlitch) {
  startDaemon();
  startAndWaitUntilReady();
  device.change({{percentage, 0.0}, {state, 0U}});
  device.change({{percentage, 50.0}, {state, 1U}});
  ASSERT_TRUE(waitFor([this] { return !percentsAnnounced.empty(); }));
  EXPECT_EQ(percentsAnnounced, Percents{50});
  device.change({{percentage, 0.0}, {state, 0U}});
  stopDaemon();
  ASSERT_TRUE(waitFor([this] { return percent() == 80; }));
}

TEST_F(FreedesktopPowerSourcesTest, AreReadyWithTheFirstRealReadingAfterAGlitch) {
  startDaemon();
  letTheBatteryGlitch();
  timing.daemon = 50ms;
  timing.glitch = 1h;
  start();
  waitUntilTheDaemonIsTooLate();
  EXPECT_EQ(timesReady, 0);
  device.change({{percentage, 15.0}, {state, 2U}});
  ASSERT_TRUE(waitFor([this] { return timesReady > 0; }));
  EXPECT_EQ(percentWhenReady, 15);
  EXPECT_EQ(percentsAnnounced, Percents{});
}

TEST_F(FreedesktopPowerSourcesTest, AreReadyWhenTheSignalsAfterAGlitchHaveSettled) {
  startDaemon();
  letTheBatteryGlitch();
  manager.properties[QStringLiteral("OnBattery")] = false;
  timing.glitch = 1h;
  start();
  ASSERT_TRUE(waitFor([this] { return device.asked == 1 && manager.asked == 1; }));
  device.change({{percentage, 15.0}, {state, 2U}});
  manager.change({{QStringLiteral("OnBattery"), true}});
  ASSERT_TRUE(waitFor([this] { return timesReady > 0; }));
  EXPECT_EQ(sourceWhenReady, "Battery Power");
  EXPECT_EQ(percentsAnnounced, Percents{});
}

TEST_F(FreedesktopPowerSourcesTest, AreReadyWhenTheBatteryIsTakenOutDuringAGlitch) {
  startDaemon();
  letTheBatteryGlitch();
  timing.glitch = 1h;
  start();
  ASSERT_TRUE(waitFor([this] { return device.asked == 1 && manager.asked == 1; }));
  device.change({{QStringLiteral("Type"), 0U}, {QStringLiteral("IsPresent"), false}});
  ASSERT_TRUE(waitFor([this] { return timesReady > 0; }));
  EXPECT_EQ(percentWhenReady, std::nullopt);
}

TEST_F(FreedesktopPowerSourcesTest, WaitForTheEndOfAGlitchOnlyForALimitedTime) {
  startDaemon();
  letTheBatteryGlitch();
  timing.daemon = 20ms;
  timing.glitch = 200ms;
  startAndWaitUntilReady();
  EXPECT_EQ(percentWhenReady, std::nullopt);
  device.change({{percentage, 15.0}, {state, 2U}});
  ASSERT_TRUE(waitFor([this] { return !percentsAnnounced.empty(); }));
  EXPECT_EQ(percentsAnnounced, Percents{15});
}

TEST_F(FreedesktopPowerSourcesTest, WaitDuringTheKernelsGlitchWithoutTheDaemon) {
  letTheBatteryGlitch();
  timing.daemon = 20ms;
  timing.glitch = 1h;
  start();
  waitUntilTheDaemonIsTooLate();
  EXPECT_EQ(timesReady, 0);
  startDaemon();
  device.change({{percentage, 15.0}, {state, 2U}});
  ASSERT_TRUE(waitFor([this] { return timesReady > 0; }));
  EXPECT_EQ(percentWhenReady, 15);
}

TEST_F(FreedesktopPowerSourcesTest, AreReadyWithAHangingDaemonAfterTheKernelsGlitch) {
  startDaemon();
  device.silent = manager.silent = true;
  letTheBatteryGlitch();
  timing.daemon = 20ms;
  timing.glitch = 1h;
  start();
  waitUntilTheDaemonIsTooLate();
  EXPECT_EQ(timesReady, 0);
  device.properties[percentage] = 15.0;
  device.properties[state] = 2U;
  device.answer();
  manager.answer();
  ASSERT_TRUE(waitFor([this] { return timesReady > 0; }));
  EXPECT_EQ(percentWhenReady, 15);
}

TEST_F(FreedesktopPowerSourcesTest, PreferABatteryToAnUninterruptibleSupply) {
  startDaemon();
  device.properties[QStringLiteral("Type")] = 3U;
  startAndWaitUntilReady();
  EXPECT_EQ(percentWhenReady, 80);
}

TEST_F(FreedesktopPowerSourcesTest, ReadTheSmartBatteryAlwaysFromTheKernel) {
  startDaemon();
  startAndWaitUntilReady();
  const auto properties = sources->smartBattery();
  ASSERT_TRUE(properties);
  EXPECT_EQ(properties->at("AppleRawMaxCapacity"), Value(50000));
  const FreedesktopPowerSources elsewhere(bus.join(), hold, folder.path() + "/missing");
  EXPECT_EQ(elsewhere.smartBattery(), std::nullopt);
}

TEST_F(FreedesktopPowerSourcesTest, NeverTakeOnePackForTheWholeBattery) {
  folder.add("BAT1", test::energyPack());
  startAndWaitUntilReady();
  ASSERT_EQ(sources->smartBattery()->at("AppleRawMaxCapacity"), Value(100000));
  ASSERT_EQ(percent(), 80);
  // The second pack's controller is busy for a moment.
  for (const auto& [attribute, text] : test::energyPack()) {
    if (attribute != "type") folder.remove("BAT1", attribute);
  }
  const auto properties = sources->smartBattery();
  ASSERT_TRUE(properties);
  EXPECT_FALSE(properties->contains("AppleRawMaxCapacity"));
  EXPECT_FALSE(properties->contains("DesignCapacity"));
  folder.set("BAT0", "capacity", "10");
  folder.set("BAT0", "energy_now", "5000000");
  EXPECT_EQ(percent(), 80);
}

TEST_F(FreedesktopPowerSourcesTest, WorkWithoutABus) {
  Bus nowhere(QStringLiteral("unix:path=/no such bus"));
  sources = std::make_unique<FreedesktopPowerSources>(nowhere, hold, folder.path());
  ready = sources->whenReady([this] { ++timesReady; });
  EXPECT_EQ(percent(), 80);
  EXPECT_TRUE(waitFor([this] { return timesReady == 1; }));
  sources.reset();
}

TEST_F(FreedesktopPowerSourcesTest, UseTheKernelWhileTheBusIsGone) {
  startDaemon();
  startAndWaitUntilReady();
  ASSERT_EQ(percent(), 55);
  bus.stop();
  EXPECT_TRUE(waitFor([this] { return percentsAnnounced == Percents{80}; }));
}

TEST_F(FreedesktopPowerSourcesTest, UseTheDaemonAgainOnARestartedBus) {
  startDaemon();
  startAndWaitUntilReady();
  bus.stop();
  ASSERT_TRUE(waitFor([this] { return percent() == 80; }));
  bus.start();
  auto restarted = bus.connect();
  FakeProperties newDevice{restarted,
                           QStringLiteral("/org/freedesktop/UPower/devices/DisplayDevice"),
                           QStringLiteral("org.freedesktop.UPower.Device")};
  FakeProperties newManager{restarted, QStringLiteral("/org/freedesktop/UPower"), service};
  newDevice.properties = device.properties;
  newManager.properties = manager.properties;
  ASSERT_TRUE(restarted.registerService(service));
  ASSERT_TRUE(waitFor([this] { return percent() == 55; }));
  newDevice.change({{percentage, 54.0}});
  EXPECT_TRUE(waitFor([this] { return percent() == 54; }));
}

TEST_F(FreedesktopPowerSourcesTest, MayBeDestroyedDuringACall) {
  startDaemon();
  device.silent = true;
  start();
  ASSERT_TRUE(waitFor([this] { return device.asked == 1; }));
  sources.reset();
  device.answer();
  device.change({{percentage, 54.0}});
  start();
  ASSERT_TRUE(waitFor([this] { return device.asked == 2; }));
}

TEST_F(FreedesktopPowerSourcesTest, MayBeDestroyedInTheirOwnCallbacks) {
  startDaemon();
  sources = std::make_unique<FreedesktopPowerSources>(bus.join(), hold, folder.path());
  ready = sources->whenReady([this] { sources.reset(); });
  ASSERT_TRUE(waitFor([this] { return sources == nullptr; }));
  startAndWaitUntilReady();
  observation = sources->observe([this] { sources.reset(); });
  device.change({{percentage, 54.0}});
  EXPECT_TRUE(waitFor([this] { return sources == nullptr; }));
}

}  // namespace
}  // namespace tollbeam
