#include "platform/freedesktop/notifications/NotificationPermission.h"

#include <gtest/gtest.h>

#include "support/PermissionStore.h"
#include "support/PrivateBus.h"

namespace tollbeam {

namespace {

using Status = AuthorizationStatus;
using test::PermissionStore;
using test::waitFor;

constexpr const char* kUs = "org.tollbeam.Tollbeam";
const QStringList kYes{QStringLiteral("yes")};
const QStringList kNo{QStringLiteral("no")};

class NotificationPermissionTest : public testing::Test {
 protected:
  void startStore() {
    if (!PermissionStore::isInstalled()) GTEST_SKIP() << "xdg-permission-store is not installed";
    ASSERT_TRUE(store.start());
  }

  std::optional<Status> status() {
    std::optional<Status> answer;
    permission.askAgain([&](Status told) { answer = told; });
    EXPECT_EQ(answer, std::nullopt);
    waitFor([&] { return answer.has_value(); });
    return answer;
  }
  /// What a request that is added now would go by.
  std::optional<Status> known() {
    std::optional<Status> answer;
    permission.whenKnown([&](Status told) { answer = told; });
    waitFor([&] { return answer.has_value(); });
    return answer;
  }
  std::optional<bool> request() {
    std::optional<bool> answer;
    permission.request([&](bool granted) { answer = granted; });
    EXPECT_EQ(answer, std::nullopt);
    waitFor([&] { return answer.has_value(); });
    return answer;
  }

  test::PrivateBus bus;
  PermissionStore store{bus};
  NotificationPermission permission{bus.join(), kUs, std::chrono::milliseconds(300)};
};

}  // namespace

TEST_F(NotificationPermissionTest, WithoutAStoreEveryoneMayNotify) {
  EXPECT_EQ(status(), Status::authorized);
  EXPECT_EQ(request(), true);
}

TEST_F(NotificationPermissionTest, AnEmptyStoreHasNotBeenAsked) {
  startStore();
  EXPECT_EQ(status(), Status::notDetermined);
  store.set("org.example.Other", kNo);
  EXPECT_EQ(status(), Status::notDetermined);
}

TEST_F(NotificationPermissionTest, TheUsersWordInTheStoreCounts) {
  startStore();
  store.set(kUs, kNo);
  EXPECT_EQ(status(), Status::denied);
  store.set(kUs, kYes);
  EXPECT_EQ(status(), Status::authorized);
  store.set(kUs, {QStringLiteral("ask")});
  EXPECT_EQ(status(), Status::notDetermined);
  store.set(kUs, {});
  EXPECT_EQ(status(), Status::notDetermined);
}

TEST_F(NotificationPermissionTest, AGrantIsWrittenDown) {
  startStore();
  EXPECT_EQ(request(), true);
  EXPECT_EQ(store.permissions(kUs), kYes);
  EXPECT_EQ(known(), Status::authorized);
  EXPECT_EQ(status(), Status::authorized);
}

TEST_F(NotificationPermissionTest, ARefusalIsNotOverwritten) {
  startStore();
  store.set(kUs, kNo);
  EXPECT_EQ(request(), false);
  EXPECT_EQ(store.permissions(kUs), kNo);
}

TEST_F(NotificationPermissionTest, ChangesInTheSettingsAreFollowed) {
  startStore();
  store.set(kUs, kYes);
  EXPECT_EQ(known(), Status::authorized);
  store.set(kUs, kNo);
  EXPECT_TRUE(waitFor([&] { return known() == Status::denied; }));
  store.forgetAll();
  EXPECT_TRUE(waitFor([&] { return known() == Status::notDetermined; }));
}

TEST_F(NotificationPermissionTest, AStoreThatComesLaterIsAsked) {
  EXPECT_EQ(known(), Status::authorized);
  startStore();
  EXPECT_TRUE(waitFor([&] { return known() == Status::notDetermined; }));
}

TEST_F(NotificationPermissionTest, ARestartedStoreIsAskedAgain) {
  startStore();
  store.set(kUs, kNo);
  EXPECT_EQ(known(), Status::denied);
  store.stop();
  EXPECT_EQ(known(), Status::denied);
  startStore();
  store.set(kUs, kYes);
  EXPECT_TRUE(waitFor([&] { return known() == Status::authorized; }));
}

TEST_F(NotificationPermissionTest, AStoreOnARestartedBusIsAskedAndFollowed) {
  startStore();
  store.set(kUs, kYes);
  EXPECT_EQ(known(), Status::authorized);
  store.stop();
  bus.stop();
  bus.start();
  PermissionStore restarted{bus};
  ASSERT_TRUE(restarted.start());
  restarted.set(kUs, kNo);
  ASSERT_TRUE(waitFor([&] { return known() == Status::denied; }));
  restarted.set(kUs, kYes);
  EXPECT_TRUE(waitFor([&] { return known() == Status::authorized; }));
}

TEST_F(NotificationPermissionTest, AHungStoreKeepsNobodyWaiting) {
  startStore();
  store.set(kUs, kNo);
  store.hang();
  EXPECT_EQ(known(), Status::authorized);
  EXPECT_EQ(request(), true);
  store.goOn();
  EXPECT_TRUE(waitFor([&] { return known() == Status::denied; }));
}

TEST_F(NotificationPermissionTest, AStoreThatHangsLaterIsStillBelieved) {
  startStore();
  store.set(kUs, kNo);
  EXPECT_EQ(known(), Status::denied);
  store.hang();
  EXPECT_EQ(status(), Status::denied);
  store.goOn();
}

}  // namespace tollbeam
