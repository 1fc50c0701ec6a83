#include "model/AppModelTest.h"

namespace tollbeam {
namespace {

TEST_F(AppModelTest, ReadsNothingFromTheBatteryBeforeItStarts) {
  onBattery(50);
  created();
  EXPECT_EQ(model->state(), BatteryState{});
  EXPECT_FALSE(model->pluggedSince());
  EXPECT_EQ(model->historyVersion(), 0);
  EXPECT_EQ(samples(), 0U);
}

TEST_F(AppModelTest, ShowsAStoredSnoozeFromTheStart) {
  platform.userDefaults.set("snoozeUntil", kStart.secondsSince1970 + 60);
  EXPECT_EQ(created().snoozeUntil(), kStart + 60);
  platform.clock.set(kStart + 60);
  EXPECT_FALSE(created().snoozeUntil());
}

TEST_F(AppModelTest, StartRegistersNotificationsAndRefreshesOnce) {
  onBattery(50);
  started();
  EXPECT_EQ(platform.notificationCenter.categories.size(), 1U);
  EXPECT_EQ(model->state().percent, 50);
  EXPECT_EQ(model->historyVersion(), 1);
  EXPECT_EQ(samples(), 1U);
}

TEST_F(AppModelTest, RefreshesEverySixtySeconds) {
  onBattery(50);
  started();
  platform.mainQueue.advance(59.5);
  EXPECT_EQ(model->historyVersion(), 1);
  platform.mainQueue.advance(0.5);
  EXPECT_EQ(model->historyVersion(), 2);
  platform.mainQueue.advance(3600);
  EXPECT_EQ(model->historyVersion(), 62);
  EXPECT_EQ(samples(), 62U) << "the timer forces a sample each time";
}

TEST_F(AppModelTest, RefreshesOnPowerAndLowPowerModeChanges) {
  onBattery(50);
  started();
  onBattery(49);
  event();
  EXPECT_EQ(model->state().percent, 49);
  platform.processInfo.lowPowerMode = true;
  platform.processInfo.changes.notify();
  EXPECT_TRUE(model->state().lowPowerMode);
  EXPECT_EQ(model->historyVersion(), 3);
  EXPECT_EQ(samples(), 2U) << "an event stores only what moved";
}

TEST_F(AppModelTest, LaunchWhilePluggedInTakesTheHistorysEstimate) {
  platform.fileManager.files[kFile] =
      R"([{"t":1699999200,"p":80,"c":false,"a":true},{"t":1699999900,"p":80,"c":false,"a":true}])";
  pluggedInAt(80);
  started();
  EXPECT_EQ(model->pluggedSince(), Date{1699999200});
}

TEST_F(AppModelTest, LaunchWithoutAnEstimateCountsFromNow) {
  pluggedInAt(80);
  EXPECT_EQ(started().pluggedSince(), kStart);
}

TEST_F(AppModelTest, PluggingInWhileRunningCountsFromThatRefresh) {
  // The launch sees no battery, so the history's own run stays the last thing that it knows.
  platform.fileManager.files[kFile] = R"([{"t":1699999990,"p":80,"c":false,"a":true}])";
  started();
  EXPECT_FALSE(model->pluggedSince());
  platform.clock.set(kStart + 10);
  pluggedInAt(50);
  event();
  EXPECT_EQ(model->pluggedSince(), kStart + 10);
  platform.mainQueue.advance(600);
  EXPECT_EQ(model->pluggedSince(), kStart + 10);
}

TEST_F(AppModelTest, UnpluggingEndsTheCountAndPluggingInStartsANewOne) {
  pluggedInAt(50);
  started();
  onBattery(50);
  event();
  EXPECT_FALSE(model->pluggedSince());
  platform.clock.set(kStart + 99);
  pluggedInAt(50);
  event();
  EXPECT_EQ(model->pluggedSince(), kStart + 99);
  platform.powerSources.table.reset();
  event();
  EXPECT_FALSE(model->pluggedSince()) << "no battery";
}

TEST_F(AppModelTest, ALaunchStoresASampleEvenWhenNothingMoved) {
  platform.fileManager.files[kFile] = R"([{"t":1699999990,"p":50,"c":false,"a":false}])";
  onBattery(50);
  started();
  EXPECT_EQ(samples(), 2U);
}

TEST_F(AppModelTest, PublishesOnlyRealChanges) {
  onBattery(50);
  started();
  Identifiers order;
  QObject::connect(&*model, &AppModel::pluggedSinceChanged, &*model,
                   [&] { order.emplace_back("pluggedSince"); });
  QObject::connect(&*model, &AppModel::stateChanged, &*model, [&] { order.emplace_back("state"); });
  QObject::connect(&*model, &AppModel::historyVersionChanged, &*model,
                   [&] { order.emplace_back("historyVersion"); });
  event();
  EXPECT_EQ(order, Identifiers{"historyVersion"});
  order.clear();
  pluggedInAt(50);
  event();
  EXPECT_EQ(order, (Identifiers{"pluggedSince", "state", "historyVersion"}));
}

TEST_F(AppModelTest, PublishesTheStateBeforeTheHistory) {
  onBattery(50);
  started();
  std::size_t whenStateChanged = 0;
  std::size_t whenHistoryChanged = 0;
  QObject::connect(&*model, &AppModel::stateChanged, &*model,
                   [&] { whenStateChanged = samples(); });
  QObject::connect(&*model, &AppModel::historyVersionChanged, &*model,
                   [&] { whenHistoryChanged = samples(); });
  onBattery(49);
  event();
  EXPECT_EQ(whenStateChanged, 1U);
  EXPECT_EQ(whenHistoryChanged, 2U);
}

TEST_F(AppModelTest, ResettingEmptiesTheFileAndBumpsTheVersionAlone) {
  pluggedInAt(50);
  started();
  const BatteryState before = model->state();
  model->resetHistory();
  EXPECT_EQ(samples(), 0U);
  EXPECT_EQ(platform.fileManager.files[kFile], "[]");
  EXPECT_EQ(model->historyVersion(), 2);
  EXPECT_EQ(model->state(), before);
  EXPECT_EQ(model->pluggedSince(), kStart);
}

TEST_F(AppModelTest, ExportsTheHistoryToTheChosenFile) {
  onBattery(50);
  started();
  model->exportHistoryCSV();
  ASSERT_EQ(platform.dialogs.savePanels.size(), 1U);
  EXPECT_EQ(platform.dialogs.savePanels[0].suggestedName, "Tollbeam-history.csv");
  EXPECT_EQ(platform.dialogs.savePanels[0].contentType, "text/csv");
  platform.dialogs.savePanelAnswers[0]("/home/ada/h.csv");
  EXPECT_EQ(platform.fileManager.files["/home/ada/h.csv"],
            "timestamp,percent,charging,plugged_in\n2023-11-14T22:13:20Z,50,false,false\n");
  EXPECT_EQ(platform.fileManager.documents, std::set<std::string>{"/home/ada/h.csv"});
  EXPECT_TRUE(platform.dialogs.errors.empty());
}

TEST_F(AppModelTest, ACancelledExportIsSilent) {
  onBattery(50);
  started();
  const auto files = platform.fileManager.files;
  model->exportHistoryCSV();
  platform.dialogs.savePanelAnswers[0](std::nullopt);
  EXPECT_EQ(platform.fileManager.files, files);
  EXPECT_TRUE(platform.dialogs.errors.empty());
}

TEST_F(AppModelTest, AFailedExportIsShownAndLosesNothing) {
  onBattery(50);
  started();
  model->exportHistoryCSV();
  platform.fileManager.failure = "No space left on device";
  platform.dialogs.savePanelAnswers[0]("/full/h.csv");
  ASSERT_EQ(platform.dialogs.errors.size(), 1U);
  EXPECT_EQ(platform.dialogs.errors[0].first, "The history could not be saved to “/full/h.csv”.");
  EXPECT_EQ(platform.dialogs.errors[0].second, "No space left on device");
  EXPECT_EQ(samples(), 1U);
}

TEST_F(AppModelTest, CallbacksAfterItsEndDoNothing) {
  onBattery(50);
  started();
  model->exportHistoryCSV();
  platform.workspace.didWake.notify();
  const auto delegate = platform.notificationCenter.delegate;
  model.reset();
  platform.dialogs.savePanelAnswers[0]("/late.csv");
  event();
  platform.workspace.willSleep.notify();
  platform.mainQueue.advance(600);
  EXPECT_TRUE(delegate.expired());
  EXPECT_FALSE(platform.fileManager.files.contains("/late.csv"));
}

TEST_F(AppModelTest, ACallbackOnAnotherThreadStopsTheProcess) {
  onBattery(50);
  started();
  EXPECT_DEATH(
      {
        platform.mainQueue.onMainThread = false;
        event();
      },
      "");
}

}  // namespace
}  // namespace tollbeam
