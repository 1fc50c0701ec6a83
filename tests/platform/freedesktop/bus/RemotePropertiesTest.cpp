#include "platform/freedesktop/bus/RemoteProperties.h"

#include <gtest/gtest.h>

#include <vector>

#include "support/FakeProperties.h"
#include "support/PrivateBus.h"

namespace tollbeam {
namespace {

using test::FakeProperties;
using test::waitFor;
using State = RemoteProperties::State;

const auto service = QStringLiteral("org.example.Service");
const auto path = QStringLiteral("/org/example/Object");
const auto level = QStringLiteral("Level");

class RemotePropertiesTest : public testing::Test {
 protected:
  RemotePropertiesTest() { object.properties = {{level, 1}, {QStringLiteral("Unread"), 1}}; }

  void own() { ASSERT_TRUE(owner.registerService(service)); }

  [[nodiscard]] bool waitForLevel(int expected) {
    return waitFor([this, expected] {
      return remote.values() && *remote.values() == Dictionary{{"Level", expected}};
    });
  }

  test::PrivateBus bus;
  QDBusConnection owner = bus.connect();
  FakeProperties object{owner, path, service};
  RemoteProperties remote{bus.join(), {service, path, service}, {level}, Activation::allowed};
};

TEST_F(RemotePropertiesTest, AreQueriedAtOnceAndKnownLater) {
  own();
  EXPECT_EQ(remote.state(), State::asking);
  EXPECT_FALSE(remote.values());
  EXPECT_TRUE(waitForLevel(1));
  EXPECT_EQ(remote.state(), State::known);
}

TEST_F(RemotePropertiesTest, AreAbsentWithoutTheService) {
  EXPECT_TRUE(waitFor([this] { return remote.state() == State::absent; }));
  EXPECT_FALSE(remote.values());
}

TEST_F(RemotePropertiesTest, BecomeKnownWheneverTheServiceStarts) {
  ASSERT_TRUE(waitFor([this] { return remote.state() == State::absent; }));
  own();
  EXPECT_TRUE(waitForLevel(1));
}

TEST_F(RemotePropertiesTest, AreAbsentAfterTheServiceHasGone) {
  own();
  ASSERT_TRUE(waitForLevel(1));
  owner.unregisterService(service);
  EXPECT_TRUE(waitFor([this] { return remote.state() == State::absent; }));
  EXPECT_FALSE(remote.values());
}

TEST_F(RemotePropertiesTest, FollowTheirChanges) {
  own();
  ASSERT_TRUE(waitForLevel(1));
  object.change({{level, 2}});
  EXPECT_TRUE(waitForLevel(2));
  EXPECT_EQ(object.asked, 1);
}

TEST_F(RemotePropertiesTest, AreNotUpdatedByPropertiesThatAreNotFollowed) {
  own();
  ASSERT_TRUE(waitForLevel(1));
  int updates = 0;
  QObject::connect(&remote, &RemoteProperties::updated, &remote, [&updates] { ++updates; });
  object.change({{QStringLiteral("Unread"), 2}});
  object.change({{level, 1}});
  object.change({{level, 3}});
  ASSERT_TRUE(waitForLevel(3));
  EXPECT_EQ(updates, 1);
}

TEST_F(RemotePropertiesTest, ReportEveryAnswerAndSignalOfTheOwner) {
  own();
  int signs = 0;
  QObject::connect(&remote, &RemoteProperties::heard, &remote, [&signs] { ++signs; });
  ASSERT_TRUE(waitForLevel(1));
  EXPECT_EQ(signs, 1);
  object.change({{QStringLiteral("Unread"), 2}});
  EXPECT_TRUE(waitFor([&signs] { return signs == 2; }));
  auto strangers = bus.connect();
  FakeProperties(strangers, path, service).change({{level, 66}});
  ASSERT_TRUE(test::passedOn(strangers));
  remote.ask();
  EXPECT_TRUE(waitFor([&signs] { return signs == 3; }));
}

TEST_F(RemotePropertiesTest, KeepTheirValuesWhileTheyAreQueriedAgain) {
  own();
  ASSERT_TRUE(waitForLevel(1));
  object.silent = true;
  remote.ask();
  ASSERT_TRUE(waitFor([this] { return object.asked == 2; }));
  EXPECT_EQ(remote.state(), State::known);
  object.properties[level] = 2;
  object.answer();
  EXPECT_TRUE(waitForLevel(2));
}

TEST_F(RemotePropertiesTest, AreQueriedAgainWhenInvalidated) {
  own();
  ASSERT_TRUE(waitForLevel(1));
  object.properties[level] = 4;
  object.invalidate(QStringLiteral("Unread"));
  object.invalidate(level);
  EXPECT_TRUE(waitForLevel(4));
  EXPECT_EQ(object.asked, 2);
}

TEST_F(RemotePropertiesTest, IgnoreSignalsOfOtherProcesses) {
  own();
  ASSERT_TRUE(waitForLevel(1));
  auto strangers = bus.connect();
  FakeProperties stranger(strangers, path, service);
  stranger.change({{level, 66}});
  std::vector<std::optional<Dictionary>> seen;
  QObject::connect(&remote, &RemoteProperties::updated, &remote,
                   [&] { seen.push_back(remote.values()); });
  ASSERT_TRUE(test::passedOn(strangers));
  object.change({{level, 2}});
  ASSERT_TRUE(waitForLevel(2));
  EXPECT_EQ(seen.size(), 1U);
}

TEST_F(RemotePropertiesTest, AreThoseOfTheNewOwner) {
  own();
  ASSERT_TRUE(waitForLevel(1));
  auto successor = bus.connect();
  FakeProperties newObject(successor, path, service);
  newObject.properties = {{level, 7}};
  owner.unregisterService(service);
  ASSERT_TRUE(successor.registerService(service));
  EXPECT_TRUE(waitForLevel(7));
}

TEST_F(RemotePropertiesTest, ALateAnswerOfAnEarlierOwnerIsDropped) {
  object.silent = true;
  own();
  ASSERT_TRUE(waitFor([this] { return object.asked > 0; }));
  auto successor = bus.connect();
  FakeProperties newObject(successor, path, service);
  newObject.properties = {{level, 7}};
  owner.unregisterService(service);
  ASSERT_TRUE(successor.registerService(service));
  ASSERT_TRUE(waitForLevel(7));
  object.properties = {{level, 66}};
  object.answer();
  newObject.change({{level, 8}});
  EXPECT_TRUE(waitForLevel(8));
}

TEST_F(RemotePropertiesTest, ALateAnswerOfAnOwnerThatIsGoneIsDropped) {
  object.silent = true;
  own();
  ASSERT_TRUE(waitFor([this] { return object.asked > 0; }));
  owner.unregisterService(service);
  ASSERT_TRUE(waitFor([this] { return remote.state() == State::absent; }));
  bool known = false;
  QObject::connect(&remote, &RemoteProperties::updated, &remote,
                   [this, &known] { known = known || remote.state() == State::known; });
  object.answer();
  own();
  ASSERT_TRUE(waitFor([this] { return remote.state() == State::asking; }));
  EXPECT_FALSE(known);
}

TEST_F(RemotePropertiesTest, AreKnownAgainOnARestartedBus) {
  own();
  ASSERT_TRUE(waitForLevel(1));
  bus.stop();
  ASSERT_TRUE(waitFor([this] { return remote.state() == State::absent; }));
  EXPECT_FALSE(remote.values());
  bus.start();
  auto restarted = bus.connect();
  FakeProperties newObject(restarted, path, service);
  newObject.properties = {{level, 7}};
  ASSERT_TRUE(restarted.registerService(service));
  ASSERT_TRUE(waitForLevel(7));
  newObject.change({{level, 8}});
  EXPECT_TRUE(waitForLevel(8));
}

TEST_F(RemotePropertiesTest, KeepTheTypeOfEveryValue) {
  RemoteProperties kinds(
      bus.join(), {service, path, service},
      {QStringLiteral("b"), QStringLiteral("u"), QStringLiteral("x"), QStringLiteral("t"),
       QStringLiteral("d"), QStringLiteral("s"), QStringLiteral("as")},
      Activation::forbidden);
  object.properties = {{QStringLiteral("b"), true},
                       {QStringLiteral("u"), 7U},
                       {QStringLiteral("x"), qlonglong{-7}},
                       {QStringLiteral("t"), qulonglong{7}},
                       {QStringLiteral("d"), 0.5},
                       {QStringLiteral("s"), QStringLiteral("text")},
                       {QStringLiteral("as"), QStringList{level}}};
  own();
  ASSERT_TRUE(waitFor([&kinds] { return kinds.state() == State::known; }));
  const Dictionary expected{{"b", true}, {"u", 7},     {"x", -7}, {"t", std::uint64_t{7}},
                            {"d", 0.5},  {"s", "text"}};
  EXPECT_EQ(kinds.values(), expected);
}

}  // namespace
}  // namespace tollbeam
