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
    permission.askAgain([&](Status answered) { answer = answered; });
    EXPECT_EQ(answer, std::nullopt);
    waitFor([&] { return answer.has_value(); });
    return answer;
  }
  /// The status that a request added now would meet.
  std::optional<Status> known() {
    std::optional<Status> answer;
    permission.whenKnown([&](Status answered) { answer = answered; });
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

TEST_F(NotificationPermissionTest, IsAuthorizedWithoutAStore) {
  EXPECT_EQ(status(), Status::authorized);
  EXPECT_EQ(request(), true);
}

TEST_F(NotificationPermissionTest, IsNotDeterminedWhileTheStoreIsEmpty) {
  startStore();
  EXPECT_EQ(status(), Status::notDetermined);
  store.set("org.example.Other", kNo);
  EXPECT_EQ(status(), Status::notDetermined);
}

TEST_F(NotificationPermissionTest, IsWhatTheStoreHolds) {
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

TEST_F(NotificationPermissionTest, StoresAGrant) {
  startStore();
  EXPECT_EQ(request(), true);
  EXPECT_EQ(store.permissions(kUs), kYes);
  EXPECT_EQ(known(), Status::authorized);
  EXPECT_EQ(status(), Status::authorized);
}

TEST_F(NotificationPermissionTest, DoesNotOverwriteARefusal) {
  startStore();
  store.set(kUs, kNo);
  EXPECT_EQ(request(), false);
  EXPECT_EQ(store.permissions(kUs), kNo);
}

TEST_F(NotificationPermissionTest, FollowsChangesInTheStore) {
  startStore();
  store.set(kUs, kYes);
  EXPECT_EQ(known(), Status::authorized);
  store.set(kUs, kNo);
  EXPECT_TRUE(waitFor([&] { return known() == Status::denied; }));
  store.clear();
  EXPECT_TRUE(waitFor([&] { return known() == Status::notDetermined; }));
}

TEST_F(NotificationPermissionTest, AsksAStoreThatStartsLater) {
  EXPECT_EQ(known(), Status::authorized);
  startStore();
  EXPECT_TRUE(waitFor([&] { return known() == Status::notDetermined; }));
}

TEST_F(NotificationPermissionTest, AsksARestartedStoreAgain) {
  startStore();
  store.set(kUs, kNo);
  EXPECT_EQ(known(), Status::denied);
  store.stop();
  EXPECT_EQ(known(), Status::denied);
  startStore();
  store.set(kUs, kYes);
  EXPECT_TRUE(waitFor([&] { return known() == Status::authorized; }));
}

TEST_F(NotificationPermissionTest, AsksAndFollowsAStoreOnARestartedBus) {
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

TEST_F(NotificationPermissionTest, IsAuthorizedUntilAHungStoreAnswers) {
  startStore();
  store.set(kUs, kNo);
  store.hang();
  EXPECT_EQ(known(), Status::authorized);
  EXPECT_EQ(request(), true);
  store.resume();
  EXPECT_TRUE(waitFor([&] { return known() == Status::denied; }));
}

TEST_F(NotificationPermissionTest, KeepsTheLastAnswerOfAStoreThatHangs) {
  startStore();
  store.set(kUs, kNo);
  EXPECT_EQ(known(), Status::denied);
  store.hang();
  EXPECT_EQ(status(), Status::denied);
  store.resume();
}

}  // namespace tollbeam
