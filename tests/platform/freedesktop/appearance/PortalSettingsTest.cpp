#include "platform/freedesktop/appearance/PortalSettings.h"

#include <gtest/gtest.h>
#include <malloc.h>

#include <memory>
#include <numeric>
#include <optional>
#include <string>
#include <vector>

#include "support/FakePortal.h"
#include "support/FakeProperties.h"
#include "support/PrivateBus.h"

namespace tollbeam {
namespace {

using test::FakePortal;
using test::waitFor;

const QString kAppearance = QStringLiteral("org.freedesktop.appearance");
const QString kScheme = QStringLiteral("color-scheme");

class PortalSettingsTest : public testing::Test {
 protected:
  FakePortal& portal(const FakePortal::Settings& settings = {}) {
    if (!portalBus_) portalBus_ = bus_.connect();
    return portal_.emplace(*portalBus_, settings);
  }

  void restart(const FakePortal::Settings& settings) {
    portal_.reset();
    // Another program, not the same one again.
    portalBus_ = bus_.connect();
    portal_.emplace(*portalBus_, settings);
  }

  void begin() {
    settings_.emplace(ours_, QStringList{kAppearance}, Activation::forbidden);
    QObject::connect(&*settings_, &PortalSettings::changed, [this] { ++changes_; });
  }

  [[nodiscard]] std::optional<Value> known(const char* key) const {
    const Value* group = find(settings_->settings(), "org.freedesktop.appearance");
    const Value* value = group != nullptr ? find(*group->dictionary(), key) : nullptr;
    return value != nullptr ? std::optional(*value) : std::nullopt;
  }

  [[nodiscard]] bool becomes(const Value& scheme) {
    return waitFor([&] { return known("color-scheme") == scheme; });
  }

