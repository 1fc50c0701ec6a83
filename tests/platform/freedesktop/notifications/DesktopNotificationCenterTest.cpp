#include "platform/freedesktop/notifications/DesktopNotificationCenter.h"

#include <gtest/gtest.h>

#include <QDBusPendingCallWatcher>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <optional>
#include <thread>

#include "platform/freedesktop/notifications/DoNotDisturb.h"
#include "platform/freedesktop/notifications/RecordingServer.h"
#include "platform/freedesktop/session/QtMainQueue.h"
#include "support/PermissionStore.h"
#include "support/PrivateBus.h"

namespace tollbeam {

namespace {

using test::waitFor;
using Titles = std::vector<QString>;
using Ids = std::vector<uint>;

struct Delegate final : NotificationCenterDelegate {
  void willPresentNotification(
      const NotificationRequest& request,
      const std::function<void(PresentationOptions)>& completionHandler) override {
    asked.push_back(request.identifier);
    if (keeps) {
      kept.push_back(completionHandler);
    } else {
      completionHandler(options);
    }
  }
  void didReceiveNotificationResponse(const std::string& actionIdentifier,
                                      const std::function<void()>& completionHandler) override {
    actions.push_back(actionIdentifier);
    completionHandler();
  }

  PresentationOptions options{.banner = true, .sound = true};
  bool keeps = false;
  std::vector<std::function<void(PresentationOptions)>> kept;
  std::vector<std::string> asked;
  std::vector<std::string> actions;
};

NotificationRequest request(const std::string& identifier, const std::string& title) {
  return {.identifier = identifier,
          .content = {.title = title,
                      .body = "body",
                      .categoryIdentifier = "TB_ALERT",
                      .sound = NotificationSound{}}};
}

const auto notifications = QStringLiteral("org.freedesktop.Notifications");

/// Calls and waits for the answer: every message that arrived before it has been handled by then.
bool callAndWait(const Bus& connection, const QString& name, const char* member) {
  bool answered = false;
  const QDBusPendingCallWatcher call(connection.asyncCall(QDBusMessage::createMethodCall(
      name, QLatin1Char('/') + QString(name).replace(QLatin1Char('.'), QLatin1Char('/')), name,
      QLatin1String(member))));
  QObject::connect(&call, &QDBusPendingCallWatcher::finished, [&answered] { answered = true; });
  return waitFor([&answered] { return answered; });
}

class DesktopNotificationCenterTest : public testing::Test {
 protected:
  DesktopNotificationCenterTest() {
    center.setDelegate(delegate);
    center.setNotificationCategories(
        {{.identifier = "OTHER", .actions = {}},
         {.identifier = "TB_ALERT",
          .actions = {{.identifier = "SNOOZE", .title = "Snooze 1 hour"}}}});
  }

  void add(const std::string& identifier, const std::string& title) {
    center.add(request(identifier, title));
  }
  bool shows(const Titles& titles) {
    return waitFor([&] { return server.titles() == titles; });
  }
  /// Adds a bubble and waits until the answer with its id has come back, which is so when the next
  /// bubble of that identifier replaces it.
  void addShown(const std::string& identifier, const std::string& title) {
    add(identifier, title);
    ASSERT_TRUE(waitFor([&] { return !server.shown.empty(); }));
    settle();
  }
  /// Waits until every message to and from the server has arrived: one call is answered, and
  /// another that was made after its answer has taken effect.
  void settle() {
    auto silent = request("settle", "settle");
    silent.content.sound.reset();
    center.add(silent);
    uint id = 0;
    ASSERT_TRUE(waitFor([&] {
      for (const auto& [each, call] : server.shown) {
        if (call.summary == QLatin1String("settle")) id = each;
      }
      return id != 0;
    }));
    center.remove("settle");
    ASSERT_TRUE(waitFor([&] { return !server.shown.contains(id); }));
  }

