#include "platform/freedesktop/statusbar/sni/WatcherMonitor.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>

#include "support/FakeProperties.h"
#include "support/PrivateBus.h"
#include "support/RecordingWatcher.h"

namespace tollbeam {
namespace {

using test::RecordingWatcher;
using test::waitFor;
using Presence = WatcherMonitor::Presence;

// The watcher's process is this test, which is no known panel, so the desktop's name decides.
class WatcherMonitorTest : public testing::Test {
 protected:
  void TearDown() override { qunsetenv("XDG_CURRENT_DESKTOP"); }

  void startWatcher() { watcher_ = std::make_unique<RecordingWatcher>(bus_.connect()); }

  void begin() {
    monitor_.emplace(ours_);
    QObject::connect(&*monitor_, &WatcherMonitor::changed, [this] { ++changes_; });
    QObject::connect(&*monitor_, &WatcherMonitor::hostRegistered, [this] { ++hosts_; });
  }

  [[nodiscard]] bool becomes(Presence presence) {
    return waitFor([&] { return monitor_->presence() == presence; });
  }

  test::PrivateBus bus_;
  Bus& ours_ = bus_.join();
  std::unique_ptr<RecordingWatcher> watcher_;
  std::optional<WatcherMonitor> monitor_;
  int changes_ = 0;
  int hosts_ = 0;
};

TEST_F(WatcherMonitorTest, IsNotYetKnownBeforeTheBusHasAnswered) {
  startWatcher();
  begin();
  EXPECT_EQ(monitor_->presence(), Presence::NotYetKnown);
  EXPECT_EQ(changes_, 0);
}

TEST_F(WatcherMonitorTest, IsAbsentWithoutAWatcher) {
  begin();
  ASSERT_TRUE(becomes(Presence::Absent));
  EXPECT_EQ(changes_, 1);
}

TEST_F(WatcherMonitorTest, IsAbsentWithoutABus) {
  bus_.stop();
  ASSERT_TRUE(waitFor([&] { return !ours_.isConnected(); }));
  begin();
  EXPECT_EQ(monitor_->presence(), Presence::NotYetKnown);
  EXPECT_TRUE(becomes(Presence::Absent));
}

TEST_F(WatcherMonitorTest, IdentifiesTheHost) {
  qputenv("XDG_CURRENT_DESKTOP", "KDE");
  startWatcher();
  begin();
  ASSERT_TRUE(becomes(Presence::Present));
  EXPECT_EQ(monitor_->host(), StatusHost::Plasma);
  EXPECT_EQ(changes_, 1);
}

TEST_F(WatcherMonitorTest, FollowsAWatcherThatComesAndGoes) {
  begin();
  ASSERT_TRUE(becomes(Presence::Absent));
  startWatcher();
  ASSERT_TRUE(becomes(Presence::Present));
  watcher_.reset();
  ASSERT_TRUE(becomes(Presence::Absent));
  EXPECT_EQ(changes_, 3);
}

TEST_F(WatcherMonitorTest, ReportsAReplacedWatcher) {
  startWatcher();
  begin();
  ASSERT_TRUE(becomes(Presence::Present));
  watcher_.reset();
  qputenv("XDG_CURRENT_DESKTOP", "LXQt");
  startWatcher();
  EXPECT_TRUE(waitFor([&] { return monitor_->host() == StatusHost::Lxqt; }));
}

TEST_F(WatcherMonitorTest, FindsTheWatcherOfARestartedBus) {
  startWatcher();
  begin();
  ASSERT_TRUE(becomes(Presence::Present));
  bus_.stop();
  EXPECT_TRUE(becomes(Presence::Absent));
  watcher_.reset();
  bus_.start();
  startWatcher();
  EXPECT_TRUE(becomes(Presence::Present));
}

TEST_F(WatcherMonitorTest, ReportsAPanelThatComesLater) {
  startWatcher();
  begin();
  ASSERT_TRUE(becomes(Presence::Present));
  watcher_->announceHost();
  EXPECT_TRUE(waitFor([&] { return hosts_ == 1; }));
  EXPECT_EQ(changes_, 1);
}

TEST_F(WatcherMonitorTest, IgnoresAPanelWithoutAWatcher) {
  begin();
  ASSERT_TRUE(becomes(Presence::Absent));
  const auto stranger = bus_.connect();
  stranger.send(QDBusMessage::createSignal(QStringLiteral("/StatusNotifierWatcher"),
                                           QStringLiteral("org.kde.StatusNotifierWatcher"),
                                           QStringLiteral("StatusNotifierHostRegistered")));
  ASSERT_TRUE(test::passedOn(stranger));
  ASSERT_TRUE(test::passedOn(ours_.connection()));
  EXPECT_EQ(hosts_, 0);
}

}  // namespace
}  // namespace tollbeam
