#include "platform/freedesktop/bus/ServiceOwner.h"

#include <gtest/gtest.h>

#include <QDBusPendingCallWatcher>
#include <QDBusVirtualObject>
#include <optional>
#include <vector>

#include "support/FakeProperties.h"
#include "support/PermissionStore.h"
#include "support/PrivateBus.h"

namespace tollbeam {
namespace {

using test::waitFor;

const auto kName = QStringLiteral("org.example.Service");
const auto kPath = QStringLiteral("/object");

class Hearer final : public QDBusVirtualObject {
 public:
  std::optional<QDBusMessage> heard;

  [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& /*bus*/) override {
    heard = message;
    return true;
  }
};

/// A message that came over the bus. It is a call, which names its sender as a signal does and
/// reaches one connection only.
QDBusMessage sentBy(const QDBusConnection& sender, QDBusConnection receiver) {
  Hearer hearer;
  receiver.registerVirtualObject(kPath, &hearer);
  sender.send(
      QDBusMessage::createMethodCall(receiver.baseService(), kPath, kName, QStringLiteral("Say")));
  waitFor([&] { return hearer.heard.has_value(); });
  receiver.unregisterObject(kPath);
  return hearer.heard.value_or(QDBusMessage());
}

class ServiceOwnerTest : public testing::Test {
 protected:
  void follow() {
    owner.emplace(ours, kName, Activation::forbidden);
    QObject::connect(&*owner, &ServiceOwner::changed, [this] { names.push_back(owner->name()); });
  }

  [[nodiscard]] bool becomes(const std::vector<QString>& expected) {
    return waitFor([&] { return names.size() >= expected.size(); }) && names == expected;
  }