  void addSilentAndTwoWithSound() {
    auto silent = request("health", "worn");
    silent.content.sound.reset();
    center.add(silent);
    add("low", "15%");
    auto named = request("tooLong", "8 hours");
    named.content.sound = NotificationSound{.name = "Glass"};
    center.add(named);
  }
  /// Waits until every sound that is to be played has been played.
  void settleSounds() {
    bool asked = false;
    askDoNotDisturb(connection, &server, [&](bool) { asked = true; });
    ASSERT_TRUE(waitFor([&] { return asked; }));
  }

  test::PrivateBus bus;
  test::RecordingServer server{bus};
  QtMainQueue queue;
  std::shared_ptr<Delegate> delegate = std::make_shared<Delegate>();
  std::vector<NotificationSound> played;
  Bus& connection = bus.join();
  DesktopNotificationCenter center{
      connection, queue,
      DesktopNotificationCenter::Options{
          .playSound = [this](const auto& sound) { played.push_back(sound); },
          .patience = std::chrono::seconds(2)}};
};

class NotificationCenterWithStoreTest : public DesktopNotificationCenterTest {
 protected:
  void SetUp() override {
    if (!test::PermissionStore::isInstalled()) {
      GTEST_SKIP() << "xdg-permission-store is not installed";
    }
    ASSERT_TRUE(store.start());
  }

  test::PermissionStore store{bus};
};

}  // namespace

TEST_F(DesktopNotificationCenterTest, ShowsARequestWithTheActionsOfItsCategory) {
  server.start();
  add("low", "Battery low");
  ASSERT_TRUE(shows({QStringLiteral("Battery low")}));
  EXPECT_EQ(server.calls[0].body, QLatin1String("body"));
  EXPECT_EQ(server.calls[0].appName, QLatin1String("Tollbeam"));
  EXPECT_EQ(server.calls[0].actions,
            (QStringList{QStringLiteral("default"), QString(), QStringLiteral("SNOOZE"),
                         QStringLiteral("Snooze 1 hour")}));
  EXPECT_EQ(server.calls[0].hints.value(QStringLiteral("urgency")), QVariant::fromValue(uchar{1}));
  EXPECT_EQ(server.timesAsked, 1);
}

TEST_F(DesktopNotificationCenterTest, ReplacesTheRequestOfTheSameIdentifier) {
  server.start();
  addShown("low", "15%");
  add("low", "10%");
  add("tooLong", "8 hours");
  EXPECT_TRUE(shows({QStringLiteral("10%"), QStringLiteral("8 hours")}));
}

TEST_F(DesktopNotificationCenterTest, ReplacesABubbleThatHasNoIdYet) {
  server.start();
  server.holdsAnswers = true;
  add("low", "1");
  ASSERT_TRUE(shows({QStringLiteral("1")}));
  add("low", "2");
  add("low", "3");
  add("tooLong", "other");
  ASSERT_TRUE(shows({QStringLiteral("1"), QStringLiteral("other")}));
  server.answerHeld();
  EXPECT_TRUE(shows({QStringLiteral("3"), QStringLiteral("other")}));
  EXPECT_EQ(server.calls.size(), 3U);
  EXPECT_EQ(server.calls[2].replacesId, 1U);
}

TEST_F(DesktopNotificationCenterTest, PassesAnActionToTheDelegate) {
  server.start();
  addShown("low", "15%");
  server.choose(server.shown.begin()->first, "SNOOZE");
  EXPECT_TRUE(waitFor([&] { return !delegate->actions.empty(); }));
  addShown("low", "10%");
  server.choose(server.shown.begin()->first, "default");
  EXPECT_TRUE(waitFor([&] { return delegate->actions.size() == 2; }));
  EXPECT_EQ(delegate->actions, (std::vector<std::string>{"SNOOZE", "default"}));
}

TEST_F(DesktopNotificationCenterTest, ClosesAnAnsweredBubbleThatTheServerKeeps) {
  server.start();
  addShown("low", "15%");
  Q_EMIT server.ActionInvoked(server.shown.begin()->first, QStringLiteral("SNOOZE"));
  EXPECT_TRUE(shows({}));
  EXPECT_EQ(delegate->actions, (std::vector<std::string>{"SNOOZE"}));
}

TEST_F(DesktopNotificationCenterTest, IgnoresForgedActionsAndThoseOnOtherBubbles) {
  server.start();
  addShown("low", "15%");
  const uint ours = server.shown.begin()->first;
  // The same signal from another program on the bus.
  QDBusMessage forged = QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/Notifications"),
                                                   QStringLiteral("org.freedesktop.Notifications"),
                                                   QStringLiteral("ActionInvoked"));
  forged << ours << QStringLiteral("forged");
  bus.connect().send(forged);
  Q_EMIT server.ActionInvoked(ours + 1000, QStringLiteral("stranger"));
  Q_EMIT server.ActionInvoked(0, QStringLiteral("none"));
  settle();
  server.choose(ours, "SNOOZE");
  EXPECT_TRUE(waitFor([&] { return !delegate->actions.empty(); }));
  EXPECT_EQ(delegate->actions, (std::vector<std::string>{"SNOOZE"}));
}

