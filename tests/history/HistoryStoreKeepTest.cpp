#include "history/HistoryStoreTest.h"

#include "support/States.h"

namespace tollbeam {
namespace {

using test::onBattery;

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

}  // namespace
}  // namespace tollbeam
