#include "platform/freedesktop/session/SingleInstance.h"

#include <gtest/gtest.h>

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <memory>

#include "support/PrivateBus.h"

namespace tollbeam {
namespace {

using test::PrivateBus;
using test::waitFor;

const QString kName = QStringLiteral("org.tollbeam.Tollbeam");
const QString kPath = QStringLiteral("/org/tollbeam/Tollbeam");
const QString kInterface = QStringLiteral("org.freedesktop.Application");

/// A start of the program that counts its callbacks.
struct Start {
  explicit Start(Bus& bus) : instance(std::make_unique<SingleInstance>(bus)) {
    instance->onActivate = [this] { ++activations; };
  }
  void begin() {
    instance->begin([this] { ++first; }, [this] { ++other; });
  }
  [[nodiscard]] bool isFirst() {
    return waitFor([this] { return first + other > 0; }) && first == 1 && other == 0;
  }
  [[nodiscard]] bool isOther() {
    return waitFor([this] { return first + other > 0; }) && first == 0 && other == 1;
  }

  std::unique_ptr<SingleInstance> instance;
  int first = 0;
  int other = 0;
  int activations = 0;
};

class SingleInstanceTest : public testing::Test {
 protected:
  PrivateBus bus;
};

TEST_F(SingleInstanceTest, TheOnlyStartIsTheFirst) {
  Start only(bus.join());
  only.begin();
  EXPECT_EQ(only.first, 0) << "nothing is called before begin() has returned";
  EXPECT_TRUE(only.isFirst());
  EXPECT_EQ(only.activations, 0);
}

TEST_F(SingleInstanceTest, ALaterStartActivatesTheFirstAndIsTheOther) {
  Start first(bus.join());
  first.begin();
  ASSERT_TRUE(first.isFirst());
  Start later(bus.join());
  later.begin();
  EXPECT_TRUE(later.isOther());
  EXPECT_EQ(first.activations, 1);
  EXPECT_EQ(later.activations, 0);
}

TEST_F(SingleInstanceTest, OfTwoStartsAtOnceOneIsTheFirst) {
  Start one(bus.join());
  Start two(bus.join());
  one.begin();
  two.begin();
  ASSERT_TRUE(waitFor([&] { return one.first + one.other + two.first + two.other == 2; }));
  EXPECT_EQ(one.first + two.first, 1);
  EXPECT_EQ(one.other + two.other, 1);
}

TEST_F(SingleInstanceTest, AfterTheEndOfTheFirstTheNextStartIsTheFirst) {
  {
    Bus connection(bus.address());
    Start first(connection);
    first.begin();
    ASSERT_TRUE(first.isFirst());
  }
  Start next(bus.join());
  next.begin();
  EXPECT_TRUE(next.isFirst());
}

TEST_F(SingleInstanceTest, AStartTakesThePlaceOfAnOwnerThatEndsWithoutAnAnswer) {
  // An owner of the name without the object: it is about to end.
  QDBusConnection ending = bus.connect();
  ASSERT_TRUE(ending.registerService(kName));
  Start next(bus.join());
  next.begin();
  ending.unregisterService(kName);
  EXPECT_TRUE(next.isFirst());
}

TEST_F(SingleInstanceTest, AnswersTheDesktopsApplicationInterface) {
  Start first(bus.join());
  first.begin();
  ASSERT_TRUE(first.isFirst());
  const auto desktop = bus.connect();
  const auto ask = [&](const char* method, const QVariantList& arguments) {
    auto call = QDBusMessage::createMethodCall(kName, kPath, kInterface, QLatin1String(method));
    call.setArguments(arguments);
    const QDBusPendingCall reply = desktop.asyncCall(call);
    return waitFor([&] { return reply.isFinished(); }) && !reply.isError();
  };
  EXPECT_TRUE(ask("Activate", {QVariantMap()}));
  EXPECT_EQ(first.activations, 1);
  EXPECT_TRUE(ask("Open", {QStringList{QStringLiteral("file:///x")}, QVariantMap()}));
  EXPECT_EQ(first.activations, 2);
  EXPECT_TRUE(ask("ActivateAction", {QStringLiteral("none"), QVariantList(), QVariantMap()}));
  EXPECT_EQ(first.activations, 2);
}

TEST_F(SingleInstanceTest, TakesItsNameAgainOnARestartedBus) {
  Start first(bus.join());
  first.begin();
  ASSERT_TRUE(first.isFirst());
  bus.stop();
  bus.start();
  const auto registry = bus.connect();
  ASSERT_TRUE(waitFor([&] { return registry.interface()->isServiceRegistered(kName); }));
  Start later(bus.join());
  later.begin();
  EXPECT_TRUE(later.isOther());
  EXPECT_EQ(first.activations, 1);
  EXPECT_EQ(first.first, 1);
}

TEST_F(SingleInstanceTest, WithoutASessionBusEveryStartIsTheFirst) {
  Bus nowhere(QStringLiteral("unix:path=/no such bus"));
  Start one(nowhere);
  Start two(nowhere);
  one.begin();
  EXPECT_EQ(one.first, 0) << "nothing is called before begin() has returned";
  two.begin();
  EXPECT_TRUE(one.isFirst());
  EXPECT_TRUE(two.isFirst());
}

}  // namespace
}  // namespace tollbeam
