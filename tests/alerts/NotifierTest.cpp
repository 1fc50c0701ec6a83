#include "alerts/Notifier.h"

#include <gtest/gtest.h>

#include "recorded/RecordedPlatform.h"

namespace tollbeam {
namespace {

class NotifierTest : public testing::Test {
 protected:
  void request() {
    notifier->requestIfNeeded();
    platform.mainQueue.drain();
  }
  void respond(const std::string& action) {
    bool completed = false;
    notifier->didReceiveNotificationResponse(action, [&] { completed = true; });
    EXPECT_TRUE(completed) << "at once, before the main queue runs";
  }

  RecordedPlatform platform{Date{0}};
  RecordedNotificationCenter& center = platform.notificationCenter;
  std::shared_ptr<Notifier> notifier =
      std::make_shared<Notifier>(center, platform.mainBundle, platform.mainQueue, platform.dialogs);
};

TEST_F(NotifierTest, IsAvailableOnlyInAnApplicationBundle) {
  EXPECT_TRUE(notifier->available());
  for (const char* extension : {"", "App", "APP", "bundle"}) {
    platform.mainBundle.extension = extension;
    EXPECT_FALSE(notifier->available()) << extension;
  }
  platform.mainBundle.extension = "app";
  platform.mainBundle.id.reset();
  EXPECT_FALSE(notifier->available());
}

TEST_F(NotifierTest, RegistersOneCategoryWithTheSnoozeAction) {
  notifier->setup();
  EXPECT_EQ(center.delegate.lock(), notifier);
  ASSERT_EQ(center.categories.size(), 1U);
  EXPECT_EQ(center.categories[0].identifier, "TB_ALERT");
  ASSERT_EQ(center.categories[0].actions.size(), 1U);
  EXPECT_EQ(center.categories[0].actions[0].identifier, "SNOOZE");
  EXPECT_EQ(center.categories[0].actions[0].title, "Snooze 1 hour");
}

TEST_F(NotifierTest, OutsideABundleRegistersAndAsksNothing) {
  platform.mainBundle.extension = "";
  center.status = AuthorizationStatus::notDetermined;
  notifier->setup();
  request();
  EXPECT_TRUE(center.categories.empty());
  EXPECT_TRUE(center.delegate.expired());
  EXPECT_EQ(center.statusQuestions, 0);
  EXPECT_TRUE(platform.dialogs.alerts.empty());
}

TEST_F(NotifierTest, AsksNothingOnceThePermissionIsDecided) {
  for (const auto status : {AuthorizationStatus::authorized, AuthorizationStatus::denied}) {
    center.status = status;
    request();
  }
  EXPECT_TRUE(platform.dialogs.alerts.empty());
}

TEST_F(NotifierTest, ExplainsBeforeTheDesktopAsks) {
  center.status = AuthorizationStatus::notDetermined;
  request();
  ASSERT_EQ(platform.dialogs.alerts.size(), 1U);
  EXPECT_EQ(platform.dialogs.alerts[0].message, "Allow notifications?");
  EXPECT_EQ(platform.dialogs.alerts[0].informativeText,
            "Tollbeam uses notifications to remind you to unplug at your chosen charge level, when "
            "the battery is low, and when you have been plugged in too long. macOS will ask for "
            "permission next.");
  EXPECT_EQ(platform.dialogs.alerts[0].buttons, (std::vector<Message>{"Continue", "Not Now"}));
  EXPECT_EQ(center.authorizationRequests, 0);
  platform.dialogs.alertAnswers[0](0);
  EXPECT_EQ(center.authorizationRequests, 1);
}

TEST_F(NotifierTest, NotNowAndClosingLeaveThePermissionOpen) {
  center.status = AuthorizationStatus::notDetermined;
  request();
  platform.dialogs.alertAnswers[0](1);
  request();
  platform.dialogs.alertAnswers[1](std::nullopt);
  request();
  EXPECT_EQ(platform.dialogs.alerts.size(), 3U) << "it asks again";
  EXPECT_EQ(center.authorizationRequests, 0);
}

TEST_F(NotifierTest, ShowsOneDialogAtATime) {
  center.status = AuthorizationStatus::notDetermined;
  request();
  request();
  EXPECT_EQ(platform.dialogs.alerts.size(), 1U);
}

TEST_F(NotifierTest, AsksNothingAgainWhileTheDesktopIsAsking) {
  center.status = AuthorizationStatus::notDetermined;
  request();
  platform.dialogs.alertAnswers[0](0);
  EXPECT_EQ(center.authorizationRequests, 1);
  // Another alert is switched on before the desktop has answered.
  notifier->requestIfNeeded();
  const auto answered = [&] { return platform.dialogs.alerts.size(); };
  platform.mainQueue.drain();
  EXPECT_EQ(answered(), 1U);
  request();
  EXPECT_EQ(answered(), 2U) << "the question was left open: it may come again";
}

TEST_F(NotifierTest, PresentsBannersWithSoundWhileInFront) {
  PresentationOptions options;
  notifier->willPresentNotification({}, [&](PresentationOptions given) { options = given; });
  EXPECT_EQ(options, (PresentationOptions{.banner = true, .sound = true}));
}

TEST_F(NotifierTest, ATapOnSnoozeCallsBackOnceOnTheMainQueue) {
  int snoozes = 0;
  notifier->onSnooze = [&] { ++snoozes; };
  respond("SNOOZE");
  EXPECT_EQ(snoozes, 0) << "not inside the delegate call";
  platform.mainQueue.drain();
  EXPECT_EQ(snoozes, 1);
}

TEST_F(NotifierTest, OtherResponsesCallNothing) {
  int snoozes = 0;
  notifier->onSnooze = [&] { ++snoozes; };
  for (const char* action : {"default", "snooze", "", "SNOOZE "}) respond(action);
  platform.mainQueue.drain();
  EXPECT_EQ(snoozes, 0);
}

TEST_F(NotifierTest, SnoozingWithoutACallbackOrAfterItsEndIsHarmless) {
  respond("SNOOZE");
  platform.mainQueue.drain();
  respond("SNOOZE");
  notifier.reset();
  platform.mainQueue.drain();
}

}  // namespace
}  // namespace tollbeam