TEST_F(DesktopNotificationCenterTest, DoesNotReplaceAClosedBubble) {
  server.start();
  addShown("low", "15%");
  server.close(server.shown.begin()->first, 1);
  settle();
  const auto before = server.calls.size();
  add("low", "10%");
  EXPECT_TRUE(shows({QStringLiteral("10%")}));
  EXPECT_EQ(server.calls.at(before).replacesId, 0U);
}

TEST_F(DesktopNotificationCenterTest, ReplacesNoOtherProgramsBubbleAfterARestart) {
  server.start();
  addShown("low", "15%");
  const uint ours = server.shown.begin()->first;
  server.stop();
  server.capabilities = {QStringLiteral("body")};
  server.start();
  // A bubble of another program gets the number that ours had.
  DesktopNotificationCenter stranger(bus.join(), queue, {});
  stranger.add(request("stranger", "stranger"));
  ASSERT_TRUE(waitFor([&] { return server.shown.contains(ours); }));
  add("low", "<10%>");
  ASSERT_TRUE(waitFor([&] { return server.shown.size() == 2; }));
  EXPECT_EQ(server.shown[ours].summary, QLatin1String("stranger"));
  // The new server was asked for its capabilities.
  EXPECT_EQ(server.timesAsked, 3);
  EXPECT_TRUE(server.calls.back().actions.isEmpty());
  // Actions on the other program's bubble are not ours.
  server.choose(ours, "SNOOZE");
  settle();
  EXPECT_TRUE(delegate->actions.empty());
}

TEST_F(DesktopNotificationCenterTest, ARestartOfTheServerCausesNoCall) {
  server.start();
  addShown("low", "15%");
  server.stop();
  server.start();
  // The restart is known once the bus answers, and a call because of it would precede the test's
  // own.
  ASSERT_TRUE(callAndWait(connection, QStringLiteral("org.freedesktop.DBus"), "GetId"));
  ASSERT_TRUE(callAndWait(connection, notifications, "GetCapabilities"));
  EXPECT_EQ(server.timesAsked, 2);
}

TEST_F(DesktopNotificationCenterTest, ShowsTheNewestOfEachIdentifierOnceAServerStarts) {
  add("low", "15%");
  add("low", "10%");
  add("tooLong", "8 hours");
  add("health", "gone");
  center.remove("health");
  server.start();
  EXPECT_TRUE(shows({QStringLiteral("10%"), QStringLiteral("8 hours")}));
  EXPECT_EQ(server.calls.size(), 2U);
}

TEST_F(DesktopNotificationCenterTest, RemovesAWaitingRequest) {
  add("low", "15%");
  bool answered = false;
  center.getAuthorizationStatus([&](auto) { answered = true; });
  ASSERT_TRUE(waitFor([&] { return answered; }));
  center.remove("low");
  server.start();
  add("tooLong", "8 hours");
  EXPECT_TRUE(shows({QStringLiteral("8 hours")}));
  EXPECT_EQ(server.calls.size(), 1U);
}

