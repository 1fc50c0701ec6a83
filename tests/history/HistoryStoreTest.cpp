#include "history/HistoryStoreTest.h"

#include "support/States.h"

namespace tollbeam {
namespace {

using test::chargingAt;
using test::onBattery;
using test::pluggedInAt;

TEST_F(HistoryStoreTest, StartsEmptyWithoutAFileAndMakesItsFolder) {
  EXPECT_TRUE(fresh().samples().empty());
  EXPECT_EQ(files.created, std::vector<std::string>{"/support/Tollbeam"});
  EXPECT_EQ(files.writes, 0);
}

TEST_F(HistoryStoreTest, LoadsSortsAndPrunesItsFile) {
  load(R"([{"t":1700000000,"p":3,"c":false,"a":true},{"t":1600000000,"p":1,"c":false,"a":false},
          {"t":1699990000.5,"p":2,"c":true,"a":true},{"t":1699990000.5,"p":9,"c":true,"a":true}])");
  EXPECT_EQ(store->samples(), (std::vector<Sample>{{1699990000.5, 2, true, true},
                                                   {1699990000.5, 9, true, true},
                                                   {1700000000, 3, false, true}}));
}

TEST_F(HistoryStoreTest, AFolderThatIsRemovedIsMadeAgainByTheNextSave) {
  fresh();
  files.created.clear();
  store->save(kNow);
  EXPECT_EQ(files.created, std::vector<std::string>{"/support/Tollbeam"});
}

TEST_F(HistoryStoreTest, TheFirstSampleIsSavedAtOnce) {
  fresh().record(onBattery(55), kNow, false);
  EXPECT_EQ(files.files[kFile], R"([{"t":1700000000,"p":55,"c":false,"a":false}])");
}

TEST_F(HistoryStoreTest, StoresChangedAndForcedSamples) {
  fresh().record(onBattery(55), kNow, false);
  store->record(onBattery(55), kNow + 1, false);
  EXPECT_EQ(store->samples().size(), 1U);
  store->record(onBattery(55), kNow + 2, true);
  EXPECT_EQ(store->samples().size(), 2U);
  store->record(onBattery(54), kNow + 3, false);
  EXPECT_EQ(store->samples().size(), 3U);
}

TEST_F(HistoryStoreTest, AChangeOfPowerOrChargingSavesAtOnce) {
  fresh().record(onBattery(55), kNow, false);
  store->record(pluggedInAt(55), kNow + 1, false);
  EXPECT_EQ(files.writes, 2);
  store->record(chargingAt(55), kNow + 2, false);
  EXPECT_EQ(files.writes, 3);
  EXPECT_EQ(store->samples().size(), 3U);
}

TEST_F(HistoryStoreTest, AChangeOfPercentSavesAfterMoreThan300Seconds) {
  fresh().record(onBattery(55), kNow, false);
  store->record(onBattery(54), kNow + 300, false);
  EXPECT_EQ(store->samples().size(), 2U);
  EXPECT_EQ(files.writes, 1);
  store->record(onBattery(53), kNow + 301, false);
  EXPECT_EQ(files.writes, 2);
}

TEST_F(HistoryStoreTest, TheFirstSampleAfterAResetIsNoChange) {
  fresh().record(pluggedInAt(55), kNow, false);
  store->removeAll();
  store->save(kNow + 10);
  store->record(onBattery(55), kNow + 20, false);
  EXPECT_EQ(store->samples().size(), 1U);
  EXPECT_EQ(files.files[kFile], "[]") << "saved ten seconds ago";
}

TEST_F(HistoryStoreTest, AFailedWriteKeepsTheSamplesAndStartsANewThrottle) {
  files.failure = "No space left on device";
  fresh().record(onBattery(55), kNow, false);
  store->record(onBattery(54), kNow + 200, false);
  EXPECT_EQ(files.writes, 1);
  files.failure.reset();
  store->record(onBattery(53), kNow + 301, false);
  EXPECT_EQ(files.files[kFile], R"([{"t":1700000000,"p":55,"c":false,"a":false},)"
                                R"({"t":1700000200,"p":54,"c":false,"a":false},)"
                                R"({"t":1700000301,"p":53,"c":false,"a":false}])");
}

TEST_F(HistoryStoreTest, WithoutABatteryNothingHappens) {
  load(R"([{"t":1690000000,"p":3,"c":false,"a":true},{"t":1699999999,"p":3,"c":false,"a":true}])");
  const auto before = store->samples();
  store->record(BatteryState{}, kNow + 30 * 86400, true);
  EXPECT_EQ(store->samples(), before);
  EXPECT_EQ(files.writes, 0);
}

TEST_F(HistoryStoreTest, KeepsASampleOfExactlyThirtyDays) {
  fresh().record(onBattery(1), kNow, true);
  store->record(onBattery(2), kNow + 1, true);
  store->record(onBattery(3), kNow + 2592000, true);
  EXPECT_EQ(store->samples().size(), 3U);
  store->record(onBattery(4), kNow + 2592000.5, true);
  EXPECT_EQ(store->samples().front().p, 2);
}

TEST_F(HistoryStoreTest, AHistoryThatIsAllTooOldIsEmptied) {
  load(R"([{"t":1600000000,"p":3,"c":false,"a":true},{"t":1600000060,"p":3,"c":false,"a":true}])");
  EXPECT_TRUE(store->samples().empty());
}

TEST_F(HistoryStoreTest, RangesIncludeTheirFirstInstant) {
  withRun({{30, true}, {20, true}, {10, true}});
  EXPECT_EQ(store->samples(kNow - 20.0).size(), 2U);
  EXPECT_EQ(store->samples(kNow - 19.0).size(), 1U);
  EXPECT_EQ(store->samples(kNow).size(), 0U);
  EXPECT_EQ(store->samples(Date::distantPast()).size(), 3U);
  store->removeAll();
  EXPECT_TRUE(store->samples(Date{0}).empty());
}

TEST_F(HistoryStoreTest, EstimatesTheStartOfTheCurrentRun) {
  EXPECT_EQ(withRun({{1200, true}, {600, true}, {60, true}}).pluggedSinceEstimate(kNow),
            kNow - 1200.0);
}

TEST_F(HistoryStoreTest, TheEstimateNeedsAFreshPluggedInSample) {
  EXPECT_FALSE(fresh().pluggedSinceEstimate(kNow));
  EXPECT_FALSE(withRun({{600, true}}).pluggedSinceEstimate(kNow));
  EXPECT_EQ(withRun({{599, true}}).pluggedSinceEstimate(kNow), kNow - 599.0);
  EXPECT_FALSE(withRun({{60, true}, {10, false}}).pluggedSinceEstimate(kNow));
}

TEST_F(HistoryStoreTest, TheEstimateStopsAtGapsAndUnpluggedSamples) {
  EXPECT_EQ(withRun({{910, true}, {10, true}}).pluggedSinceEstimate(kNow), kNow - 910.0);
  EXPECT_EQ(withRun({{910.001, true}, {10, true}}).pluggedSinceEstimate(kNow), kNow - 10.0);
  EXPECT_EQ(withRun({{90, true}, {60, false}, {30, true}, {10, true}}).pluggedSinceEstimate(kNow),
            kNow - 30.0);
}

TEST_F(HistoryStoreTest, SavingAnEmptiedHistoryWritesAnEmptyArray) {
  withRun({{60, true}}).removeAll();
  store->save(kNow);
  EXPECT_EQ(files.files[kFile], "[]");
}

TEST_F(HistoryStoreTest, AClockThatIsSetMovesTheLastSave) {
  fresh().record(onBattery(50), kNow, true);
  const int writes = files.writes;
  store->followClock(-7200, kNow - 7140.0);
  store->record(onBattery(49), kNow - 6900.0, true);
  EXPECT_EQ(files.writes, writes) << "300 seconds after the last save";
  store->record(onBattery(48), kNow - 6899.0, true);
  EXPECT_EQ(files.writes, writes + 1);
}

TEST_F(HistoryStoreTest, SamplesOfAWrongClockMoveWhenItIsSet) {
  const double t = kNow.secondsSince1970;
  load(R"([{"t":)" + std::to_string(t - 600) + R"(,"p":50,"c":false,"a":false}])");
  store->record(onBattery(49), Date{100}, true);
  store->record(onBattery(48), Date{160}, true);
  store->followClock(t - 160, kNow);
  store->record(onBattery(47), kNow + 60, true);
  std::vector<double> ages;
  for (const Sample& sample : store->samples()) ages.push_back(t - sample.t);
  EXPECT_EQ(ages, (std::vector<double>{600, 60, 0, -60}));
}

TEST(HistoryStoreDeathTest, AbortsWithoutAFolderForApplicationData) {
  RecordedFileManager files;
  files.support.reset();
  EXPECT_DEATH(HistoryStore(files, kNow), "");
}

}  // namespace
}  // namespace tollbeam
