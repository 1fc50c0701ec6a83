#include "platform/freedesktop/bus/Bus.h"

#include <gtest/gtest.h>

#include <QDBusPendingCallWatcher>
#include <optional>

#include "support/FakeProperties.h"
#include "support/PrivateBus.h"

namespace tollbeam {
namespace {

using test::waitFor;

const auto kBus = QStringLiteral("org.freedesktop.DBus");
const auto kPath = QStringLiteral("/org/example/Object");
const auto kInterface = QStringLiteral("org.example.Interface");

class BusTest : public testing::Test {
 protected:
  BusTest() {
    QObject::connect(&ours, &Bus::lost, [this] { ++losses; });
    QObject::connect(&ours, &Bus::restored, [this] { ++returns; });
  }

  void lose() {
    bus.stop();
    ASSERT_TRUE(waitFor([this] { return losses == 1; }));
  }

  void restart() {
    lose();
    bus.start();
    ASSERT_TRUE(waitFor([this] { return returns == 1; }));
  }

  /// The error of a call to the bus itself; empty when it succeeds.
  std::optional<QString> call() const {
    const QDBusPendingCallWatcher watcher(ours.asyncCall(QDBusMessage::createMethodCall(
        kBus, QStringLiteral("/org/freedesktop/DBus"), kBus, QStringLiteral("GetId"))));
    std::optional<QString> error;
    QObject::connect(&watcher, &QDBusPendingCallWatcher::finished,
                     [&] { error = watcher.isError() ? watcher.error().name() : QString(); });
    EXPECT_FALSE(error);
    waitFor([&] { return error.has_value(); });
    return error;
  }

  void say() {
    const auto speaker = bus.connect();
    speaker.send(QDBusMessage::createSignal(kPath, kInterface, QStringLiteral("Said")));
    ASSERT_TRUE(test::passedOn(speaker));
  }

  test::PrivateBus bus;
  Bus& ours = bus.join();
  int losses = 0;
  int returns = 0;
};

TEST_F(BusTest, IsConnectedAtOnce) {
  EXPECT_TRUE(ours.isConnected());
  EXPECT_EQ(call(), QString());
}

TEST_F(BusTest, CallsFailWhileItIsGone) {
  lose();
  EXPECT_FALSE(ours.isConnected());
  EXPECT_EQ(call(), QStringLiteral("org.freedesktop.DBus.Error.Disconnected"));
}

TEST_F(BusTest, CallsUnderWayFailWhenItGoes) {
  auto service = bus.connect();
  test::FakeProperties object(service, kPath, kInterface);
  object.silent = true;
  const QDBusPendingCallWatcher watcher(ours.asyncCall(QDBusMessage::createMethodCall(
      service.baseService(), kPath, QStringLiteral("org.freedesktop.DBus.Properties"),
      QStringLiteral("GetAll"))));
  ASSERT_TRUE(waitFor([&] { return object.asked == 1; }));
  lose();
  EXPECT_TRUE(waitFor([&] { return watcher.isFinished(); }));
  EXPECT_TRUE(watcher.isError());
}

TEST_F(BusTest, ComesBackWhenTheBusDoes) {
  restart();
  EXPECT_TRUE(ours.isConnected());
  EXPECT_EQ(call(), QString());
  EXPECT_EQ(losses, 1);
}

TEST_F(BusTest, ComesBackAgainAndAgain) {
  restart();
  losses = returns = 0;
  restart();
  EXPECT_EQ(call(), QString());
}

TEST_F(BusTest, IsThereAtLastWhenTheBusStartsLate) {
  bus.stop();
  Bus& late = bus.join();
  bool there = false;
  QObject::connect(&late, &Bus::restored, [&there] { there = true; });
  EXPECT_FALSE(late.isConnected());
  bus.start();
  EXPECT_TRUE(waitFor([&there] { return there; }));
  EXPECT_TRUE(late.isConnected());
}

TEST_F(BusTest, SubscriptionsHoldAfterARestart) {
  QTimer hearer;  // any object with a slot and a state
  ours.listen(kPath, kInterface, QStringLiteral("Said"), {}, &hearer, SLOT(start()));
  say();
  ASSERT_TRUE(waitFor([&hearer] { return hearer.isActive(); }));
  restart();
  hearer.stop();
  ASSERT_TRUE(test::passedOn(ours.connection()));
  say();
  EXPECT_TRUE(waitFor([&hearer] { return hearer.isActive(); }));
}

TEST_F(BusTest, ReceiversMayEndBeforeTheBusComesBack) {
  auto hearer = std::make_unique<QTimer>();
  ours.listen(kPath, kInterface, QStringLiteral("Said"), {}, hearer.get(), SLOT(start()));
  lose();
  hearer.reset();
  bus.start();
  ASSERT_TRUE(waitFor([this] { return returns == 1; }));
  say();
  EXPECT_EQ(call(), QString());
}

}  // namespace
}  // namespace tollbeam