TEST_F(DesktopNotificationCenterTest, RemovesAShownRequest) {
  server.start();
  addShown("low", "15%");
  server.closeRequests.clear();
  const uint id = server.shown.begin()->first;
  center.remove("low");
  EXPECT_TRUE(shows({}));
  EXPECT_EQ(server.closeRequests, Ids{id});
  center.remove("low");
  center.remove("never");
  settle();
  EXPECT_EQ(server.closeRequests.size(), 2U);
}

TEST_F(DesktopNotificationCenterTest, RemovesARequestThatTheServerHasNotAnsweredYet) {
  server.start();
  server.holdsAnswers = true;
  add("low", "15%");
  ASSERT_TRUE(shows({QStringLiteral("15%")}));
  center.remove("low");
  server.answerHeld();
  EXPECT_TRUE(shows({}));
  EXPECT_EQ(server.closeRequests, Ids{1});
}

TEST_F(DesktopNotificationCenterTest, KeepsARequestAddedAfterARemovedOne) {
  server.start();
  server.holdsAnswers = true;
  add("low", "15%");
  ASSERT_TRUE(shows({QStringLiteral("15%")}));
  center.remove("low");
  add("low", "10%");
  server.answerHeld();
  EXPECT_TRUE(shows({QStringLiteral("10%")}));
  EXPECT_TRUE(server.closeRequests.empty());
}

TEST_F(DesktopNotificationCenterTest, ShowsOnTheNextServerWhatADyingOneDidNot) {
  server.start();
  server.holdsAnswers = true;
  add("low", "15%");
  ASSERT_TRUE(shows({QStringLiteral("15%")}));
  server.stop();
  server.holdsAnswers = false;
  server.start();
  EXPECT_TRUE(shows({QStringLiteral("15%")}));
  EXPECT_EQ(server.calls[1].replacesId, 0U);
}

TEST_F(DesktopNotificationCenterTest, DropsABubbleWithWhichTwoServersDied) {
  server.start();
  server.holdsAnswers = true;
  add("low", "deadly");
  for (int deaths = 1; deaths <= 2; ++deaths) {
    ASSERT_TRUE(shows({QStringLiteral("deadly")}));
    server.stop();
    server.start();
  }
  server.holdsAnswers = false;
  add("tooLong", "8 hours");
  ASSERT_TRUE(shows({QStringLiteral("8 hours")}));
  settle();
  EXPECT_EQ(server.titles(), Titles{QStringLiteral("8 hours")});
  // The next request of this identifier is shown.
  add("low", "15%");
  EXPECT_TRUE(shows({QStringLiteral("8 hours"), QStringLiteral("15%")}));
}

TEST_F(DesktopNotificationCenterTest, AssumesTheUsualCapabilitiesWhenTheServerListsNone) {
  server.hidesCapabilities = true;
  server.start();
  add("low", "15%");
  ASSERT_TRUE(waitFor([&] { return !server.calls.empty(); }));
  EXPECT_TRUE(server.calls[0].actions.contains(QStringLiteral("SNOOZE")));
  EXPECT_TRUE(waitFor([&] { return played.size() == 1; }));
}

// A service file for a program that never takes the name, as for a masked unit: the bus gives up
// before we do, or long after our call for the capabilities has timed out.
TEST(NotificationServerActivation, KeepsTheRequestWhenNoServerCanBeStarted) {
  for (const int milliseconds : {300, 5500}) {
    test::PrivateBus bus({notifications, QStringLiteral("/bin/sleep 60"), milliseconds});
    Bus& connection = bus.join();
    QtMainQueue queue;
    DesktopNotificationCenter center(connection, queue, {});
    center.add(request("low", "15%"));
    bool known = false;
    center.getAuthorizationStatus([&](auto) { known = true; });
    ASSERT_TRUE(waitFor([&] { return known; }));
    // Twice: after a misread answer there would be another attempt.
    ASSERT_TRUE(callAndWait(connection, notifications, "GetCapabilities"));
    ASSERT_TRUE(callAndWait(connection, notifications, "GetCapabilities"));
    test::RecordingServer server(bus);
    server.start();
    EXPECT_TRUE(waitFor([&] { return server.titles() == Titles{QStringLiteral("15%")}; }))
        << milliseconds;
  }
}