  test::PrivateBus bus;
  Bus& ours = bus.join();
  QDBusConnection service = bus.connect();
  std::optional<ServiceOwner> owner;
  std::vector<QString> names;
};

TEST_F(ServiceOwnerTest, IsKnownAfterTheFirstAnswer) {
  ASSERT_TRUE(service.registerService(kName));
  follow();
  EXPECT_EQ(owner->name(), QString());
  EXPECT_TRUE(becomes({service.baseService()}));
}

TEST_F(ServiceOwnerTest, IsKnownWhenItArrivesDuringTheFirstQuestion) {
  for (int i = 0; i < 50; ++i) {
    follow();
    ASSERT_TRUE(service.registerService(kName));
    ASSERT_TRUE(waitFor([&] { return owner->name() == service.baseService(); }));
    ASSERT_TRUE(test::passedOn(ours.connection()));
    EXPECT_EQ(owner->name(), service.baseService());
    service.unregisterService(kName);
  }
}

TEST_F(ServiceOwnerTest, IsKnownBeforeTheServiceItselfAnswers) {
  test::FakeProperties object(service, kPath, kName);
  ASSERT_TRUE(service.registerService(kName));
  follow();
  auto question = QDBusMessage::createMethodCall(
      kName, kPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("GetAll"));
  question << kName;
  std::optional<QString> knownThen;
  const QDBusPendingCallWatcher call(ours.asyncCall(question));
  QObject::connect(&call, &QDBusPendingCallWatcher::finished, [&] { knownThen = owner->name(); });
  ASSERT_TRUE(waitFor([&] { return knownThen.has_value(); }));
  EXPECT_EQ(knownThen, service.baseService());
}

TEST_F(ServiceOwnerTest, IsAnnouncedOnceWhenThereIsNone) {
  follow();
  EXPECT_TRUE(becomes({QString()}));
  ASSERT_TRUE(test::passedOn(ours.connection()));
  EXPECT_EQ(names.size(), 1U);
}

TEST_F(ServiceOwnerTest, ChangesWithTheName) {
  follow();
  ASSERT_TRUE(becomes({QString()}));
  ASSERT_TRUE(service.registerService(kName));
  ASSERT_TRUE(becomes({QString(), service.baseService()}));
  service.unregisterService(kName);
  EXPECT_TRUE(becomes({QString(), service.baseService(), QString()}));
}

TEST_F(ServiceOwnerTest, RecognisesItsOwnMessagesOnly) {
  follow();
  ASSERT_TRUE(becomes({QString()}));
  EXPECT_FALSE(owner->sent(sentBy(service, ours.connection())));
  EXPECT_FALSE(owner->sent(QDBusMessage()));
  ASSERT_TRUE(service.registerService(kName));
  ASSERT_TRUE(becomes({QString(), service.baseService()}));
  EXPECT_TRUE(owner->sent(sentBy(service, ours.connection())));
  EXPECT_FALSE(owner->sent(sentBy(bus.connect(), ours.connection())));
}

TEST_F(ServiceOwnerTest, IsNotTakenFromAForgedSignal) {
  ASSERT_TRUE(service.registerService(kName));
  follow();
  ASSERT_TRUE(becomes({service.baseService()}));
  const auto stranger = bus.connect();
  const auto interface = QStringLiteral("org.freedesktop.DBus");
  auto forged = QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/DBus"), interface,
                                           QStringLiteral("NameOwnerChanged"));
  forged << kName << service.baseService() << stranger.baseService();
  stranger.send(forged);
  ASSERT_TRUE(test::passedOn(stranger));
  service.unregisterService(kName);
  EXPECT_TRUE(becomes({service.baseService(), QString()}));
}

TEST_F(ServiceOwnerTest, IsEmptyWithoutABus) {
  Bus nowhere(QStringLiteral("unix:path=/no such bus"));
  for (const auto activation : {Activation::forbidden, Activation::allowed}) {
    const ServiceOwner nobody(nowhere, kName, activation);
    int changes = 0;
    QObject::connect(&nobody, &ServiceOwner::changed, [&changes] { ++changes; });
    EXPECT_EQ(changes, 0);
    EXPECT_TRUE(waitFor([&changes] { return changes > 0; }));
    EXPECT_EQ(nobody.name(), QString());
  }
}

TEST_F(ServiceOwnerTest, IsKnownAgainOnARestartedBus) {
  ASSERT_TRUE(service.registerService(kName));
  follow();
  ASSERT_TRUE(becomes({service.baseService()}));
  bus.stop();
  ASSERT_TRUE(waitFor([&] { return names.size() == 2; }));
  EXPECT_EQ(names.back(), QString());
  bus.start();
  auto restarted = bus.connect();
  ASSERT_TRUE(restarted.registerService(kName));
  EXPECT_TRUE(waitFor([&] { return owner->name() == restarted.baseService(); }));
}

TEST_F(ServiceOwnerTest, IsFollowedOnTheRestoredBus) {
  follow();
  ASSERT_TRUE(becomes({QString()}));
  bus.stop();
  ASSERT_TRUE(waitFor([&] { return !ours.isConnected(); }));
  bus.start();
  ASSERT_TRUE(waitFor([&] { return ours.isConnected(); }));
  auto late = bus.connect();
  ASSERT_TRUE(test::passedOn(ours.connection()));
  ASSERT_TRUE(late.registerService(kName));
  EXPECT_TRUE(waitFor([&] { return owner->name() == late.baseService(); }));
}

TEST(ServiceOwnerActivation, StartsAServiceThatDoesNotRun) {
  if (!test::PermissionStore::isInstalled()) {
    GTEST_SKIP() << "xdg-permission-store is not installed";
  }
  const auto name = QStringLiteral("org.freedesktop.impl.portal.PermissionStore");
  test::PrivateBus bus({name, QStringLiteral("/usr/libexec/xdg-permission-store")});
  const ServiceOwner owner(bus.join(), name, Activation::allowed);
  EXPECT_TRUE(waitFor([&] { return !owner.name().isEmpty(); }));
}

TEST(ServiceOwnerActivation, IsEmptyWhenTheServiceCannotBeStarted) {
  test::PrivateBus bus({kName, QStringLiteral("/bin/false")});
  const ServiceOwner owner(bus.join(), kName, Activation::allowed);
  int changes = 0;
  QObject::connect(&owner, &ServiceOwner::changed, [&] { ++changes; });
  ASSERT_TRUE(waitFor([&] { return changes > 0; }));
  EXPECT_EQ(owner.name(), QString());
}

}  // namespace
}  // namespace tollbeam
