#include "history/HistoryStore.h"

#include <gtest/gtest.h>

#include <map>

#include "history/HistoryJson.h"
#include "recorded/RecordedPlatform.h"
#include "support/States.h"

namespace tollbeam {
namespace {

using test::chargingAt;
using test::onBattery;
using test::pluggedInAt;

constexpr Date kNow{1'700'000'000};
constexpr const char* kFile = "/support/Tollbeam/history.json";

class HistoryStoreTest : public testing::Test {
 protected:
  HistoryStore& load(const std::string& text) {
    files.files[kFile] = text;
    return store.emplace(files, kNow);
  }
  HistoryStore& fresh() { return store.emplace(files, kNow); }
  /// A history of samples `seconds` before kNow, plugged in unless negated.
  HistoryStore& withRun(const std::vector<std::pair<double, bool>>& run) {
    std::string text = "[";
    for (const auto& [age, plugged] : run) {
      if (text.size() > 1) text += ",";
      text += R"({"t":)" + std::to_string(kNow.secondsSince1970 - age) +
              R"(,"p":50,"c":false,"a":)" + (plugged ? "true}" : "false}");
    }
    return load(text + "]");
  }

  /// What the store keeps beside its file: text by suffix.
  [[nodiscard]] std::map<std::string, std::string> kept() const {
    std::map<std::string, std::string> texts;
    for (const auto& [path, text] : files.files) {
      if (path != kFile) texts[path.substr(std::string(kFile).size())] = text;
    }
    return texts;
  }

  RecordedFileManager files;
  std::optional<HistoryStore> store;
};

using Kept = std::map<std::string, std::string>;

/// A file of `count` samples, one a minute, the newest `age` seconds before kNow.
std::string monthOf(int count, double age = 60) {
  std::vector<Sample> samples;
  for (int i = count; i > 0; --i) {
    samples.push_back({.t = kNow.secondsSince1970 - age - 60 * (i - 1), .p = i % 101});
  }
  return *encodeSamples(samples);
}

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

TEST_F(HistoryStoreTest, ADamagedFileIsAnEmptyHistoryAndStaysUntilTheNextSave) {
  const std::string damaged = R"([{"t":1700000000,"p":3,"a":true}])";
  EXPECT_TRUE(load(damaged).samples().empty());
  EXPECT_EQ(files.files[kFile], damaged);
  store->save(kNow);
  EXPECT_EQ(files.files[kFile], "[]");
}

TEST_F(HistoryStoreTest, AFileThatCouldNotBeReadIsKeptByTheFirstSave) {
  files.unreadable.insert(kFile);
  const std::string month = monthOf(43000);
  EXPECT_TRUE(load(month).samples().empty());
  store->record(onBattery(55), kNow, false);
  EXPECT_EQ(kept(), (Kept{{".unreadable", month}}));
  EXPECT_EQ(files.files[kFile], R"([{"t":1700000000,"p":55,"c":false,"a":false}])");
}

TEST_F(HistoryStoreTest, EveryTruncationOfTheFileIsKept) {
  const std::string whole = monthOf(3);
  for (std::size_t length = 1; length < whole.size(); ++length) {
    files.files.clear();
    load(whole.substr(0, length)).record(onBattery(55), kNow, false);
    ASSERT_EQ(kept(), (Kept{{".damaged", whole.substr(0, length)}}));
  }
}

TEST_F(HistoryStoreTest, AnEmptyFileIsNotKept) {
  load("").record(onBattery(55), kNow, false);
  EXPECT_EQ(kept(), Kept{});
}

TEST_F(HistoryStoreTest, AMonthThatIsTooOldAtLoadIsKept) {
  const std::string month = monthOf(43000, 5 * 365 * 86400.0);
  load(month).record(onBattery(55), kNow, false);
  EXPECT_EQ(kept(), (Kept{{".pruned", month}}));
}

TEST_F(HistoryStoreTest, AClockJumpWhileRunningKeepsTheMonth) {
  const std::string month = monthOf(43000);
  load(month).record(onBattery(55), kNow + 5 * 365 * 86400.0, true);
  EXPECT_EQ(store->samples().size(), 1U);
  EXPECT_EQ(kept(), (Kept{{".pruned", month}}));
}

TEST_F(HistoryStoreTest, HalfOfTheSamplesMayBecomeTooOld) {
  const std::string old = R"({"t":1600000000,"p":3,"c":false,"a":true})";
  const std::string recent = R"({"t":1699990000,"p":3,"c":false,"a":true})";
  load("[" + old + "," + recent + "]").save(kNow);
  EXPECT_EQ(kept(), Kept{});
  const std::string mostlyOld = "[" + old + "," + old + "," + recent + "]";
  load(mostlyOld).save(kNow);
  EXPECT_EQ(kept(), (Kept{{".pruned", mostlyOld}}));
}

TEST_F(HistoryStoreTest, AFileThatComesAfterTheLaunchIsKept) {
  fresh();
  const std::string restored = monthOf(43000);
  files.files[kFile] = restored;
  store->record(onBattery(55), kNow, false);
  EXPECT_EQ(kept(), (Kept{{".changed", restored}}));
}

TEST_F(HistoryStoreTest, AFileThatIsReplacedBetweenSavesIsKept) {
  load(monthOf(3)).save(kNow);
  const std::string restored = monthOf(43000);
  files.files[kFile] = restored;
  store->save(kNow + 1);
  store->save(kNow + 2);
  EXPECT_EQ(kept(), (Kept{{".changed", restored}}));
  EXPECT_EQ(files.files[kFile], monthOf(3));
}

TEST_F(HistoryStoreTest, AFileThatIsReplacedRightAfterASaveIsKept) {
  fresh();
  const std::string restored = monthOf(5);
  files.replacement = restored;
  store->save(kNow);
  files.replacement.reset();
  store->save(kNow + 1);
  EXPECT_EQ(kept(), (Kept{{".changed", restored}}));
}

TEST_F(HistoryStoreTest, OfEachKindOnlyTheNewestIsKept) {
  load("first").save(kNow);
  load("second").save(kNow);
  EXPECT_EQ(kept(), (Kept{{".damaged", "second"}}));
}

TEST_F(HistoryStoreTest, AClockThatIsWrongAtEveryStartLeavesTheMonthKept) {
  const std::string month = monthOf(100);
  files.files[kFile] = month;
  for (int start = 0; start < 3; ++start) {
    const Date wrong = kNow + (start + 1) * 1e9;
    store.emplace(files, wrong);
    store->record(onBattery(55), wrong, true);
    EXPECT_EQ(kept(), (Kept{{".pruned", month}})) << start;
  }
}

TEST_F(HistoryStoreTest, AFileThatIsOnlyTouchedIsNotKept) {
  load(monthOf(3)).record(onBattery(55), kNow, true);
  ++files.touched[kFile];
  store->record(onBattery(54), kNow + 301, true);
  EXPECT_EQ(kept(), Kept{});
}

TEST_F(HistoryStoreTest, ATouchedFileThatCouldNotBeDecodedIsStillKept) {
  load("damaged");
  ++files.touched[kFile];
  store->save(kNow);
  EXPECT_EQ(kept(), (Kept{{".damaged", "damaged"}}));
}

TEST_F(HistoryStoreTest, SavingTwiceKeepsTheOldFileOnce) {
  load("damaged").save(kNow);
  store->save(kNow);
  EXPECT_EQ(kept(), (Kept{{".damaged", "damaged"}}));
  EXPECT_EQ(files.files[kFile], "[]");
}

TEST_F(HistoryStoreTest, AFailedSaveLeavesTheOldFileToTheNextOne) {
  files.failure = "No space left on device";
  load("damaged").save(kNow);
  EXPECT_EQ(files.files, (Kept{{kFile, "damaged"}}));
  files.failure.reset();
  store->save(kNow + 1);
  EXPECT_EQ(kept(), (Kept{{".damaged", "damaged"}}));
}

TEST_F(HistoryStoreTest, NoSampleIsLostWhicheverWritesFail) {
  // Every pattern of failures over eight saves, in which another program restores a month.
  const std::string month = monthOf(5);
  for (unsigned failures = 0; failures < 256; ++failures) {
    files.files.clear();
    fresh();
    for (int i = 0; i < 8; ++i) {
      if (i == 3) files.files[kFile] = month;
      files.failure = failures >> i & 1 ? std::optional<std::string>("full") : std::nullopt;
      store->record(onBattery(55 - i), kNow + 301.0 * i, false);
    }
    const bool savedSince = (failures >> 3) != 31;
    EXPECT_EQ(kept(), savedSince ? (Kept{{".changed", month}}) : Kept{}) << failures;
    files.failure.reset();
    store->save(kNow + 9000);
    EXPECT_EQ(kept(), (Kept{{".changed", month}})) << failures;
    EXPECT_EQ(files.files[kFile], encodeSamples(store->samples())) << failures;
    EXPECT_EQ(store->samples().size(), 8U);
  }
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

TEST_F(HistoryStoreTest, AResetRemovesEveryOlderHistory) {
  withRun({{60, true}});
  const std::string other = R"([{"t":1,"p":1,"c":false,"a":false}])";
  for (const char* suffix : {".unreadable", ".damaged", ".pruned", ".changed"}) {
    files.files[kFile + std::string(suffix)] = other;
  }
  files.files[kFile] = other;
  store->removeAll();
  store->save(kNow);
  EXPECT_EQ(files.files, (std::map<std::string, std::string>{{kFile, "[]"}}));
}

TEST_F(HistoryStoreTest, AResetRemovesAFileThatCouldNotBeRead) {
  load("[{]");
  store->removeAll();
  store->save(kNow);
  EXPECT_EQ(files.files, (std::map<std::string, std::string>{{kFile, "[]"}}));
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