// The server is a program that only makes a file, which shows the attempt to start it.
TEST(NotificationServerActivation, StartsAServerForAWaitingRequestOnARestartedBus) {
  const QTemporaryDir folder;
  const QString mark = folder.filePath(QStringLiteral("started"));
  test::PrivateBus bus({notifications, QStringLiteral("/usr/bin/touch ") + mark});
  QtMainQueue queue;
  DesktopNotificationCenter center(bus.join(), queue, {});
  center.add(request("low", "15%"));
  ASSERT_TRUE(waitFor([&] { return QFile::exists(mark); }));
  bus.stop();
  ASSERT_TRUE(QFile::remove(mark));
  bus.start();
  EXPECT_TRUE(waitFor([&] { return QFile::exists(mark); }));
}

TEST_F(DesktopNotificationCenterTest, ShowsOnTheNextServerWhatAReplacedOneDidNot) {
  server.start();
  server.holdsAnswers = true;
  add("low", "15%");
  ASSERT_TRUE(shows({QStringLiteral("15%")}));
  test::RecordingServer next(bus);
  server.giveUpName();
  next.start();
  server.stop();
  EXPECT_TRUE(waitFor([&] { return next.titles() == std::vector{QStringLiteral("15%")}; }));
}

TEST_F(DesktopNotificationCenterTest, ShowsOnTheNextBusWhatWasAddedWithoutOne) {
  server.start();
  addShown("low", "15%");
  bus.stop();
  ASSERT_TRUE(waitFor([this] { return !connection.isConnected(); }));
  add("low", "10%");
  add("tooLong", "8 hours");
  bus.start();
  server.start();
  ASSERT_TRUE(shows({QStringLiteral("10%"), QStringLiteral("8 hours")}));
  settle();
  server.choose(server.shown.begin()->first, "SNOOZE");
  EXPECT_TRUE(waitFor([&] { return !delegate->actions.empty(); }));
}

TEST_F(DesktopNotificationCenterTest, ShowsOnTheNextBusWhatTheOldOneLost) {
  server.start();
  server.holdsAnswers = true;
  add("low", "15%");
  ASSERT_TRUE(shows({QStringLiteral("15%")}));
  bus.stop();
  server.holdsAnswers = false;
  bus.start();
  server.start();
  EXPECT_TRUE(shows({QStringLiteral("15%")}));
}

TEST_F(DesktopNotificationCenterTest, DropsARefusedRequestAndShowsTheNext) {
  server.start();
  server.fails = QStringLiteral("org.freedesktop.Notifications.Error.ExcessNotificationGeneration");
  add("low", "15%");
  ASSERT_TRUE(waitFor([&] { return server.calls.size() == 1; }));
  server.fails.clear();
  add("low", "10%");
  EXPECT_TRUE(shows({QStringLiteral("10%")}));
  EXPECT_EQ(server.calls.size(), 2U);
}

TEST_F(DesktopNotificationCenterTest, TheDelegateDecidesHowARequestIsPresented) {
  server.start();
  delegate->options = {.banner = false, .sound = true};
  add("low", "15%");
  ASSERT_TRUE(waitFor([&] { return delegate->asked.size() == 1; }));
  delegate->options = {.banner = true, .sound = false};
  add("tooLong", "8 hours");
  EXPECT_TRUE(shows({QStringLiteral("8 hours")}));
  EXPECT_EQ(server.calls.size(), 1U);
  EXPECT_EQ(server.calls[0].hints.value(QStringLiteral("suppress-sound")), QVariant(true));
}

TEST_F(DesktopNotificationCenterTest, ShowsRequestsWithoutADelegate) {
  server.start();
  delegate.reset();
  add("low", "15%");
  ASSERT_TRUE(shows({QStringLiteral("15%")}));
  server.choose(1, "SNOOZE");
  settle();
}