  test::PrivateBus bus_;
  Bus& ours_ = bus_.join();
  std::optional<QDBusConnection> portalBus_;
  std::optional<FakePortal> portal_;
  std::optional<PortalSettings> settings_;
  int changes_ = 0;
};

FakePortal::Settings scheme(uint value) { return {{kAppearance, {{kScheme, value}}}}; }

TEST_F(PortalSettingsTest, ReadsOnlyTheNamespacesItFollows) {
  auto& fake = portal({{kAppearance, {{kScheme, 1U}}}, {QStringLiteral("else"), {{kScheme, 2U}}}});
  begin();
  ASSERT_TRUE(becomes(1));
  EXPECT_EQ(fake.askedFor, QStringList{kAppearance});
  EXPECT_EQ(settings_->settings().size(), 1U);
  EXPECT_EQ(changes_, 1);
}

TEST_F(PortalSettingsTest, FollowsChanges) {
  portal(scheme(1));
  begin();
  ASSERT_TRUE(becomes(1));
  portal_->change(kAppearance, kScheme, 2U);
  ASSERT_TRUE(becomes(2));
  portal_->change(kAppearance, QStringLiteral("contrast"), 1U);
  EXPECT_TRUE(waitFor([&] { return known("contrast") == Value(1); }));
  EXPECT_EQ(known("color-scheme"), Value(2));
  EXPECT_EQ(portal_->asked, 1);
}

TEST_F(PortalSettingsTest, IsEmptyWithoutAPortal) {
  begin();
  ASSERT_TRUE(test::passedOn(bus_.connect()));
  EXPECT_TRUE(settings_->settings().empty());
  EXPECT_EQ(changes_, 0);
}

TEST_F(PortalSettingsTest, ReadsAPortalThatStartsLater) {
  begin();
  ASSERT_TRUE(test::passedOn(bus_.connect()));
  portal(scheme(1));
  EXPECT_TRUE(becomes(1));
}

TEST_F(PortalSettingsTest, KeepsSettingsUntilTheNextPortalAnswers) {
  portal(scheme(1));
  begin();
  ASSERT_TRUE(becomes(1));
  restart(scheme(1));
  ASSERT_TRUE(waitFor([&] { return portal_->asked == 1; }));
  EXPECT_EQ(known("color-scheme"), Value(1));
  EXPECT_EQ(changes_, 1);
  portal_->change(kAppearance, kScheme, 2U);
  EXPECT_TRUE(becomes(2));
  EXPECT_EQ(changes_, 2);
}

TEST_F(PortalSettingsTest, ForgetsSettingsThatTheNextPortalDoesNotHave) {
  portal(scheme(1));
  begin();
  ASSERT_TRUE(becomes(1));
  restart({});
  EXPECT_TRUE(waitFor([&] { return !known("color-scheme"); }));
}

TEST_F(PortalSettingsTest, KeepsAChangeThatArrivesBeforeAnOlderAnswer) {
  auto& fake = portal(scheme(1));
  fake.silent = true;
  begin();
  ASSERT_TRUE(waitFor([&] { return fake.asked == 1; }));
  fake.change(kAppearance, kScheme, 2U);
  fake.answer();
  ASSERT_TRUE(waitFor([&] { return changes_ > 0; }));
  EXPECT_EQ(known("color-scheme"), Value(2));
}

TEST_F(PortalSettingsTest, IgnoresTheAnswerOfAPortalThatHasGone) {
  auto& first = portal(scheme(1));
  first.silent = true;
  begin();
  ASSERT_TRUE(waitFor([&] { return first.asked == 1; }));
  restart(scheme(2));
  EXPECT_TRUE(becomes(2));
  EXPECT_EQ(changes_, 1);
}

TEST_F(PortalSettingsTest, IgnoresSignalsOfOtherSenders) {
  portal(scheme(1));
  begin();
  ASSERT_TRUE(becomes(1));
  const auto stranger = bus_.connect();
  test::sendSettingChanged(stranger, kAppearance, kScheme, 2U);
  ASSERT_TRUE(test::passedOn(stranger));
  portal_->change(kAppearance, QStringLiteral("contrast"), 1U);
  ASSERT_TRUE(waitFor([&] { return known("contrast") == Value(1); }));
  EXPECT_EQ(known("color-scheme"), Value(1));
}

TEST_F(PortalSettingsTest, FollowsThePortalOfARestartedBus) {
  portal(scheme(1));
  begin();
  ASSERT_TRUE(becomes(1));
  bus_.stop();
  portal_.reset();
  bus_.start();
  restart(scheme(2));
  ASSERT_TRUE(becomes(2));
  portal_->change(kAppearance, kScheme, 1U);
  EXPECT_TRUE(becomes(1));
  EXPECT_EQ(changes_, 3);
}

TEST_F(PortalSettingsTest, KeepsAtMostFourCallsOpenToHungPortals) {
  begin();
  std::vector<std::unique_ptr<FakePortal>> portals;
  for (uint i = 1; i <= 10; ++i) {
    // The previous one hangs on the bus, and its name passes to the next.
    if (portalBus_) portalBus_->unregisterService(QStringLiteral("org.freedesktop.portal.Desktop"));
    portalBus_ = bus_.connect();
    portals.push_back(std::make_unique<FakePortal>(*portalBus_, scheme(i)));
    portals.back()->silent = true;
    // The name's change has reached us, and our call the portal.
    ASSERT_TRUE(test::passedOn(ours_.connection()));
    ASSERT_TRUE(test::passedOn(*portalBus_));
  }
  const int asked = std::accumulate(portals.begin(), portals.end(), 0,
                                    [](int sum, const auto& one) { return sum + one->asked; });
  EXPECT_EQ(asked, 4);
  // A late answer is ignored, but makes room for the call to the present portal.
  portals.back()->silent = false;
  portals.front()->answer();
  EXPECT_TRUE(becomes(10));
  EXPECT_EQ(changes_, 1);
}

std::size_t allocatedBytes() {
  const auto memory = ::mallinfo2();
  return memory.uordblks + memory.hblkhd;
}

// Measures nothing under AddressSanitizer, which has its own allocator.
TEST_F(PortalSettingsTest, KeepsOnlyTheLastChangeOfEachSettingWhileThePortalDoesNotAnswer) {
  auto& fake = portal();
  fake.silent = true;
  begin();
  ASSERT_TRUE(waitFor([&] { return fake.asked == 1; }));
  constexpr int kMegabyte = 1 << 20;
  const auto before = allocatedBytes();
  for (int i = 0; i < 30; ++i) {
    test::sendSettingChanged(*portalBus_, kAppearance, QStringLiteral("text"),
                             QString(kMegabyte, QChar('a' + i)));
    ASSERT_TRUE(test::passedOn(*portalBus_));
    ASSERT_TRUE(test::passedOn(ours_.connection()));
  }
  EXPECT_LT(allocatedBytes(), before + 10 * kMegabyte);
  fake.answer();
  ASSERT_TRUE(waitFor([&] { return changes_ > 0; }));
  EXPECT_EQ(known("text"), Value(std::string(kMegabyte, 'a' + 29)));
}

TEST_F(PortalSettingsTest, IsEmptyWhenThePortalRefuses) {
  auto& fake = portal();
  fake.refusing = true;
  begin();
  ASSERT_TRUE(waitFor([&] { return fake.asked == 1; }));
  fake.refusing = false;
  ASSERT_TRUE(test::passedOn(*portalBus_));
  EXPECT_TRUE(settings_->settings().empty());
}

TEST_F(PortalSettingsTest, ReadsTextsFlagsNumbersAndStructures) {
  portal({{kAppearance,
           {{QStringLiteral("text"), QStringLiteral("Sans 10")},
            {QStringLiteral("flag"), false},
            {QStringLiteral("factor"), 1.25},
            {QStringLiteral("accent"), test::threeNumbers(0.25, 0.5, 1)},
            {QStringLiteral("list"), QStringList{QStringLiteral("a")}},
            {QStringLiteral("wrapped"), QVariant::fromValue(QDBusVariant(7U))}}}});
  begin();
  ASSERT_TRUE(waitFor([&] { return changes_ > 0; }));
  EXPECT_EQ(known("text"), Value("Sans 10"));
  EXPECT_EQ(known("flag"), Value(false));
  EXPECT_EQ(known("factor"), Value(1.25));
  EXPECT_EQ(known("accent"), Value(List{0.25, 0.5, 1.0}));
  EXPECT_FALSE(known("list"));
  EXPECT_EQ(known("wrapped"), Value(7));
}

TEST_F(PortalSettingsTest, ForgetsAValueThatChangesToAnUnknownKind) {
  portal(scheme(1));
  begin();
  ASSERT_TRUE(becomes(1));
  portal_->change(kAppearance, kScheme, QStringList{});
  EXPECT_TRUE(waitFor([&] { return !known("color-scheme"); }));
}

TEST(PortalActivation, IsAllowedOnlyWhereColoursComeThroughThePortalAlone) {
  for (const char* name : {"GNOME", "ubuntu:GNOME", "GNOME-Classic:GNOME", "Pantheon", "COSMIC"})
    EXPECT_EQ(portalActivationOn(name), Activation::allowed) << name;
  for (const char* name : {"", "XFCE", "KDE", "LXQt", "sway", "GNOME-Flashback", "MATE", ":"})
    EXPECT_EQ(portalActivationOn(name), Activation::forbidden) << name;
}

}  // namespace
}  // namespace tollbeam