TEST_F(DesktopNotificationCenterTest, TheDelegateMayAnswerLaterAndOnAnotherThread) {
  server.start();
  delegate->keeps = true;
  add("low", "15%");
  add("low", "10%");
  add("tooLong", "8 hours");
  ASSERT_TRUE(waitFor([&] { return delegate->kept.size() == 3; }));
  center.remove("tooLong");
  std::thread([&] {
    for (const auto& answer : delegate->kept) answer({.banner = true, .sound = true});
  }).join();
  EXPECT_TRUE(shows({QStringLiteral("10%")}));
  EXPECT_EQ(server.calls.size(), 1U);
}

TEST_F(DesktopNotificationCenterTest, IgnoresAnAnswerOfTheDelegateAfterItsEnd) {
  server.start();
  delegate->keeps = true;
  {
    DesktopNotificationCenter ending(bus.join(), queue, {});
    ending.setDelegate(delegate);
    ending.add(request("low", "15%"));
    ASSERT_TRUE(waitFor([&] { return delegate->kept.size() == 1; }));
  }
  delegate->kept[0]({.banner = true, .sound = true});
  delegate->keeps = false;
  add("tooLong", "8 hours");
  EXPECT_TRUE(shows({QStringLiteral("8 hours")}));
}

TEST_F(DesktopNotificationCenterTest, CanEndAtAnyPoint) {
  server.start();
  server.holdsAnswers = true;
  {
    DesktopNotificationCenter ending(bus.join(), queue, {});
    ending.add(request("low", "15%"));
    ending.getAuthorizationStatus([](auto) { ADD_FAILURE() << "called after the end"; });
  }
  {
    DesktopNotificationCenter ending(bus.join(), queue, {});
    ending.add(request("low", "10%"));
    ASSERT_TRUE(shows({QStringLiteral("10%")}));
  }
  server.answerHeld();
  addShown("tooLong", "8 hours");
}

TEST_F(DesktopNotificationCenterTest, PlaysTheSoundsThatTheServerDoesNot) {
  server.capabilities = {QStringLiteral("actions")};
  server.start();
  addShown("low", "15%");
  auto named = request("tooLong", "8 hours");
  named.content.sound = NotificationSound{.name = "Glass"};
  center.add(named);
  auto silent = request("health", "worn");
  silent.content.sound.reset();
  center.add(silent);
  EXPECT_TRUE(waitFor([&] { return played.size() == 2; }));
  settle();
  EXPECT_EQ(played, (std::vector<NotificationSound>{{}, {.name = "Glass"}}));
  for (const auto& call : server.calls) {
    EXPECT_EQ(call.hints.value(QStringLiteral("suppress-sound")), QVariant(true));
    EXPECT_FALSE(call.hints.contains(QStringLiteral("sound-name")));
  }
}

TEST_F(DesktopNotificationCenterTest, PlaysTheSoundOfAReplacementToo) {
  server.capabilities = {QStringLiteral("actions")};
  server.start();
  addShown("low", "15%");
  EXPECT_TRUE(waitFor([&] { return played.size() == 1; }));
  add("low", "10%");
  EXPECT_TRUE(waitFor([&] { return played.size() == 2; }));
}

TEST_F(DesktopNotificationCenterTest, SendsOneSoundForRequestsThatComeTogether) {
  server.start();
  addSilentAndTwoWithSound();
  ASSERT_TRUE(waitFor([&] { return server.calls.size() == 3; }));
  std::vector<bool> suppressed;
  for (const auto& call : server.calls) {
    suppressed.push_back(call.hints.contains(QStringLiteral("suppress-sound")));
  }
  EXPECT_EQ(suppressed, (std::vector<bool>{true, false, true}));
}

TEST_F(DesktopNotificationCenterTest, PlaysOneSoundForRequestsThatComeTogether) {
  server.capabilities = {QStringLiteral("actions")};
  server.start();
  addSilentAndTwoWithSound();
  ASSERT_TRUE(waitFor([&] { return !played.empty(); }));
  settle();
  settleSounds();
  EXPECT_EQ(played, std::vector<NotificationSound>{{}});
}

TEST_F(DesktopNotificationCenterTest, PlaysNothingDuringDoNotDisturb) {
  server.capabilities = {QStringLiteral("actions")};
  server.start();
  server.inhibited = true;
  addShown("low", "15%");
  settleSounds();
  EXPECT_TRUE(played.empty());
  server.inhibited = false;
  add("low", "10%");
  EXPECT_TRUE(waitFor([&] { return played.size() == 1; }));
}

TEST_F(DesktopNotificationCenterTest, ClosesItsBubblesAtTheEnd) {
  server.start();
  {
    DesktopNotificationCenter ending(bus.join(), queue, {});
    ending.add(request("low", "15%"));
    ending.add(request("tooLong", "8 hours"));
    ASSERT_TRUE(waitFor([&] { return server.shown.size() == 2; }));
    // The first bubble's number has arrived when it is replaced.
    ending.add(request("low", "10%"));
    ASSERT_TRUE(shows({QStringLiteral("10%"), QStringLiteral("8 hours")}));
  }
  EXPECT_TRUE(shows({}));
}

TEST_F(DesktopNotificationCenterTest, ClosesABubbleAtTheEndWhoseIdHasNotArrived) {
  server.start();
  {
    DesktopNotificationCenter ending(bus.join(), queue, {});
    ending.add(request("low", "15%"));
    ASSERT_TRUE(shows({QStringLiteral("15%")}));
  }
  EXPECT_TRUE(shows({}));
}

TEST_F(DesktopNotificationCenterTest, PlaysNoSoundForARefusedRequest) {
  server.capabilities = {QStringLiteral("actions")};
  server.start();
  server.fails = QStringLiteral("org.freedesktop.Notifications.Error.ExcessNotificationGeneration");
  add("low", "15%");
  ASSERT_TRUE(waitFor([&] { return server.calls.size() == 1; }));
  server.fails.clear();
  settle();
  EXPECT_TRUE(played.empty());
}

TEST_F(DesktopNotificationCenterTest, PlaysNoSoundThatTheServerPlays) {
  server.start();
  addShown("low", "15%");
  EXPECT_EQ(server.calls[0].hints.value(QStringLiteral("sound-name")),
            QLatin1String("message-new-instant"));
  auto named = request("tooLong", "8 hours");
  named.content.sound = NotificationSound{.name = "No Such Sound"};
  center.add(named);
  settle();
  EXPECT_EQ(server.calls[2].hints.value(QStringLiteral("sound-name")),
            QLatin1String("No Such Sound"));
  add("low", "10%");
  settle();
  for (const auto& call : server.calls) {
    EXPECT_EQ(call.hints.contains(QStringLiteral("suppress-sound")),
              call.summary == QLatin1String("settle"));
  }
  EXPECT_TRUE(played.empty());
}

TEST_F(NotificationCenterWithStoreTest, ShowsNothingWithoutPermission) {
  server.start();
  store.set("org.tollbeam.Tollbeam", {QStringLiteral("no")});
  add("low", "15%");
  std::optional<AuthorizationStatus> status;
  center.getAuthorizationStatus([&](auto answer) { status = answer; });
  ASSERT_TRUE(waitFor([&] { return status.has_value(); }));
  EXPECT_EQ(status, AuthorizationStatus::denied);
  store.set("org.tollbeam.Tollbeam", {QStringLiteral("yes")});
  EXPECT_TRUE(waitFor([&] {
    add("tooLong", "8 hours");
    return server.titles() == Titles{QStringLiteral("8 hours")};
  }));
  EXPECT_EQ(delegate->asked.front(), "tooLong");
}

TEST_F(NotificationCenterWithStoreTest, ShowsRequestsWhilePermissionIsNotDetermined) {
  server.start();
  add("low", "15%");
  EXPECT_TRUE(shows({QStringLiteral("15%")}));
}

TEST_F(NotificationCenterWithStoreTest, ShowsARequestLaterWhenTheStoreHangs) {
  store.hang();
  server.start();
  add("low", "15%");
  add("low", "10%");
  EXPECT_TRUE(shows({QStringLiteral("10%")}));
  EXPECT_EQ(server.calls.size(), 1U);
  store.resume();
}

}  // namespace tollbeam
